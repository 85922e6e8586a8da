// CQuillonCtrl: one element of a read document applied through the property's ordinary put.
#include <unordered_map>
#include "base/crtscan.h"
#include "control/QuillonCtrl.h"

// The element names of the document and the put behind each, with how the value is scanned.
struct QuillonXmlTable {
    using C = CQuillonCtrl;
    struct Row {
        void (C::*pShort)(SHORT) = nullptr;     // scanned "%d", the low 16 bits put
        void (C::*pFlag)(BOOL) = nullptr;       // scanned "%d", the low 16 bits sign-extended
        void (C::*pColor)(OLE_COLOR) = nullptr; // scanned "%u"
        void (C::*pText)(LPCTSTR) = nullptr;    // the text as it stands
        bool bFont = false;
    };
    static Row Short(void (C::*p)(SHORT)) { return Row{p}; }
    static Row Flag(void (C::*p)(BOOL)) { return Row{nullptr, p}; }
    static Row Color(void (C::*p)(OLE_COLOR)) { return Row{nullptr, nullptr, p}; }
    static Row Text(void (C::*p)(LPCTSTR)) { return Row{nullptr, nullptr, nullptr, p}; }

    static const std::unordered_map<std::u16string, Row>& Rows()
    {
        static const std::unordered_map<std::u16string, Row> rows{
            {u"Alignment", Short(&C::PutShortC<&C::m_nAlignment, 3>)},
            {u"ArrowType", Short(&C::PutShortC<&C::m_nArrowType, 4>)},
            {u"AutoComplete", Short(&C::PutShortCNoRepaint<&C::m_nAutoComplete, 4>)},
            {u"AutoFindSize", Short(&C::SetAutoFindSize)},
            {u"BackColor", Color(&C::SetBackColor)},
            {u"BorderColor", Color(&C::PutColorA<&C::m_clrBorder>)},
            {u"BorderType", Short(&C::SetBorderType)},
            {u"ButtonBevel", Short(&C::PutShortA<&C::m_nButtonBevel>)},
            {u"ButtonFillType", Short(&C::PutShortC<&C::m_nButtonFillType, 14>)},
            {u"ButtonStyle", Short(&C::PutShortC<&C::m_nButtonStyle, 2>)},
            {u"CaseType", Short(&C::PutShortC<&C::m_nCaseType, 3>)},
            {u"DisabledColor", Color(&C::PutColorA<&C::m_clrDisabled>)},
            {u"DisplayStyle", Short(&C::PutShortC<&C::m_nDisplayStyle, 2>)},
            {u"DropBackColor", Color(&C::PutColorA<&C::m_clrDropBack>)},
            {u"DropBackColorTo", Color(&C::PutColorA<&C::m_clrDropBackTo>)},
            {u"DropButton", Flag(&C::PutBoolA<&C::m_bDropButton>)},
            {u"DropForeColor", Color(&C::PutColorA<&C::m_clrDropFore>)},
            {u"DropWidth", Short(&C::SetDropWidth)},
            {u"EditMask", Text(&C::SetEditMask)},
            {u"EmbossBitmap", Flag(&C::PutBoolA<&C::m_bEmbossBitmap>)},
            {u"Font", Row{nullptr, nullptr, nullptr, nullptr, true}},
            {u"ForeColor", Color(&C::SetForeColor)},
            {u"InitialDelay", Short(&C::PutShortB<&C::m_nInitialDelay>)},
            {u"ListOffset", Short(&C::PutShortB<&C::m_nListOffset>)},
            {u"MaskBitmap", Flag(&C::PutBoolA<&C::m_bMaskBitmap>)},
            {u"MaskColor", Color(&C::PutColorA<&C::m_clrMask>)},
            {u"MatchCase", Flag(&C::PutBoolB<&C::m_bMatchCase>)},
            {u"PasswordChar", Text(&C::SetPasswordChar)},
            {u"PicXOffset", Short(&C::PutShortA<&C::m_nPicXOffset>)},
            {u"PicYOffset", Short(&C::PutShortA<&C::m_nPicYOffset>)},
            {u"RepeatRate", Short(&C::PutShortB<&C::m_nRepeatRate>)},
            {u"ReverseBorder", Flag(&C::PutBoolA<&C::m_bReverseBorder>)},
            {u"ScrollBackColor", Color(&C::PutColorA<&C::m_clrScrollBack>)},
            {u"ScrollBackColorTo", Color(&C::PutColorA<&C::m_clrScrollBackTo>)},
            {u"ScrollForeColor", Color(&C::PutColorA<&C::m_clrScrollFore>)},
            {u"ScrollStyle", Short(&C::PutShortCNoRepaint<&C::m_nScrollStyle, 3>)},
            {u"SelectOnFocus", Flag(&C::PutBoolB<&C::m_bSelectOnFocus>)},
            {u"Sorted", Flag(&C::PutBoolB<&C::m_bSorted>)},
            {u"SpinBackColor", Color(&C::PutColorA<&C::m_clrSpinBack>)},
            {u"SpinBackColorTo", Color(&C::PutColorA<&C::m_clrSpinBackTo>)},
            {u"SpinButton", Flag(&C::PutBoolA<&C::m_bSpinButton>)},
            {u"SpinForeColor", Color(&C::PutColorA<&C::m_clrSpinFore>)},
            {u"SpinWidth", Short(&C::PutShortA<&C::m_nSpinWidth>)},
            {u"Text", Text(&C::SetMaskedText)},
            {u"UseMaskChars", Flag(&C::PutBoolB<&C::m_bUseMaskChars>)},
        };
        return rows;
    }
};

