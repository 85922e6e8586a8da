// CQuillonCtrl: the XML document as a string, its file form, and the XMLWrite dialog.
#include <cstdio>
#include "base/crtio.h"
#include "control/QuillonCtrl.h"
#include "droplist/ListItem.h"
#include "framework/filedlg.h"
#include "framework/stdiofile.h"

namespace {

constexpr const char16_t* kXmlHead = u"<?xml version=\"1.0\" ?><quEditXML><VER>5.0</VER>";
constexpr const char16_t* kXmlTail = u"</quEditXML>";
constexpr const char16_t* kFileMode = u"wt,ccs=UNICODE";
constexpr SHORT kPropertiesOnly = 2;
constexpr int kMinDialogName = 3;

bool WritesProperties(SHORT nFileInfo) { return nFileInfo == 0 || nFileInfo == kPropertiesOnly; }
bool WritesItems(SHORT nFileInfo) { return nFileInfo == 0 || nFileInfo == 1; }

void AppendElement(std::u16string& out, const char16_t* name, const std::u16string& value)
{
    out += u'<';
    out += name;
    out += u'>';
    out += value;
    out += u"</";
    out += name;
    out += u'>';
}

void AppendItem(std::u16string& out, const CString& text)
{
    out += u"<ITEM>";
    if (!text.IsEmpty()) {
        out += u"<Text>";
        out += text.str();
        out += u"</Text>\r\n";
    }
    out += u"</ITEM>\r\n";
}

} // namespace

namespace {
template <class T> CString FormatXmlNumber(LPCTSTR strName, const char16_t* pszFormat, T nValue)
{
    CString value;
    value.Format(pszFormat, nValue);
    std::u16string out;
    AppendElement(out, strName, value.str());
    return CString(std::move(out));
}
} // namespace

CString CQuillonCtrl::FormatXmlShort(LPCTSTR strName, SHORT nValue) { return FormatXmlNumber(strName, u"%d", nValue); }

CString CQuillonCtrl::FormatXmlColor(LPCTSTR strName, ULONG nValue) { return FormatXmlNumber(strName, u"%u", nValue); }

// Face name, then the size as a float printed with six decimals, then Italic, Bold,
// Strikethrough and Underline.
CString CQuillonCtrl::FormatXmlFont(LPCTSTR strName, IFont* pFont)
{
    std::u16string value;
    if (pFont) {
        BSTR name = nullptr;
        CY size{};
        BOOL bItalic = FALSE, bBold = FALSE, bStrike = FALSE, bUnder = FALSE;
        pFont->get_Name(&name);
        pFont->get_Size(&size);
        pFont->get_Italic(&bItalic);
        pFont->get_Bold(&bBold);
        pFont->get_Strikethrough(&bStrike);
        pFont->get_Underline(&bUnder);
        COleVariant vSize;
        vSize.vt = VT_CY;
        vSize.cyVal = size;
        if (FAILED(vSize.ChangeType(VT_R4))) vSize.fltVal = 0;
        char numbers[96];
        std::snprintf(numbers, sizeof numbers, ",%f,%d,%d,%d,%d", static_cast<double>(vSize.fltVal), bItalic, bBold,
                      bStrike, bUnder);
        value = BstrToString(name).str() + FromUtf8(numbers);
        SysFreeString(name);
    }
    std::u16string out;
    AppendElement(out, strName, value);
    return CString(std::move(out));
}

