// Reading documents: hand-written and written ones, the selector, scans and puts, failures,
// hostile documents, events and the modified flag.
#include "XmlFixture.h"
#include "com/msxml.h"
#include "com/objbase.h"

namespace {

std::string Doc(const std::string& body) { return "<?xml version=\"1.0\" ?><quEditXML>" + body + "</quEditXML>"; }

// ReadFile of a document with Text "a", an unknown element and Text "b".
const std::vector<std::string> kReadTwoTexts = {"PropertyChanged Text", "Change", "PropertyChanged Text", "Change"};
// ReadFile of a file that is not there, cannot be read or is malformed.
const std::vector<std::string> kReadUnreadable = {"CtrlError 1000 0"};
// ReadFile of "<quEditXML/>" alone.
const std::vector<std::string> kReadEmptyRoot = {"CtrlError 1001 1"};
// ReadFile while no DOM server is installed.
const std::vector<std::string> kReadWithoutDom = {"CtrlError 1003 0"};

} // namespace

class XmlReaderTest : public XmlTest {
protected:
    // A control with two items and a changed property, its modified flag cleared.
    CControlSite* Prepared()
    {
        CControlSite* q = Create();
        Call(q, u"AddItem", {COleVariant(u"old1")});
        Call(q, u"AddItem", {COleVariant(u"old2")});
        Put(q, u"BorderType", COleVariant(SHORT(1)));
        q->Save(TRUE);
        TakeLog();
        return q;
    }
    // The control as a whole: every property, and its items.
    std::string State(CControlSite* q) { return XmlString(q, 0); }
};

TEST_F(XmlReaderTest, WrittenDocumentReadsBackWhole)
{
    CControlSite* q = Create();
    Put(q, u"EditMask", COleVariant(u"##-##"));
    Put(q, u"Text", COleVariant(u"12-34"));
    Put(q, u"Sorted", COleVariant(SHORT(1), VT_BOOL));
    Put(q, u"PicYOffset", COleVariant(SHORT(-7)));
    Put(q, u"MaskColor", COleVariant(LONG(0x80000012), VT_I4));
    Inside(q)->InternalGetFont().m_pFont->put_Italic(TRUE);
    for (auto s : {u"Zeta", u"alpha", u"\u00e9t\u00e9 \U0001F600"}) Call(q, u"AddItem", {COleVariant(s)});
    std::string path = Path("round.xml");
    ASSERT_TRUE(WriteFile(q, path));
    CControlSite* r = Create();
    EXPECT_TRUE(ReadFile(r, path));
    EXPECT_EQ(State(r), State(q));
    EXPECT_EQ(CoGetInitializeCount(), 0);
}

TEST_F(XmlReaderTest, HandWrittenDocumentsApplyInDocumentOrder)
{
    CControlSite* q = Prepared();
    EXPECT_TRUE(ReadDocument(q, "<root><x/><quEditXML><VER>9.9</VER><BorderType>2</BorderType><alignment>1</alignment>"
                                "<Bogus>1</Bogus><EditMask>##-##</EditMask><Text>  12-34 </Text><BorderType>0</BorderType>"
                                "<ITEM><Text> First </Text><Note>x</Note><Text>&lt;b&amp;</Text></ITEM>"
                                "<ITEM></ITEM><ITEM><Text></Text><Deeper><Text>no</Text></Deeper></ITEM>"
                                "</quEditXML><other><quEditXML><Alignment>2</Alignment>"
                                "<ITEM>\n  <Text>Second</Text>\n</ITEM></quEditXML></other></root>"));
    EXPECT_EQ(GetLong(q, u"BorderType"), 0) << "a later duplicate overrides";
    EXPECT_EQ(GetLong(q, u"Alignment"), 2) << "lower case is ignored; the second quEditXML applies too";
    EXPECT_EQ(ToUtf8(Inside(q)->m_strText), "12-34");
    EXPECT_EQ(Items(q), (std::vector<std::string>{"First", "<b&", "", "Second"}));
    EXPECT_EQ(GetLong(q, u"DropWidth"), 16) << "missing elements change nothing";
    EXPECT_TRUE(q->IsDirty());
}

