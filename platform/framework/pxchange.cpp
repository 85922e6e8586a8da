// The three directions of property exchange and the PX_ functions over them.
#include "pxchange.h"
#include "fontholder.h"
#include "pictholder.h"
#include "com/stream.h"

namespace {

void CopyDefault(VARTYPE vt, void* pv, const void* pvDefault)
{
    if (!pvDefault) return;
    switch (vt) {
    case VT_I2: *static_cast<SHORT*>(pv) = *static_cast<const SHORT*>(pvDefault); break;
    case VT_BOOL: *static_cast<BOOL*>(pv) = *static_cast<const BOOL*>(pvDefault); break;
    case VT_I4: *static_cast<LONG*>(pv) = *static_cast<const LONG*>(pvDefault); break;
    case VT_BSTR: *static_cast<CString*>(pv) = *static_cast<const CString*>(pvDefault); break;
    }
}

void ToVariant(VARTYPE vt, const void* pv, COleVariant& v)
{
    switch (vt) {
    case VT_I2: v = COleVariant(*static_cast<const SHORT*>(pv)); break;
    case VT_BOOL: v = COleVariant(static_cast<SHORT>(*static_cast<const BOOL*>(pv) != 0), VT_BOOL); break;
    case VT_I4: v = COleVariant(*static_cast<const LONG*>(pv)); break;
    case VT_BSTR: v = COleVariant(*static_cast<const CString*>(pv)); break;
    }
}

// A loaded truth value is TRUE (1), whatever the store held; puts keep -1.
void FromVariant(VARTYPE vt, const VARIANT& v, void* pv)
{
    switch (vt) {
    case VT_I2: *static_cast<SHORT*>(pv) = v.iVal; break;
    case VT_BOOL: *static_cast<BOOL*>(pv) = v.boolVal ? TRUE : FALSE; break;
    case VT_I4: *static_cast<LONG*>(pv) = v.lVal; break;
    case VT_BSTR: *static_cast<CString*>(pv) = BstrToString(v.bstrVal); break;
    }
}

void SetUnknown(LPUNKNOWN* ppUnk, LPUNKNOWN p)
{
    if (p) p->AddRef();
    if (*ppUnk) (*ppUnk)->Release();
    *ppUnk = p;
}

} // namespace

BOOL CPropExchange::ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL)
{
    dwVersionLoaded = m_dwVersion = dwVersionDefault;
    return TRUE;
}

BOOL CPropbagPropExchange::ExchangeVersion(DWORD& loaded, DWORD dflt, BOOL)
{
    LONG version = static_cast<LONG>(dflt);
    LONG def = static_cast<LONG>(dflt);
    BOOL ok = ExchangeProp(u"_Version", VT_I4, &version, &def);
    loaded = m_dwVersion = static_cast<DWORD>(version);
    return ok;
}

BOOL CPropbagPropExchange::ExchangeProp(LPCTSTR name, VARTYPE vt, void* pv, const void* pvDefault)
{
    COleVariant v;
    if (!m_bLoading) {
        ToVariant(vt, pv, v);
        return SUCCEEDED(m_pBag->Write(name, &v));
    }
    v.vt = vt;
    if (FAILED(m_pBag->Read(name, &v, nullptr)) || v.vt != vt) {
        CopyDefault(vt, pv, pvDefault);
        return TRUE;
    }
    FromVariant(vt, v, pv);
    return TRUE;
}

BOOL CPropbagPropExchange::ExchangePersistentProp(LPCTSTR name, LPUNKNOWN* ppUnk, REFIID iid, LPUNKNOWN pUnkDefault)
{
    COleVariant v;
    if (!m_bLoading) {
        v.vt = VT_UNKNOWN;
        v.punkVal = *ppUnk;
        if (*ppUnk) (*ppUnk)->AddRef();
        return SUCCEEDED(m_pBag->Write(name, &v));
    }
    v.vt = VT_UNKNOWN;
    if (FAILED(m_pBag->Read(name, &v, nullptr)) || v.vt != VT_UNKNOWN || !v.punkVal) {
        SetUnknown(ppUnk, pUnkDefault);
        return TRUE;
    }
    // An object of another kind (a picture where the font belongs) is no value for this property.
    CComPtr<IUnknown> wanted;
    if (FAILED(v.punkVal->QueryInterface(iid, reinterpret_cast<void**>(&wanted)))) {
        SetUnknown(ppUnk, pUnkDefault);
        return TRUE;
    }
    SetUnknown(ppUnk, v.punkVal);
    return TRUE;
}

bool CStreamPropExchange::Read(void* pv, ULONG cb)
{
    if (!m_bEnded && StreamRead(m_pStm, pv, cb) != S_OK) m_bEnded = true;
    return !m_bEnded;
}

BOOL CStreamPropExchange::ExchangeVersion(DWORD& loaded, DWORD dflt, BOOL)
{
    DWORD version = dflt;
    if (m_bLoading) { if (!Read(&version, sizeof version)) version = dflt; }
    else StreamWrite(m_pStm, &version, sizeof version);
    loaded = m_dwVersion = version;
    return TRUE;
}

