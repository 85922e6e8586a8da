// CQuillonCtrl: the property exchange in its fixed order, and the reset to defaults.
#include "control/QuillonCtrl.h"

namespace {
constexpr DWORD kExchangeVersion = 0x20000;
}

void CQuillonCtrl::DoPropExchange(CPropExchange* pPX)
{
    DWORD version = 0;
    pPX->ExchangeVersion(version, kExchangeVersion, TRUE);
    COleControl::DoPropExchange(pPX);

    CPictureHolder emptyPicture;
    emptyPicture.CreateEmpty();
    PX_Picture(pPX, u"DropPicture", m_picDrop, emptyPicture);
    PX_Color(pPX, u"BackColor", m_clrBack, 0x80000005);
    PX_Color(pPX, u"ForeColor", m_clrFore, 0x80000012);
    PX_Color(pPX, u"BorderColor", m_clrBorder, 0);
    PX_Color(pPX, u"DropBackColor", m_clrDropBack, 0x8000000F);
    PX_Color(pPX, u"DropBackColorTo", m_clrDropBackTo, 0xFFFFFF);
    PX_Color(pPX, u"DropForeColor", m_clrDropFore, 0x80000012);
    PX_Color(pPX, u"SpinBackColor", m_clrSpinBack, 0x8000000F);
    PX_Color(pPX, u"SpinBackColorTo", m_clrSpinBackTo, 0xFFFFFF);
    PX_Color(pPX, u"SpinForeColor", m_clrSpinFore, 0x80000012);
    PX_Color(pPX, u"DisabledColor", m_clrDisabled, 0x808080);
    PX_Color(pPX, u"MaskColor", m_clrMask, 0xFF0000);
    PX_Color(pPX, u"ScrollBackColor", m_clrScrollBack, 0x80000003);
    PX_Color(pPX, u"ScrollBackColorTo", m_clrScrollBackTo, 0x80000013);
    PX_Color(pPX, u"ScrollForeColor", m_clrScrollFore, 0x80000009);
    PX_Short(pPX, u"BorderType", m_nBorderType, 3);
    PX_Short(pPX, u"ArrowSize", m_nArrowType, 0);
    PX_Short(pPX, u"CaseType", m_nCaseType, 0);
    PX_Short(pPX, u"Alignment", m_nAlignment, 0);
    PX_Short(pPX, u"DisplayStyle", m_nDisplayStyle, 0);
    PX_Short(pPX, u"AutoComplete", m_nAutoComplete, 0);
    PX_Short(pPX, u"ScrollStyle", m_nScrollStyle, 0);
    PX_Short(pPX, u"ButtonFillType", m_nButtonFillType, 0);
    PX_Short(pPX, u"ButtonStyle", m_nButtonStyle, 0);
    PX_Short(pPX, u"DropWidth", m_nDropWidth, 16);
    PX_Short(pPX, u"SpinWidth", m_nSpinWidth, 16);
    PX_Short(pPX, u"ButtonBevel", m_nButtonBevel, 1);
    PX_Short(pPX, u"InitialDelay", m_nInitialDelay, 200);
    PX_Short(pPX, u"RepeatRate", m_nRepeatRate, 50);
    PX_Short(pPX, u"PicXOffset", m_nPicXOffset, 0);
    PX_Short(pPX, u"PicYOffset", m_nPicYOffset, 0);
    PX_Short(pPX, u"ListOffset", m_nListOffset, 0);
    PX_Short(pPX, u"AutoFindSize", m_nAutoFindSize, 5);
    PX_Bool(pPX, u"DropButton", m_bDropButton, FALSE);
    PX_Bool(pPX, u"SpinButton", m_bSpinButton, FALSE);
    PX_Bool(pPX, u"SelectOnFocus", m_bSelectOnFocus, FALSE);
    PX_Bool(pPX, u"MaskBitmap", m_bMaskBitmap, FALSE);
    PX_Bool(pPX, u"EmbossBitmap", m_bEmbossBitmap, FALSE);
    PX_Bool(pPX, u"UseMaskChars", m_bUseMaskChars, TRUE);
    PX_Bool(pPX, u"MatchCase", m_bMatchCase, FALSE);
    PX_Bool(pPX, u"Sorted", m_bSorted, FALSE);
    PX_Bool(pPX, u"ReverseBorder", m_bReverseBorder, FALSE);
    PX_String(pPX, u"EditMask", m_strEditMask, CString());
    PX_String(pPX, u"Text", m_strText, CString());
    PX_String(pPX, u"PasswordChar", m_strPasswordChar, CString());

    ResetRunTimeState();
    UpdatePictureSize();
    UpdateInsets();
    if (AmbientUserMode()) BuildLiteral();
}

// The run-time state that every exchange and reset sets back. The child window flags stay true
// to the windows: a save at run time must not forget an edit or list that exists.
void CQuillonCtrl::ResetRunTimeState()
{
    m_nDropPressed = 0;
    m_nSpinPressed = 0;
    m_bDropCaptured = FALSE;
    m_bSpinRepeating = FALSE;
    m_bMouseOver = FALSE;
    m_bFirstDrawFired = FALSE;
    m_bSpinFirstTick = TRUE;
    m_strLiteral.Empty();
    m_clrEditBrush = -1;
}

void CQuillonCtrl::OnResetState()
{
    COleControl::OnResetState();
    m_picDrop.CreateEmpty();
    ApplyResetDifferences();
    m_bItemsDirty = TRUE;
    ResetRunTimeState();
    SetBackColor(0x80000005);
    UpdatePictureSize();
    UpdateInsets();
    if (AmbientUserMode()) BuildLiteral();
}

// The reset direction of the exchange has just given every member its table default; the reset
// differs from it only here: the drop and spin glyphs start black, and the strings empty.
void CQuillonCtrl::ApplyResetDifferences()
{
    m_clrDropFore = 0;
    m_clrSpinFore = 0;
    m_strEditMask.Empty();
    m_strText.Empty();
    m_strLiteral.Empty();
    m_strPasswordChar.Empty();
}