TEST_F(XmlReaderTest, ScansAndPutsDecideWhatAValueDoes)
{
    CControlSite* q = Create();
    EXPECT_TRUE(ReadDocument(q, Doc("<ListOffset>12px</ListOffset><InitialDelay>px</InitialDelay><RepeatRate></RepeatRate>"
                                    "<Alignment>7</Alignment><CaseType>-1</CaseType><DropWidth>1</DropWidth>"
                                    "<AutoFindSize>0</AutoFindSize><Sorted>65536</Sorted><MatchCase>-1</MatchCase>"
                                    "<SpinWidth>65537</SpinWidth><BorderColor>-1</BorderColor><MaskColor>x</MaskColor>"
                                    "<BackColor> 2147483666 </BackColor><EditMask></EditMask>")));
    EXPECT_EQ(GetLong(q, u"ListOffset"), 12);
    EXPECT_EQ(GetLong(q, u"InitialDelay"), 200);
    EXPECT_EQ(GetLong(q, u"RepeatRate"), 50);
    EXPECT_EQ(GetLong(q, u"Alignment"), 0);
    EXPECT_EQ(GetLong(q, u"CaseType"), 0);
    EXPECT_EQ(GetLong(q, u"DropWidth"), 2);
    EXPECT_EQ(GetLong(q, u"AutoFindSize"), 1);
    EXPECT_EQ(Inside(q)->m_bSorted, 0) << "only the low 16 bits of a flag count";
    EXPECT_EQ(Inside(q)->m_bMatchCase, -1);
    EXPECT_EQ(GetLong(q, u"SpinWidth"), 1);
    EXPECT_EQ(Inside(q)->m_clrBorder, 0xFFFFFFFFu) << "%u takes a sign and wraps";
    EXPECT_EQ(GetLong(q, u"MaskColor"), 0xFF0000);
    EXPECT_EQ(Inside(q)->GetBackColor(), 0x80000012u);
}

TEST_F(XmlReaderTest, FontValues)
{
    CControlSite* q = Create();
    IFont* font = Inside(q)->InternalGetFont().m_pFont;
    auto describe = [font] {
        BSTR name = nullptr;
        CY size{};
        BOOL b = 0, i = 0, s = 0, u = 0;
        font->get_Name(&name);
        font->get_Size(&size);
        font->get_Bold(&b), font->get_Italic(&i), font->get_Strikethrough(&s), font->get_Underline(&u);
        std::string out = ToUtf8(BstrToString(name)) + " " + std::to_string(size.int64) + " " + std::to_string(i) +
                          std::to_string(b) + std::to_string(s) + std::to_string(u);
        SysFreeString(name);
        return out;
    };
    ReadDocument(q, Doc("<Font>Arial,12.5,1,0,1,1</Font>"));
    EXPECT_EQ(describe(), "Arial 125000 1011") << "italic, bold, strikethrough, underline in that order";
    ReadDocument(q, Doc("<Font>Arial,12</Font>"));
    EXPECT_EQ(describe(), "Arial 120000 0000") << "missing flags clear their styles";
    ReadDocument(q, Doc("<Font>,14,1,1,1,1</Font>"));
    ReadDocument(q, Doc("<Font></Font>"));
    ReadDocument(q, Doc("<Font>" + std::string(100, 'F') + ",14,1</Font>"));
    EXPECT_EQ(describe(), "Arial 120000 0000") << "values that do not scan change nothing";
    ReadDocument(q, Doc("<Font>Courier New,1,1</Font><Font>Tahoma</Font>"));
    EXPECT_EQ(describe(), "Tahoma 10000 0000") << "a name without a size keeps the size";
    ReadDocument(q, Doc("<Font>" + std::string(99, 'F') + ",9,0,1</Font>"));
    EXPECT_EQ(describe(), std::string(99, 'F') + " 90000 0100");
}

TEST_F(XmlReaderTest, SelectorDecidesOnItemsOnly)
{
    CControlSite* q = Prepared();
    std::string doc = Doc("<BorderType>2</BorderType><ITEM><Text>new</Text></ITEM>");
    EXPECT_TRUE(ReadDocument(q, doc, 2));
    EXPECT_EQ(Items(q), std::vector<std::string>{}) << "2 empties the list and reads no items";
    EXPECT_EQ(GetLong(q, u"BorderType"), 2);
    Put(q, u"BorderType", COleVariant(SHORT(1)));
    EXPECT_TRUE(ReadDocument(q, doc, 1));
    EXPECT_EQ(Items(q), std::vector<std::string>{"new"});
    EXPECT_EQ(GetLong(q, u"BorderType"), 2) << "1 reads properties too";
    EXPECT_TRUE(ReadDocument(q, doc, -5));
    EXPECT_EQ(Items(q), std::vector<std::string>{});
    EXPECT_TRUE(ReadDocument(q, Doc("<VER>5.0</VER>")));
}

