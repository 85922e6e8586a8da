// The runtime's scan and the DOM's text rules, where the XML reader depends on their exact behaviour.
#include <gtest/gtest.h>
#include <fstream>
#include "base/crtscan.h"
#include "com/msxml.h"
#include "com/objbase.h"

TEST(Swscanf, CountsWhatItStoresAndStopsAtTheFirstMisfit)
{
    int n = 7;
    unsigned u = 7;
    EXPECT_EQ(swscanf_s(u"12px", u"%d", &n), 1);
    EXPECT_EQ(n, 12);
    EXPECT_EQ(swscanf_s(u"px", u"%d", &n), 0);
    EXPECT_EQ(swscanf_s(u"", u"%d", &n), -1) << "input ends before the first conversion";
    EXPECT_EQ(swscanf_s(u" -5", u"%u", &u), 1);
    EXPECT_EQ(u, 0xFFFFFFFBu);
    EXPECT_EQ(swscanf_s(u"4294967298", u"%d", &n), 1);
    EXPECT_EQ(n, 2) << "the low 32 bits";

    WCHAR name[5];
    float size = 0;
    int flags[2] = {9, 9};
    EXPECT_EQ(swscanf_s(u"Ab c,8.25,1", u"%[^,],%f,%d,%d", name, 5u, &size, &flags[0], &flags[1]), 3);
    EXPECT_EQ(std::u16string(name), u"Ab c");
    EXPECT_EQ(size, 8.25f);
    EXPECT_EQ(flags[1], 9) << "a field with no text is not stored";
    EXPECT_EQ(swscanf_s(u"Abcde,1", u"%[^,],%f", name, 5u, &size), 0) << "a name that does not fit";
    EXPECT_EQ(name[0], 0);
    EXPECT_EQ(swscanf_s(u",1", u"%[^,],%f", name, 5u, &size), 0);
}

namespace {
// [name, text] of every node of a list.
std::vector<std::string> Describe(IXMLDOMNodeList* list)
{
    std::vector<std::string> out;
    LONG n = 0;
    list->get_length(&n);
    for (LONG i = 0; i < n; ++i) {
        CComPtr<IXMLDOMNode> node;
        list->get_item(i, &node);
        BSTR name = nullptr, text = nullptr;
        node->get_nodeName(&name);
        node->get_text(&text);
        out.push_back(ToUtf8(BstrToString(name)) + "=" + ToUtf8(BstrToString(text)));
        SysFreeString(name);
        SysFreeString(text);
    }
    return out;
}
} // namespace

TEST(Dom, TextIsDecodedConcatenatedAndTrimmed)
{
    std::string path = ::testing::TempDir() + "quillon-dom.xml";
    std::ofstream(path, std::ios::binary) << "<r><a> x &lt;&#65;&amp; <b>in</b><!--c--><![CDATA[ <d> ]]>\n</a>"
                                             "<!--note--><?pi data?><e/></r>";
    CComPtr<IXMLDOMDocument> doc;
    ASSERT_EQ(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                               reinterpret_cast<void**>(&doc)), S_OK);
    VARIANT_BOOL ok = VARIANT_FALSE;
    COleVariant file(CString(FromUtf8(path)));
    ASSERT_EQ(doc->load(file, &ok), S_OK);
    ASSERT_EQ(ok, VARIANT_TRUE);
    CComPtr<IXMLDOMNodeList> all;
    BSTR query = SysAllocString(u"/r/*");
    EXPECT_EQ(doc->selectNodes(query, &all), S_OK);
    SysFreeString(query);
    EXPECT_EQ(Describe(all.Get()), (std::vector<std::string>{"a=x <A& in <d>", "e="}));
    CComPtr<IXMLDOMNode> a;
    all->get_item(0, &a);
    CComPtr<IXMLDOMNodeList> children;
    a->get_childNodes(&children);
    EXPECT_EQ(Describe(children.Get()),
              (std::vector<std::string>{"#text=x <A&", "b=in", "#comment=c", "#cdata-section=<d>", "#text="}));
    CComPtr<IXMLDOMNode> back, past;
    children->get_item(1, &back); // behind the last child read
    BSTR backName = nullptr;
    back->get_nodeName(&backName);
    EXPECT_EQ(BstrToString(backName), u"b");
    SysFreeString(backName);
    EXPECT_EQ(children->get_item(5, &past), S_FALSE);
    BSTR xml = nullptr;
    a->get_xml(&xml);
    EXPECT_EQ(ToUtf8(BstrToString(xml)), "<a> x &lt;A&amp; <b>in</b><!--c--><![CDATA[ <d> ]]>\n</a>");
    SysFreeString(xml);
    CComPtr<IXMLDOMNode> missing;
    EXPECT_EQ(all->get_item(2, &missing), S_FALSE);
    EXPECT_FALSE(missing);
}
