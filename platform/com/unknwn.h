// COM core: GUIDs, IUnknown, IDispatch and the automation constants, as objbase.h and oaidl.h name them.
#pragma once
#include <cstring>
#include <utility>
#include "base/wintypes.h"

struct GUID {
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
    bool operator==(const GUID& o) const { return std::memcmp(this, &o, sizeof(GUID)) == 0; }
    bool operator!=(const GUID& o) const { return !(*this == o); }
};
typedef GUID IID;
typedef GUID CLSID;
typedef const GUID& REFIID;
typedef const GUID& REFCLSID;
typedef const GUID& REFGUID;
typedef ULONG LCID;
inline bool IsEqualGUID(REFGUID a, REFGUID b) { return a == b; }
inline bool IsEqualIID(REFIID a, REFIID b) { return a == b; }

inline constexpr IID IID_NULL = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};
inline constexpr IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IDispatch = {0x00020400, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IClassFactory = {0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

struct IUnknown {
    virtual HRESULT QueryInterface(REFIID riid, void** ppv) = 0;
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;
protected:
    ~IUnknown() = default;
};
typedef IUnknown* LPUNKNOWN;

struct VARIANT;
typedef VARIANT VARIANTARG;

struct DISPPARAMS {
    VARIANTARG* rgvarg;          // arguments in reverse order, as in COM
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
};

struct EXCEPINFO {
    WORD wCode;
    const char16_t* bstrDescription;
    HRESULT scode;
};

enum : WORD {
    DISPATCH_METHOD = 0x1,
    DISPATCH_PROPERTYGET = 0x2,
    DISPATCH_PROPERTYPUT = 0x4,
    DISPATCH_PROPERTYPUTREF = 0x8,
};

enum : DISPID {
    DISPID_UNKNOWN = -1,
    DISPID_VALUE = 0,
    DISPID_PROPERTYPUT = -3,
    DISPID_BACKCOLOR = -501,
    DISPID_FONT = -512,
    DISPID_FORECOLOR = -513,
    DISPID_ENABLED = -514,
    DISPID_HWND = -515,
    DISPID_TEXT = -517,
    DISPID_ABOUTBOX = -552,
    DISPID_CLICK = -600,
    DISPID_DBLCLICK = -601,
    DISPID_KEYDOWN = -602,
    DISPID_KEYPRESS = -603,
    DISPID_KEYUP = -604,
    DISPID_MOUSEDOWN = -605,
    DISPID_MOUSEMOVE = -606,
    DISPID_MOUSEUP = -607,
    DISPID_AMBIENT_BACKCOLOR = -701,
    DISPID_AMBIENT_FONT = -703,
    DISPID_AMBIENT_FORECOLOR = -704,
    DISPID_AMBIENT_LOCALEID = -705,
    DISPID_AMBIENT_USERMODE = -709,
};

#define DISP_E_UNKNOWNINTERFACE ((HRESULT)0x80020001)
#define DISP_E_MEMBERNOTFOUND ((HRESULT)0x80020003)
#define DISP_E_PARAMNOTFOUND ((HRESULT)0x80020004)
#define DISP_E_TYPEMISMATCH ((HRESULT)0x80020005)
#define DISP_E_UNKNOWNNAME ((HRESULT)0x80020006)
#define DISP_E_NONAMEDARGS ((HRESULT)0x80020007)
#define DISP_E_BADVARTYPE ((HRESULT)0x80020008)
#define DISP_E_EXCEPTION ((HRESULT)0x80020009)
#define DISP_E_OVERFLOW ((HRESULT)0x8002000A)
#define DISP_E_BADPARAMCOUNT ((HRESULT)0x8002000E)
#define CTL_E_SETNOTSUPPORTED ((HRESULT)0x800A017F)
#define CTL_E_OUTOFMEMORY ((HRESULT)0x800A0007)

struct ITypeInfo;

struct IDispatch : IUnknown {
    virtual HRESULT GetTypeInfoCount(UINT* pctinfo) = 0;
    virtual HRESULT GetTypeInfo(UINT iTInfo, LCID lcid, ITypeInfo** ppTInfo) = 0;
    virtual HRESULT GetIDsOfNames(REFIID riid, LPCOLESTR* rgszNames, UINT cNames, LCID lcid, DISPID* rgDispId) = 0;
    virtual HRESULT Invoke(DISPID dispIdMember, REFIID riid, LCID lcid, WORD wFlags, DISPPARAMS* pDispParams,
                           VARIANT* pVarResult, EXCEPINFO* pExcepInfo, UINT* puArgErr) = 0;
protected:
    ~IDispatch() = default;
};
typedef IDispatch* LPDISPATCH;

struct IClassFactory : IUnknown {
    virtual HRESULT CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) = 0;
    virtual HRESULT LockServer(BOOL fLock) = 0;
protected:
    ~IClassFactory() = default;
};

// Reference count shared by the implementations in this stand-in: deletes the object at zero.
// Objects live in the single-threaded apartment of the thread that made them, so the count is a
// plain number, as ATL's CComSingleThreadModel keeps it.
template <class T>
class CComRefCount {
public:
    ULONG AddRefImpl() { return ++m_cRef; }
    ULONG ReleaseImpl(T* self)
    {
        ULONG n = --m_cRef;
        if (n == 0) delete self;
        return n;
    }
private:
    ULONG m_cRef = 1;
};

// Releases an interface pointer when it goes out of scope.
template <class I>
class CComPtr {
public:
    CComPtr() = default;
    explicit CComPtr(I* p, bool addRef = true) : m_p(p) { if (m_p && addRef) m_p->AddRef(); }
    CComPtr(const CComPtr& o) : CComPtr(o.m_p) {}
    CComPtr& operator=(const CComPtr& o) { CComPtr(o).Swap(*this); return *this; }
    ~CComPtr() { if (m_p) m_p->Release(); }
    I* operator->() const { return m_p; }
    I* Get() const { return m_p; }
    I** operator&() { Reset(); return &m_p; }
    explicit operator bool() const { return m_p != nullptr; }
    void Reset() { if (m_p) m_p->Release(); m_p = nullptr; }
    I* Detach() { I* p = m_p; m_p = nullptr; return p; }
    void Swap(CComPtr& o) { std::swap(m_p, o.m_p); }
private:
    I* m_p = nullptr;
};
