// COleControl: loading, saving and resetting through property exchange.
#include "olectl.h"
#include "com/stream.h"

void COleControl::ExchangeStockProps(CPropExchange* pPX)
{
    PX_Color(pPX, u"BackColor", m_clrBackColor, AmbientBackColor());
    PX_Color(pPX, u"ForeColor", m_clrForeColor, AmbientForeColor());
    PX_Bool(pPX, u"Enabled", m_bEnabled, TRUE);
    LPFONTDISP ambient = AmbientFont();
    PX_Font(pPX, u"Font", m_font, nullptr, ambient);
    if (ambient) ambient->Release();
    PX_String(pPX, u"Text", m_strStockText, CString());
}

void COleControl::DoPropExchange(CPropExchange* pPX) { ExchangeStockProps(pPX); }

void COleControl::OnResetState()
{
    CResetPropExchange px;
    DoPropExchange(&px);
}

HRESULT COleControl::Exchange(CPropExchange& px, BOOL fClearDirty)
{
    DoPropExchange(&px);
    if (px.IsLoading()) {
        if (m_hWnd) ::EnableWindow(m_hWnd, m_bEnabled); // a live window follows the loaded state
        SetModifiedFlag(FALSE);
        InvalidateControl();
    } else if (fClearDirty) {
        SetModifiedFlag(FALSE);
    }
    return S_OK;
}

HRESULT COleControl::GetClassID(CLSID* pClassID)
{
    *pClassID = GetClassIDRef();
    return S_OK;
}

HRESULT COleControl::InitNew()
{
    OnResetState();
    SetModifiedFlag(FALSE);
    return S_OK;
}

HRESULT COleControl::Load(IPropertyBag* pPropBag, IErrorLog*)
{
    if (!pPropBag) return E_POINTER;
    CPropbagPropExchange px(pPropBag, TRUE);
    return Exchange(px, FALSE);
}

HRESULT COleControl::Save(IPropertyBag* pPropBag, BOOL fClearDirty, BOOL)
{
    if (!pPropBag) return E_POINTER;
    CPropbagPropExchange px(pPropBag, FALSE);
    return Exchange(px, fClearDirty);
}

HRESULT COleControl::IsDirty() { return m_bModified ? S_OK : S_FALSE; }

HRESULT COleControl::Load(IStream* pStm)
{
    if (!pStm) return E_POINTER;
    CStreamPropExchange px(pStm, TRUE);
    return Exchange(px, FALSE);
}

HRESULT COleControl::Save(IStream* pStm, BOOL fClearDirty)
{
    if (!pStm) return E_POINTER;
    CStreamPropExchange px(pStm, FALSE);
    return Exchange(px, fClearDirty);
}