BOOL CStreamPropExchange::ExchangeProp(LPCTSTR, VARTYPE vt, void* pv, const void* pvDefault)
{
    ULONG size = vt == VT_I2 ? sizeof(SHORT) : sizeof(LONG);
    if (!m_bLoading) {
        if (vt == VT_BSTR) return SUCCEEDED(StreamWriteString(m_pStm, *static_cast<CString*>(pv)));
        return SUCCEEDED(StreamWrite(m_pStm, pv, size));
    }
    bool ok;
    if (vt == VT_BSTR) {
        CString s;
        ok = !m_bEnded && StreamReadString(m_pStm, s) == S_OK;
        if (ok) *static_cast<CString*>(pv) = s;
        else m_bEnded = true;
    } else {
        LONG raw = 0;
        ok = Read(&raw, size);
        if (ok && vt == VT_I2) *static_cast<SHORT*>(pv) = static_cast<SHORT>(raw);
        else if (ok) *static_cast<LONG*>(pv) = vt == VT_BOOL ? (raw ? TRUE : FALSE) : raw;
    }
    if (!ok) CopyDefault(vt, pv, pvDefault);
    return TRUE;
}

BOOL CStreamPropExchange::ExchangePersistentProp(LPCTSTR, LPUNKNOWN* ppUnk, REFIID iid, LPUNKNOWN pUnkDefault)
{
    if (!m_bLoading) {
        CComPtr<IPersistStream> persist;
        if (*ppUnk) (*ppUnk)->QueryInterface(IID_IPersistStream, reinterpret_cast<void**>(&persist));
        return SUCCEEDED(OleSaveToStream(persist.Get(), m_pStm));
    }
    IUnknown* loaded = nullptr;
    HRESULT hr = m_bEnded ? E_FAIL : OleLoadFromStream(m_pStm, iid, reinterpret_cast<void**>(&loaded));
    if (hr != S_OK) {
        if (FAILED(hr)) m_bEnded = true;
        SetUnknown(ppUnk, pUnkDefault);
        return TRUE;
    }
    SetUnknown(ppUnk, loaded);
    loaded->Release();
    return TRUE;
}

BOOL CResetPropExchange::ExchangeProp(LPCTSTR, VARTYPE vt, void* pv, const void* pvDefault)
{
    CopyDefault(vt, pv, pvDefault);
    return TRUE;
}

BOOL CResetPropExchange::ExchangePersistentProp(LPCTSTR, LPUNKNOWN* ppUnk, REFIID, LPUNKNOWN pUnkDefault)
{
    SetUnknown(ppUnk, pUnkDefault);
    return TRUE;
}

BOOL PX_Short(CPropExchange* pPX, LPCTSTR name, SHORT& value, SHORT def)
{
    return pPX->ExchangeProp(name, VT_I2, &value, &def);
}

BOOL PX_Bool(CPropExchange* pPX, LPCTSTR name, BOOL& value, BOOL def)
{
    return pPX->ExchangeProp(name, VT_BOOL, &value, &def);
}

BOOL PX_Long(CPropExchange* pPX, LPCTSTR name, LONG& value, LONG def)
{
    return pPX->ExchangeProp(name, VT_I4, &value, &def);
}

BOOL PX_Color(CPropExchange* pPX, LPCTSTR name, OLE_COLOR& value, OLE_COLOR def)
{
    return pPX->ExchangeProp(name, VT_I4, &value, &def);
}

BOOL PX_String(CPropExchange* pPX, LPCTSTR name, CString& value, const CString& def)
{
    return pPX->ExchangeProp(name, VT_BSTR, &value, &def);
}

BOOL PX_Picture(CPropExchange* pPX, LPCTSTR name, CPictureHolder& pict, CPictureHolder& pictDefault)
{
    LPUNKNOWN unk = pict.m_pPict;
    if (unk) unk->AddRef();
    BOOL ok = pPX->ExchangePersistentProp(name, &unk, IID_IPicture, pictDefault.m_pPict);
    if (pPX->IsLoading()) {
        IPicture* pic = nullptr;
        if (unk) unk->QueryInterface(IID_IPicture, reinterpret_cast<void**>(&pic));
        pict.SetPicture(pic);
        if (pic) pic->Release();
    }
    if (unk) unk->Release();
    return ok;
}

BOOL PX_Font(CPropExchange* pPX, LPCTSTR name, CFontHolder& font, const FONTDESC* pFontDesc, LPFONTDISP pFontDispAmbient)
{
    LPUNKNOWN unk = font.m_pFont;
    if (unk) unk->AddRef();
    CFontHolder def(nullptr);
    def.InitializeFont(pFontDesc, pFontDispAmbient);
    BOOL ok = pPX->ExchangePersistentProp(name, &unk, IID_IFont, def.m_pFont);
    if (pPX->IsLoading() && unk) {
        IFont* loaded = nullptr;
        unk->QueryInterface(IID_IFont, reinterpret_cast<void**>(&loaded));
        font.SetFont(loaded);
        if (loaded) loaded->Release();
    }
    if (unk) unk->Release();
    return ok;
}
