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

DispEntry COleControl::StockBackColor()
{
    DispEntry e = DispProperty(u"BackColor", DISPID_BACKCOLOR, VT_UI4, &COleControl::GetBackColor, &COleControl::SetBackColor);
    e.bStock = true;
    return e;
}

DispEntry COleControl::StockForeColor()
{
    DispEntry e = DispProperty(u"ForeColor", DISPID_FORECOLOR, VT_UI4, &COleControl::GetForeColor, &COleControl::SetForeColor);
    e.bStock = true;
    return e;
}

DispEntry COleControl::StockEnabled()
{
    DispEntry e = DispProperty(u"Enabled", DISPID_ENABLED, VT_BOOL, &COleControl::GetEnabled, &COleControl::SetEnabled);
    e.bStock = true;
    return e;
}

DispEntry COleControl::StockFont()
{
    DispEntry e = DispProperty(u"Font", DISPID_FONT, VT_DISPATCH, &COleControl::GetFont, &COleControl::SetFont);
    e.bStock = true;
    return e;
}

DispEntry COleControl::StockHwnd()
{
    DispEntry e = DispProperty(u"hWnd", DISPID_HWND, VT_I4, &COleControl::GetHwnd, &COleControl::SetHwnd);
    e.put = [](CCmdTarget*, const VARIANT&) { return CTL_E_SETNOTSUPPORTED; }; // the window handle is read-only
    e.bStock = true;
    return e;
}

DispEntry COleControl::StockText()
{
    DispEntry e = DispProperty(u"Text", DISPID_TEXT, VT_BSTR, &COleControl::GetText, &COleControl::SetText);
    e.bStock = true;
    return e;
}