// Numbers are taken from the members as stored; a flag is its low 16 bits, signed.
CString CQuillonCtrl::BuildXmlString(SHORT nFileInfo)
{
    std::u16string out = kXmlHead;
    if (WritesProperties(nFileInfo)) {
        // The flags keep their stored value, so only their low 16 bits are written, as a short.
        auto flag = [](BOOL b) { return static_cast<SHORT>(b); };
        for (const CString& e : {
                 FormatXmlShort(u"Alignment", m_nAlignment), FormatXmlShort(u"ArrowType", m_nArrowType),
                 FormatXmlShort(u"AutoComplete", m_nAutoComplete), FormatXmlShort(u"AutoFindSize", m_nAutoFindSize),
                 FormatXmlColor(u"BackColor", GetBackColor()), FormatXmlColor(u"BorderColor", m_clrBorder),
                 FormatXmlShort(u"BorderType", m_nBorderType), FormatXmlShort(u"ButtonBevel", m_nButtonBevel),
                 // The fill type alone is written unsigned: its 16 bits read as 0 to 65535.
                 FormatXmlColor(u"ButtonFillType", static_cast<USHORT>(m_nButtonFillType)),
                 FormatXmlShort(u"ButtonStyle", m_nButtonStyle), FormatXmlShort(u"CaseType", m_nCaseType),
                 FormatXmlColor(u"DisabledColor", m_clrDisabled), FormatXmlShort(u"DisplayStyle", m_nDisplayStyle),
                 FormatXmlColor(u"DropBackColor", m_clrDropBack), FormatXmlColor(u"DropBackColorTo", m_clrDropBackTo),
                 FormatXmlShort(u"DropButton", flag(m_bDropButton)), FormatXmlColor(u"DropForeColor", m_clrDropFore),
                 FormatXmlShort(u"DropWidth", m_nDropWidth)})
            out += e.str();
        AppendElement(out, u"EditMask", m_strEditMask.str());
        for (const CString& e : {
                 FormatXmlShort(u"EmbossBitmap", flag(m_bEmbossBitmap)), FormatXmlFont(u"Font", InternalGetFont().m_pFont),
                 FormatXmlColor(u"ForeColor", GetForeColor()), FormatXmlShort(u"InitialDelay", m_nInitialDelay),
                 FormatXmlShort(u"ListOffset", m_nListOffset), FormatXmlShort(u"MaskBitmap", flag(m_bMaskBitmap)),
                 FormatXmlColor(u"MaskColor", m_clrMask), FormatXmlShort(u"MatchCase", flag(m_bMatchCase))})
            out += e.str();
        AppendElement(out, u"PasswordChar", m_strPasswordChar.str());
        for (const CString& e : {
                 FormatXmlShort(u"PicXOffset", m_nPicXOffset), FormatXmlShort(u"PicYOffset", m_nPicYOffset),
                 FormatXmlShort(u"RepeatRate", m_nRepeatRate), FormatXmlShort(u"ReverseBorder", flag(m_bReverseBorder)),
                 FormatXmlColor(u"ScrollBackColor", m_clrScrollBack),
                 FormatXmlColor(u"ScrollBackColorTo", m_clrScrollBackTo),
                 FormatXmlColor(u"ScrollForeColor", m_clrScrollFore), FormatXmlShort(u"ScrollStyle", m_nScrollStyle),
                 FormatXmlShort(u"SelectOnFocus", flag(m_bSelectOnFocus)), FormatXmlShort(u"Sorted", flag(m_bSorted)),
                 FormatXmlColor(u"SpinBackColor", m_clrSpinBack), FormatXmlColor(u"SpinBackColorTo", m_clrSpinBackTo),
                 FormatXmlShort(u"SpinButton", flag(m_bSpinButton)), FormatXmlColor(u"SpinForeColor", m_clrSpinFore),
                 FormatXmlShort(u"SpinWidth", m_nSpinWidth)})
            out += e.str();
        AppendElement(out, u"Text", m_strText.str());
        out += FormatXmlShort(u"UseMaskChars", flag(m_bUseMaskChars)).str();
    }
    if (WritesItems(nFileInfo)) {
        for (int i = 0; i < m_items.GetSize(); ++i) AppendItem(out, static_cast<const CListItem*>(m_items[i])->GetText());
    }
    out += kXmlTail;
    return CString(std::move(out));
}

CString CQuillonCtrl::ReadXMLString(SHORT nFileInfo) { return BuildXmlString(nFileInfo); }

// An empty name or a failed write is reported; a file that cannot be opened is a quiet false.
BOOL CQuillonCtrl::WriteFile(LPCTSTR strFileName, SHORT nFileInfo)
{
    if (!strFileName || !*strFileName) {
        FireCtrlError(errXmlWrite, 0);
        return FALSE;
    }
    FILE* pStream = nullptr;
    if (_wfopen_s(&pStream, strFileName, kFileMode) != 0) return FALSE;
    CStdioFile file(pStream);
    try {
        file.WriteString(BuildXmlString(nFileInfo));
        file.Close();
    } catch (CFileException* e) {
        e->Delete();
        file.Abort();
        FireCtrlError(errXmlWrite, 0);
        return FALSE;
    }
    return TRUE;
}

BOOL CQuillonCtrl::WriteXmlFile(LPCTSTR strFileName) { return WriteFile(strFileName, kPropertiesOnly); }

// The property block alone goes to the file the user picks; the value itself is not kept.
void CQuillonCtrl::SetXMLWrite(LPCTSTR strValue)
{
    if (CString(strValue).GetLength() < kMinDialogName) return;
    CFileDialog dlg(FALSE, u"xml", strValue, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, nullptr, nullptr, 0, TRUE);
    if (dlg.DoModal() == IDOK) WriteXmlFile(dlg.GetPathName());
}
