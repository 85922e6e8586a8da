// A host with one form and a recording sink: events and notifications become readable lines.
#pragma once
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>
#include "host/Host.h"

class CQuillonCtrl;
// The control object behind a site, for tests that look at its members.
CQuillonCtrl* Inside(CControlSite* q);

// gtest prints a CString as its text.
inline void PrintTo(const CString& s, std::ostream* os) { *os << '"' << ToUtf8(s) << '"'; }

class ControlTest : public ::testing::Test {
protected:
    ControlTest();
    ~ControlTest() override;

    // A new control on the form, reset as a host does for a new object.
    CControlSite* Create();
    // A control loaded from a property bag's text.
    CControlSite* Load(const CString& bag);

    // Script-like access through the dispatch interface; failures fail the test.
    void Put(CControlSite* q, const char16_t* name, const COleVariant& value);
    COleVariant Get(CControlSite* q, const char16_t* name);
    CString GetText(CControlSite* q, const char16_t* name);
    LONG GetLong(CControlSite* q, const char16_t* name);
    COleVariant Call(CControlSite* q, const char16_t* name, std::vector<VARIANT> args = {});

    // Lines heard since the last call: "Change", "CtrlError 32003 5", "PropertyChanged Text".
    std::vector<std::string> TakeLog();

    std::unique_ptr<CHost> m_pHost = std::make_unique<CHost>();
    CHost& m_host = *m_pHost;
    CForm* m_form = nullptr;
    std::vector<std::string> m_log;
    int m_gdiObjects = 0;
};

// Compares whole sequences and prints both side by side on a mismatch.
void ExpectSequence(const std::vector<std::string>& expected, const std::vector<std::string>& actual);
