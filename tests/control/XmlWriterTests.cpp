// The XML document as written: the string for every selector, value forms, and the file's bytes.
#include "XmlFixture.h"

namespace {

const std::string kHead = "<?xml version=\"1.0\" ?><quEditXML><VER>5.0</VER>";
const std::string kTail = "</quEditXML>";

// The property block of a reset control after the puts of ConfiguredControl (in table order).
const std::string kConfiguredProperties =
    "<Alignment>0</Alignment><ArrowType>0</ArrowType><AutoComplete>0</AutoComplete><AutoFindSize>5</AutoFindSize>"
    "<BackColor>2147483653</BackColor><BorderColor>0</BorderColor><BorderType>3</BorderType>"
    "<ButtonBevel>1</ButtonBevel><ButtonFillType>13</ButtonFillType><ButtonStyle>0</ButtonStyle>"
    "<CaseType>0</CaseType><DisabledColor>8421504</DisabledColor><DisplayStyle>0</DisplayStyle>"
    "<DropBackColor>2147483663</DropBackColor><DropBackColorTo>16777215</DropBackColorTo>"
    "<DropButton>-1</DropButton><DropForeColor>0</DropForeColor><DropWidth>16</DropWidth>"
    "<EditMask>##-##</EditMask><EmbossBitmap>0</EmbossBitmap><Font>Arial,10.000000,0,1,0,0</Font>"
    "<ForeColor>2147483666</ForeColor><InitialDelay>200</InitialDelay><ListOffset>0</ListOffset>"
    "<MaskBitmap>0</MaskBitmap><MaskColor>16711680</MaskColor><MatchCase>0</MatchCase>"
    "<PasswordChar>&</PasswordChar><PicXOffset>-3</PicXOffset><PicYOffset>0</PicYOffset><RepeatRate>50</RepeatRate>"
    "<ReverseBorder>0</ReverseBorder><ScrollBackColor>2147483651</ScrollBackColor>"
    "<ScrollBackColorTo>2147483667</ScrollBackColorTo><ScrollForeColor>2147483657</ScrollForeColor>"
    "<ScrollStyle>0</ScrollStyle><SelectOnFocus>0</SelectOnFocus><Sorted>0</Sorted>"
    "<SpinBackColor>2147483663</SpinBackColor><SpinBackColorTo>4294967295</SpinBackColorTo>"
    "<SpinButton>0</SpinButton><SpinForeColor>0</SpinForeColor><SpinWidth>16</SpinWidth><Text>12-34</Text>"
    "<UseMaskChars>1</UseMaskChars>";

const std::string kConfiguredItems = "<ITEM><Text>First</Text>\r\n</ITEM>\r\n<ITEM></ITEM>\r\n<ITEM><Text>a<b</Text>\r\n</ITEM>\r\n";

// The file form of a string: the mark FF FE, then UTF-16LE with every LF written as CR LF.
std::string FileBytes(const std::string& text)
{
    std::string out = "\xFF\xFE";
    for (char16_t unit : FromUtf8(text)) {
        if (unit == u'\n') out += std::string("\r\0", 2);
        out += static_cast<char>(unit & 0xFF);
        out += static_cast<char>(unit >> 8);
    }
    return out;
}

} // namespace

class XmlWriterTest : public XmlTest {
protected:
    CControlSite* ConfiguredControl()
    {
        CControlSite* q = Create();
        Put(q, u"EditMask", COleVariant(u"##-##"));
        Put(q, u"Text", COleVariant(u"12-34"));
        Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
        Put(q, u"PicXOffset", COleVariant(SHORT(-3)));
        Put(q, u"ForeColor", COleVariant(LONG(0x80000012), VT_I4));
        Put(q, u"SpinBackColorTo", COleVariant(LONG(-1), VT_I4));
        Put(q, u"ButtonFillType", COleVariant(SHORT(13)));
        Put(q, u"PasswordChar", COleVariant(u"&"));
        IFont* font = Inside(q)->InternalGetFont().m_pFont;
        BSTR name = SysAllocString(u"Arial");
        font->put_Name(name);
        SysFreeString(name);
        CY size{};
        size.int64 = 100000; // 10 pt
        font->put_Size(size);
        font->put_Bold(TRUE);
        for (auto s : {u"First", u"", u"a<b"}) Call(q, u"AddItem", {COleVariant(s)});
        return q;
    }
};