namespace {
// Room for a face name of 99 characters and its terminator; a longer name does not scan.
constexpr unsigned kFontNameBuffer = 100;
} // namespace

// Names match exactly, case included; VER, ITEM and unknown names do nothing. A number that does
// not scan leaves the property alone.
void CQuillonCtrl::ApplyXmlProperty(const CString& strName, const CString& strValue)
{
    const auto& rows = QuillonXmlTable::Rows();
    auto it = rows.find(strName.str());
    if (it == rows.end()) return;
    const QuillonXmlTable::Row& row = it->second;
    if (row.pText) {
        (this->*row.pText)(strValue);
    } else if (row.bFont) {
        ApplyXmlFont(InternalGetFont().m_pFont, strValue);
    } else if (row.pColor) {
        unsigned nValue = 0;
        if (swscanf_s(strValue, u"%u", &nValue) > 0) (this->*row.pColor)(nValue);
    } else {
        int nValue = 0;
        if (swscanf_s(strValue, u"%d", &nValue) < 1) return;
        // Shorts and flags keep only the low 16 bits of what was read; a flag's is sign-extended.
        SHORT nLow = static_cast<SHORT>(nValue);
        if (row.pShort) (this->*row.pShort)(nLow);
        else (this->*row.pFlag)(nLow);
    }
}

// "Name,size,italic,bold,strikethrough,underline": once anything scans, all six are put, and a
// missing flag clears its style. A value without a size (or with one that is no currency) keeps
// the font's size.
void CQuillonCtrl::ApplyXmlFont(IFont* pFont, const CString& strValue)
{
    WCHAR name[kFontNameBuffer] = {};
    float size = 0;
    int bItalic = 0, bBold = 0, bStrike = 0, bUnder = 0;
    int nFields = swscanf_s(strValue, u"%[^,],%f,%d,%d,%d,%d", name, kFontNameBuffer, &size, &bItalic, &bBold, &bStrike,
                            &bUnder);
    if (nFields < 1 || !pFont) return;
    CY cySize{};
    pFont->get_Size(&cySize);
    if (nFields >= 2) {
        COleVariant vSize;
        vSize.vt = VT_R4;
        vSize.fltVal = size;
        if (SUCCEEDED(vSize.ChangeType(VT_CY))) cySize = vSize.cyVal;
    }
    pFont->put_Italic(bItalic);
    pFont->put_Bold(bBold);
    pFont->put_Strikethrough(bStrike);
    pFont->put_Underline(bUnder);
    pFont->put_Size(cySize);
    BSTR bstrName = SysAllocString(name);
    pFont->put_Name(bstrName);
    SysFreeString(bstrName);
}
