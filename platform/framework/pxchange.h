// Property exchange (MFC's CPropExchange and the PX_ functions): one routine loads, saves and resets.
#pragma once
#include "com/ocidl.h"

class CPictureHolder;
class CFontHolder;

class CPropExchange {
public:
    virtual ~CPropExchange() = default;
    BOOL IsLoading() const { return m_bLoading; }
    DWORD GetVersion() const { return m_dwVersion; }
    // Exchanges the version; on load without a stored version the default is taken.
    virtual BOOL ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL bConvert);
    // pvProp points to SHORT (VT_I2), BOOL (VT_BOOL), LONG or OLE_COLOR (VT_I4) or CString (VT_BSTR).
    virtual BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault = nullptr) = 0;
    // An object property: on save *ppUnk is written; on load it is replaced by a new reference.
    virtual BOOL ExchangePersistentProp(LPCTSTR pszPropName, LPUNKNOWN* ppUnk, REFIID iid, LPUNKNOWN pUnkDefault) = 0;

protected:
    BOOL m_bLoading = FALSE;
    DWORD m_dwVersion = 0;
};

// Through a property bag, keyed by name ("_Version" holds the version).
class CPropbagPropExchange : public CPropExchange {
public:
    CPropbagPropExchange(IPropertyBag* pBag, BOOL bLoading) : m_pBag(pBag) { m_bLoading = bLoading; }
    BOOL ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL bConvert) override;
    BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) override;
    BOOL ExchangePersistentProp(LPCTSTR pszPropName, LPUNKNOWN* ppUnk, REFIID iid, LPUNKNOWN pUnkDefault) override;
private:
    IPropertyBag* m_pBag;
};

// Through a stream: the values one after the other in exchange order, the version first.
// A load that runs past the end of the stream takes the defaults from there on.
class CStreamPropExchange : public CPropExchange {
public:
    CStreamPropExchange(IStream* pStm, BOOL bLoading) : m_pStm(pStm) { m_bLoading = bLoading; }
    BOOL ExchangeVersion(DWORD& dwVersionLoaded, DWORD dwVersionDefault, BOOL bConvert) override;
    BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) override;
    BOOL ExchangePersistentProp(LPCTSTR pszPropName, LPUNKNOWN* ppUnk, REFIID iid, LPUNKNOWN pUnkDefault) override;
private:
    bool Read(void* pv, ULONG cb);
    IStream* m_pStm;
    bool m_bEnded = false;
};

// Sets every property to its default: a load from nowhere.
class CResetPropExchange : public CPropExchange {
public:
    CResetPropExchange() { m_bLoading = TRUE; }
    BOOL ExchangeProp(LPCTSTR pszPropName, VARTYPE vtProp, void* pvProp, const void* pvDefault) override;
    BOOL ExchangePersistentProp(LPCTSTR pszPropName, LPUNKNOWN* ppUnk, REFIID iid, LPUNKNOWN pUnkDefault) override;
};

BOOL PX_Short(CPropExchange* pPX, LPCTSTR pszPropName, SHORT& sValue, SHORT sDefault);
BOOL PX_Bool(CPropExchange* pPX, LPCTSTR pszPropName, BOOL& bValue, BOOL bDefault);
BOOL PX_Long(CPropExchange* pPX, LPCTSTR pszPropName, LONG& lValue, LONG lDefault);
BOOL PX_Color(CPropExchange* pPX, LPCTSTR pszPropName, OLE_COLOR& clrValue, OLE_COLOR clrDefault);
BOOL PX_String(CPropExchange* pPX, LPCTSTR pszPropName, CString& strValue, const CString& strDefault);
BOOL PX_Picture(CPropExchange* pPX, LPCTSTR pszPropName, CPictureHolder& pict, CPictureHolder& pictDefault);
BOOL PX_Font(CPropExchange* pPX, LPCTSTR pszPropName, CFontHolder& font, const FONTDESC* pFontDesc, LPFONTDISP pFontDispAmbient);