TEST_F(XmlReaderTest, EventsInDocumentOrderAndModifiedOnlyByPuts)
{
    CControlSite* q = Prepared();
    EXPECT_TRUE(ReadDocument(q, Doc("<Unknown>1</Unknown><ITEM><Text>x</Text></ITEM>")));
    ExpectSequence({}, TakeLog());
    EXPECT_FALSE(q->IsDirty()) << "clearing and adding items does not mark the control modified";
    EXPECT_TRUE(ReadDocument(q, Doc("<Text>a</Text><Nothing/><Text>b</Text>")));
    ExpectSequence(kReadTwoTexts, TakeLog());
    EXPECT_TRUE(q->IsDirty());
}

TEST_F(XmlReaderTest, FailuresLeaveTheControlAsItWas)
{
    CControlSite* q = Prepared();
    const std::string before = State(q);
    auto expectUnchanged = [&](const std::vector<std::string>& events, const std::string& what) {
        ExpectSequence(events, TakeLog());
        EXPECT_EQ(State(q), before) << what;
        EXPECT_FALSE(q->IsDirty()) << what;
        EXPECT_EQ(CoGetInitializeCount(), 0) << what;
    };
    EXPECT_FALSE(ReadFile(q, Path("missing.xml")));
    expectUnchanged(kReadUnreadable, "missing");
    for (const std::string& bad : {std::string(), ::testing::TempDir()}) {
        EXPECT_FALSE(ReadFile(q, bad));
        expectUnchanged(kReadUnreadable, "empty name or folder");
    }
    std::string written = Path("written.xml");
    Call(q, u"AddItem", {COleVariant(u"x<y")});
    WriteFile(q, written);
    Call(q, u"RemoveItem", {COleVariant(SHORT(2))});
    q->Save(TRUE);
    TakeLog();
    for (const std::string& doc : {std::string("plain text"), Doc("<Text>a</Text>").substr(0, 40), ReadBytes(written),
                                   std::string("\xFF\xFE<\0q\0", 6)}) {
        EXPECT_FALSE(ReadDocument(q, doc));
        expectUnchanged(kReadUnreadable, "malformed: " + doc.substr(0, 20));
    }
    for (const std::string& doc : {std::string("<quEditXML/>"), std::string("<other><Text>a</Text></other>"),
                                   std::string("<quEditXML>text only</quEditXML>")}) {
        EXPECT_FALSE(ReadDocument(q, doc));
        expectUnchanged(kReadEmptyRoot, "no elements: " + doc);
    }
    CoRevokeInprocServer(&MsxmlDllGetClassObject);
    EXPECT_FALSE(ReadDocument(q, Doc("<Text>a</Text>")));
    CoRegisterInprocServer(&MsxmlDllGetClassObject);
    expectUnchanged(kReadWithoutDom, "no DOM");
}

TEST_F(XmlReaderTest, HostileDocumentsAreRefused)
{
    CControlSite* q = Prepared();
    const std::string before = State(q);
    std::string secret = Path("secret.txt");
    WriteBytes(secret, "SECRET");
    std::string laughs = "<!DOCTYPE quEditXML [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c <= 'j'; ++c) {
        laughs += std::string("<!ENTITY ") + c + " \"";
        for (int k = 0; k < 10; ++k) laughs += std::string("&") + char(c - 1) + ";";
        laughs += "\">";
    }
    laughs += "]><quEditXML><Text>&j;</Text></quEditXML>";
    for (const std::string& doc : std::vector<std::string>{
             laughs,
             "<!DOCTYPE quEditXML [<!ENTITY x SYSTEM \"file://" + secret + "\">]><quEditXML><Text>&x;</Text></quEditXML>",
             "<!DOCTYPE quEditXML SYSTEM \"http://127.0.0.1:9/q.dtd\"><quEditXML><Text>a</Text></quEditXML>",
             "<!DOCTYPE quEditXML [<!ENTITY big \"xxxxxxxx\">]><quEditXML><Text>&big;</Text></quEditXML>",
             "<!DOCTYPE quEditXML><quEditXML><Text>a</Text></quEditXML>",
             Doc("<Text>&undeclared;</Text>")}) {
        EXPECT_FALSE(ReadDocument(q, doc)) << doc;
        ExpectSequence(kReadUnreadable, TakeLog());
        EXPECT_EQ(State(q), before) << doc;
    }
    EXPECT_TRUE(ReadDocument(q, Doc("<Text><xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" parse=\"text\" href=\"" +
                                    secret + "\"/>x</Text>")));
    EXPECT_EQ(ToUtf8(Inside(q)->m_strText), "x") << "nothing is included";
}