TEST_F(XmlWriterTest, DocumentForEverySelector)
{
    CControlSite* q = ConfiguredControl();
    EXPECT_EQ(XmlString(q, 0), kHead + kConfiguredProperties + kConfiguredItems + kTail);
    EXPECT_EQ(XmlString(q, 1), kHead + kConfiguredItems + kTail);
    EXPECT_EQ(XmlString(q, 2), kHead + kConfiguredProperties + kTail);
    EXPECT_EQ(XmlString(q, 3), kHead + kTail);
    EXPECT_EQ(XmlString(q, -1), kHead + kTail);
    Call(q, u"ClearItems");
    EXPECT_EQ(XmlString(q, 1), kHead + kTail);
    EXPECT_EQ(XmlString(q, 0), kHead + kConfiguredProperties + kTail);
}

TEST_F(XmlWriterTest, FlagsKeepTheirStoredValueAndFontSizePassesThroughAFloat)
{
    CControlSite* loaded = Load(u"SpinButton = -1\nSorted = 1\n");
    std::string xml = XmlString(loaded, 2);
    EXPECT_NE(xml.find("<SpinButton>1</SpinButton>"), std::string::npos) << "loaded true is written 1";
    EXPECT_NE(xml.find("<Sorted>1</Sorted>"), std::string::npos);
    Put(loaded, u"Sorted", COleVariant(SHORT(1), VT_BOOL));
    EXPECT_NE(XmlString(loaded, 2).find("<Sorted>-1</Sorted>"), std::string::npos) << "a put stores -1";

    IFont* font = Inside(loaded)->InternalGetFont().m_pFont;
    CY size{};
    size.int64 = 123457; // 12.3457 pt, which a float holds only approximately
    font->put_Size(size);
    font->put_Italic(TRUE);
    font->put_Underline(TRUE);
    EXPECT_NE(XmlString(loaded, 2).find(",12.345700,1,0,0,1</Font>"), std::string::npos) << XmlString(loaded, 2);
}

TEST_F(XmlWriterTest, FileIsUtf16WithMarkAndCrCrLfAndReplacesALongerFile)
{
    CControlSite* q = ConfiguredControl();
    std::string path = Path("out.xml");
    WriteBytes(path, std::string(20000, 'x'));
    TakeLog();
    EXPECT_TRUE(WriteFile(q, path, 1));
    EXPECT_EQ(ReadBytes(path), FileBytes(kHead + kConfiguredItems + kTail));
    EXPECT_NE(ReadBytes(path).find(std::string("\r\0\r\0\n\0", 6)), std::string::npos);
    EXPECT_TRUE(WriteFile(q, path, 3));
    EXPECT_EQ(ReadBytes(path), FileBytes(kHead + kTail));
    ExpectSequence({}, TakeLog());
}

// WriteFile("", 0), WriteFile to a folder, WriteFile to a device that takes no bytes, in turn.
const std::vector<std::string> kWriteFailures = {"CtrlError 1004 0", "CtrlError 1004 0"};

TEST_F(XmlWriterTest, FailuresReportAsTheySay)
{
    CControlSite* q = ConfiguredControl();
    TakeLog();
    EXPECT_FALSE(WriteFile(q, "", 0));
    EXPECT_FALSE(WriteFile(q, ::testing::TempDir(), 0)) << "a folder cannot be opened: quiet";
    EXPECT_FALSE(WriteFile(q, "/dev/full", 0)) << "a failed write";
    ExpectSequence(kWriteFailures, TakeLog());
}

TEST_F(XmlWriterTest, XMLWriteAsksForAFileAndWritesThePropertiesOnly)
{
    CControlSite* q = ConfiguredControl();
    std::string path = Path("dialog");
    std::vector<std::string> asked;
    m_host.m_onFileDialog = [&](const char* kind, const CString& initial, CString& out) {
        asked.push_back(std::string(kind) + " " + ToUtf8(initial));
        out = CString(FromUtf8(path));
        return asked.size() == 1;   // the second dialog is cancelled
    };
    Put(q, u"XMLWrite", COleVariant(u"ab"));
    EXPECT_TRUE(asked.empty()) << "fewer than 3 characters show no dialog";
    Put(q, u"XMLWrite", COleVariant(u"abc"));
    EXPECT_EQ(ReadBytes(path + ".xml"), FileBytes(kHead + kConfiguredProperties + kTail)) << "the default extension";
    Put(q, u"XMLWrite", COleVariant(u"again"));
    EXPECT_EQ(asked, (std::vector<std::string>{"save abc", "save again"}));
    EXPECT_EQ(GetText(q, u"XMLWrite"), u"");
}
