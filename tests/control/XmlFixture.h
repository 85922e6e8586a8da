// Files for the XML tests: paths in the test's temporary folder, documents written and read as bytes.
#pragma once
#include <fstream>
#include <iterator>
#include <string>
#include "Harness.h"
#include "control/QuillonCtrl.h"

class XmlTest : public ControlTest {
protected:
    // A path of its own for each test and name.
    std::string Path(const std::string& name) const
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        return ::testing::TempDir() + "quillon-" + info->name() + "-" + name;
    }
    static void WriteBytes(const std::string& path, const std::string& bytes)
    {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    static std::string ReadBytes(const std::string& path)
    {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    // ReadFile through the dispatch interface, as a host calls it.
    bool ReadFile(CControlSite* q, const std::string& path, SHORT nFileInfo = 0)
    {
        return Call(q, u"ReadFile", {COleVariant(CString(FromUtf8(path))), COleVariant(nFileInfo)}).boolVal == VARIANT_TRUE;
    }
    bool WriteFile(CControlSite* q, const std::string& path, SHORT nFileInfo = 0)
    {
        return Call(q, u"WriteFile", {COleVariant(CString(FromUtf8(path))), COleVariant(nFileInfo)}).boolVal == VARIANT_TRUE;
    }
    // A hand-written UTF-8 document read into the control.
    bool ReadDocument(CControlSite* q, const std::string& xml, SHORT nFileInfo = 0)
    {
        std::string path = Path("doc.xml");
        WriteBytes(path, xml);
        return ReadFile(q, path, nFileInfo);
    }
    std::string XmlString(CControlSite* q, SHORT nFileInfo)
    {
        return ToUtf8(BstrToString(Call(q, u"ReadXMLString", {COleVariant(nFileInfo)}).bstrVal));
    }
    static CQuillonCtrl* Inside(CControlSite* q)
    {
        return static_cast<CQuillonCtrl*>(static_cast<COleControl*>(q->Control()));
    }
    std::vector<std::string> Items(CControlSite* q)
    {
        std::vector<std::string> out;
        for (SHORT i = 0; i < Inside(q)->ItemCount(); ++i) out.push_back(ToUtf8(Inside(q)->GetItemText(i)));
        return out;
    }
};
