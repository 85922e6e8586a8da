// CQuillonCtrl: the dispatch map of _DQuillon in its order, and the event map of _DQuillonEvents.
#include "control/QuillonCtrl.h"

namespace {

// An entry whose work lands with a later part of the control: declared with its dispid and
// types, and answering E_NOTIMPL until then.
DispEntry NotYetBuilt(DispEntry e)
{
    auto notImpl = [](auto&&...) { return E_NOTIMPL; };
    if (e.flags & DISPATCH_METHOD) e.call = notImpl;
    else e.put = notImpl;
    return e;
}

// A property whose get already gives its fixed value and whose put waits for its part.
template <class R>
DispEntry PendingPut(const char16_t* name, DISPID dispid, VARTYPE vt, R (CQuillonCtrl::*get)())
{
    DispEntry e = MakeDispEntry(name, dispid, DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT, vt);
    e.get = [get, vt](CCmdTarget* t, VARIANT* out) {
        DispToVariant((static_cast<CQuillonCtrl*>(t)->*get)(), vt, out);
        return S_OK;
    };
    return NotYetBuilt(std::move(e));
}

DispEntry PendingMethod(const char16_t* name, DISPID dispid, VARTYPE vtResult, std::vector<VARTYPE> params = {})
{
    DispEntry e = MakeDispEntry(name, dispid, DISPATCH_METHOD, vtResult);
    e.params = std::move(params);
    return NotYetBuilt(std::move(e));
}

} // namespace

#define COLOR_A(name, id, member) \
    DispProperty(name, id, VT_UI4, &CQuillonCtrl::GetColor<&CQuillonCtrl::member>, &CQuillonCtrl::PutColorA<&CQuillonCtrl::member>)
#define BOOL_A(name, id, member) \
    DispProperty(name, id, VT_BOOL, &CQuillonCtrl::GetBool<&CQuillonCtrl::member>, &CQuillonCtrl::PutBoolA<&CQuillonCtrl::member>)
#define BOOL_B(name, id, member) \
    DispProperty(name, id, VT_BOOL, &CQuillonCtrl::GetBool<&CQuillonCtrl::member>, &CQuillonCtrl::PutBoolB<&CQuillonCtrl::member>)
#define SHORT_A(name, id, member) \
    DispProperty(name, id, VT_I2, &CQuillonCtrl::GetShort<&CQuillonCtrl::member>, &CQuillonCtrl::PutShortA<&CQuillonCtrl::member>)
#define SHORT_B(name, id, member) \
    DispProperty(name, id, VT_I2, &CQuillonCtrl::GetShort<&CQuillonCtrl::member>, &CQuillonCtrl::PutShortB<&CQuillonCtrl::member>)
#define SHORT_C(name, id, member, bound) \
    DispProperty(name, id, VT_I2, &CQuillonCtrl::GetShort<&CQuillonCtrl::member>, &CQuillonCtrl::PutShortC<&CQuillonCtrl::member, bound>)
#define SHORT_C_NOPAINT(name, id, member, bound) \
    DispProperty(name, id, VT_I2, &CQuillonCtrl::GetShort<&CQuillonCtrl::member>, &CQuillonCtrl::PutShortCNoRepaint<&CQuillonCtrl::member, bound>)
#define SHORT_SET(name, id, member, setter) \
    DispProperty(name, id, VT_I2, &CQuillonCtrl::GetShort<&CQuillonCtrl::member>, &CQuillonCtrl::setter)

