// COleControl: the stock properties, their dispatch rows and their change handlers.
#include "olectl.h"

void COleControl::SetBackColor(OLE_COLOR clr)
{
    m_clrBackColor = clr;
    SetModifiedFlag();
    OnBackColorChanged();
}

void COleControl::SetForeColor(OLE_COLOR clr)
{
    m_clrForeColor = clr;
    SetModifiedFlag();
    OnForeColorChanged();
}

void COleControl::SetEnabled(BOOL bEnabled)
{
    m_bEnabled = bEnabled ? TRUE : FALSE;
    SetModifiedFlag();
    // The window follows, so that a disabled control takes neither the focus nor input; this is
    // what sends the WM_ENABLE the control hears.
    if (m_hWnd) ::EnableWindow(m_hWnd, m_bEnabled);
    OnEnabledChanged();
}

void COleControl::SetFont(LPFONTDISP pFontDisp)
{
    IFont* font = nullptr;
    IFont* clone = nullptr;
    if (pFontDisp && SUCCEEDED(pFontDisp->QueryInterface(IID_IFont, reinterpret_cast<void**>(&font)))) {
        font->Clone(&clone);
        font->Release();
    }
    if (!clone) return;
    m_font.SetFont(clone);
    clone->Release();
    SetModifiedFlag();
    OnFontChanged();
}

void COleControl::SetText(LPCTSTR pszText)
{
    m_strStockText = pszText;
    SetModifiedFlag();
    OnTextChanged();
}

void COleControl::OnBackColorChanged() { InvalidateControl(); }
void COleControl::OnForeColorChanged() { InvalidateControl(); }
void COleControl::OnEnabledChanged() { InvalidateControl(); }
void COleControl::OnFontChanged() { InvalidateControl(); }

void COleControl::OnTextChanged()
{
    BoundPropertyChanged(DISPID_TEXT);
    InvalidateControl();
}

namespace {
DispEntry Stock(DispEntry e)
{
    e.bStock = true;
    return e;
}
} // namespace

DispEntry COleControl::StockBackColor()
{
    return Stock(DispProperty(u"BackColor", DISPID_BACKCOLOR, VT_UI4, &COleControl::GetBackColor, &COleControl::SetBackColor));
}

DispEntry COleControl::StockForeColor()
{
    return Stock(DispProperty(u"ForeColor", DISPID_FORECOLOR, VT_UI4, &COleControl::GetForeColor, &COleControl::SetForeColor));
}

DispEntry COleControl::StockEnabled()
{
    return Stock(DispProperty(u"Enabled", DISPID_ENABLED, VT_BOOL, &COleControl::GetEnabled, &COleControl::SetEnabled));
}

DispEntry COleControl::StockFont()
{
    return Stock(DispProperty(u"Font", DISPID_FONT, VT_DISPATCH, &COleControl::GetFont, &COleControl::SetFont));
}

DispEntry COleControl::StockHwnd()
{
    DispEntry e = Stock(DispProperty(u"hWnd", DISPID_HWND, VT_I4, &COleControl::GetHwnd, &COleControl::SetHwnd));
    e.put = [](CCmdTarget*, const VARIANT&) { return CTL_E_SETNOTSUPPORTED; }; // the window handle is read-only
    return e;
}

DispEntry COleControl::StockText()
{
    return Stock(DispProperty(u"Text", DISPID_TEXT, VT_BSTR, &COleControl::GetText, &COleControl::SetText));
}