const CDispatchMap& CQuillonCtrl::DispatchMap()
{
    static const CDispatchMap map = [] {
        CDispatchMap m{
            PendingMethod(u"AboutBox", DISPID_ABOUTBOX, VT_EMPTY),
            StockBackColor(), StockForeColor(), StockEnabled(), StockFont(), StockHwnd(), StockText(),
            COLOR_A(u"BorderColor", 1, m_clrBorder),
            SHORT_SET(u"BorderType", 2, m_nBorderType, SetBorderType),
            SHORT_C(u"ArrowType", 3, m_nArrowType, 4),
            SHORT_A(u"ButtonBevel", 4, m_nButtonBevel),
            BOOL_A(u"DropButton", 5, m_bDropButton),
            COLOR_A(u"DropBackColor", 6, m_clrDropBack),
            COLOR_A(u"DropForeColor", 7, m_clrDropFore),
            DispProperty(u"DropPicture", 8, VT_DISPATCH, &CQuillonCtrl::GetDropPicture, &CQuillonCtrl::SetDropPicture),
            SHORT_SET(u"DropWidth", 9, m_nDropWidth, SetDropWidth),
            SHORT_A(u"PicXOffset", 10, m_nPicXOffset),
            SHORT_A(u"PicYOffset", 11, m_nPicYOffset),
            SHORT_B(u"RepeatRate", 12, m_nRepeatRate),
            BOOL_A(u"SpinButton", 13, m_bSpinButton),
            COLOR_A(u"SpinForeColor", 14, m_clrSpinFore),
            SHORT_A(u"SpinWidth", 15, m_nSpinWidth),
            SHORT_B(u"InitialDelay", 16, m_nInitialDelay),
            COLOR_A(u"SpinBackColor", 17, m_clrSpinBack),
            COLOR_A(u"DisabledColor", 18, m_clrDisabled),
            DispProperty(u"EditMask", 19, VT_BSTR, &CQuillonCtrl::GetEditMask, &CQuillonCtrl::SetEditMask),
            SHORT_C(u"CaseType", 20, m_nCaseType, 3),
            SHORT_C(u"Alignment", 21, m_nAlignment, 3),
            BOOL_B(u"UseMaskChars", 22, m_bUseMaskChars),
            BOOL_B(u"SelectOnFocus", 23, m_bSelectOnFocus),
            SHORT_C(u"DisplayStyle", 24, m_nDisplayStyle, 2),
            BOOL_A(u"MaskBitmap", 25, m_bMaskBitmap),
            COLOR_A(u"MaskColor", 26, m_clrMask),
            BOOL_A(u"EmbossBitmap", 27, m_bEmbossBitmap),
            SHORT_C_NOPAINT(u"AutoComplete", 28, m_nAutoComplete, 4),
            SHORT_C_NOPAINT(u"ScrollStyle", 29, m_nScrollStyle, 3),
            SHORT_B(u"ListOffset", 30, m_nListOffset),
            SHORT_SET(u"AutoFindSize", 31, m_nAutoFindSize, SetAutoFindSize),
            BOOL_B(u"MatchCase", 32, m_bMatchCase),
            BOOL_B(u"Sorted", 33, m_bSorted),
            SHORT_C(u"ButtonFillType", 34, m_nButtonFillType, 14),
            COLOR_A(u"DropBackColorTo", 35, m_clrDropBackTo),
            COLOR_A(u"SpinBackColorTo", 36, m_clrSpinBackTo),
            SHORT_C(u"ButtonStyle", 37, m_nButtonStyle, 2),
            BOOL_A(u"ReverseBorder", 38, m_bReverseBorder),
            COLOR_A(u"ScrollBackColor", 39, m_clrScrollBack),
            COLOR_A(u"ScrollBackColorTo", 40, m_clrScrollBackTo),
            COLOR_A(u"ScrollForeColor", 41, m_clrScrollFore),
            DispProperty(u"XMLRead", 42, VT_BSTR, &CQuillonCtrl::GetEmptyString, &CQuillonCtrl::SetXMLRead),
            DispProperty(u"XMLWrite", 43, VT_BSTR, &CQuillonCtrl::GetEmptyString, &CQuillonCtrl::SetXMLWrite),
            DispProperty(u"ControlStyle", 44, VT_I2, &CQuillonCtrl::GetControlStyle, &CQuillonCtrl::SetControlStyle),
            DispProperty(u"PasswordChar", 45, VT_BSTR, &CQuillonCtrl::GetPasswordChar, &CQuillonCtrl::SetPasswordChar),
            DispProperty(u"Text", 46, VT_BSTR, &CQuillonCtrl::GetMaskedText, &CQuillonCtrl::SetMaskedText),
            DispMethod(u"CaretPosition", 47, VT_I2, &CQuillonCtrl::CaretPosition),
            DispMethod(u"StopTimer", 48, VT_EMPTY, &CQuillonCtrl::StopTimer),
            DispMethod(u"SelStart", 49, VT_I2, &CQuillonCtrl::SelStart),
            DispMethod(u"SelEnd", 50, VT_I2, &CQuillonCtrl::SelEnd),
            DispMethod(u"SetSel", 51, VT_EMPTY, &CQuillonCtrl::SetSel, {VT_I2, VT_I2, VT_BOOL}),
            DispMethod(u"RemoveItem", 52, VT_BOOL, &CQuillonCtrl::RemoveItem, {VT_I2}),
            DispMethod(u"ClearItems", 53, VT_EMPTY, &CQuillonCtrl::ClearItems),
            DispMethod(u"ItemCount", 54, VT_I2, &CQuillonCtrl::ItemCount),
            DispMethod(u"AddItem", 55, VT_I2, &CQuillonCtrl::AddItem, {VT_BSTR}),
            DispMethod(u"HideList", 56, VT_EMPTY, &CQuillonCtrl::HideList),
            DispMethod(u"ReadFile", 57, VT_BOOL, &CQuillonCtrl::ReadFile, {VT_BSTR, VT_I2}),
            DispMethod(u"WriteFile", 58, VT_BOOL, &CQuillonCtrl::WriteFile, {VT_BSTR, VT_I2}),
            DispMethod(u"ReadXMLString", 59, VT_BSTR, &CQuillonCtrl::ReadXMLString, {VT_I2}),
            PendingPut(u"PropertyPages", 60, VT_I2, &CQuillonCtrl::GetZero),
            DispMethod(u"EditHwnd", 61, VT_I4, &CQuillonCtrl::EditHwnd),
        };
        // _Text, the default value (dispid 0), is the control's text.
        m.Alias(DISPID_VALUE, 46, u"_Text");
        return m;
    }();
    return map;
}

const CEventMap& CQuillonCtrl::EventMap()
{
    static const CEventMap map{
        {u"ClickDrop", eventidClickDrop, {}},
        {u"ClickSpin", eventidClickSpin, {VT_I2}},
        {u"Change", eventidChange, {}},
        {u"MouseOn", eventidMouseOn, {}},
        {u"CtrlError", eventidCtrlError, {VT_I2, VT_I2}},
        {u"FirstDraw", eventidFirstDraw, {}},
        {u"Click", DISPID_CLICK, {}},
        {u"DblClick", DISPID_DBLCLICK, {}},
        {u"KeyDown", DISPID_KEYDOWN, {VT_BYREF | VT_I2, VT_I2}},
        {u"KeyPress", DISPID_KEYPRESS, {VT_BYREF | VT_I2}},
        {u"KeyUp", DISPID_KEYUP, {VT_BYREF | VT_I2, VT_I2}},
        {u"MouseDown", DISPID_MOUSEDOWN, {VT_I2, VT_I2, VT_I4, VT_I4}},
        {u"MouseMove", DISPID_MOUSEMOVE, {VT_I2, VT_I2, VT_I4, VT_I4}},
        {u"MouseUp", DISPID_MOUSEUP, {VT_I2, VT_I2, VT_I4, VT_I4}},
    };
    return map;
}
