// VARIANT with the types the automation surface uses, VariantChangeType coercions, and COleVariant.
#pragma once
#include "base/cstring.h"
#include "bstr.h"
#include "unknwn.h"

enum VARENUM : VARTYPE {
    VT_EMPTY = 0, VT_NULL = 1, VT_I2 = 2, VT_I4 = 3, VT_R4 = 4, VT_R8 = 5, VT_CY = 6, VT_DATE = 7,
    VT_BSTR = 8, VT_DISPATCH = 9, VT_ERROR = 10, VT_BOOL = 11, VT_VARIANT = 12, VT_UNKNOWN = 13,
    VT_I1 = 16, VT_UI1 = 17, VT_UI2 = 18, VT_UI4 = 19, VT_I8 = 20, VT_UI8 = 21, VT_INT = 22, VT_UINT = 23,
    VT_VOID = 24, VT_HRESULT = 25, VT_USERDEFINED = 29,
    VT_BYREF = 0x4000,
};

// Currency: a 64-bit integer scaled by 10,000.
union CY {
    struct { ULONG Lo; LONG Hi; } s;
    LONGLONG int64;
};

struct VARIANT {
    VARTYPE vt;
    WORD wReserved1, wReserved2, wReserved3;
    union {
        LONGLONG llVal;
        LONG lVal;
        BYTE bVal;
        SHORT iVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        HRESULT scode;
        CY cyVal;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        USHORT uiVal;
        ULONG ulVal;
        INT intVal;
        UINT uintVal;
        SHORT* piVal;
        LONG* plVal;
        VARIANT_BOOL* pboolVal;
        BSTR* pbstrVal;
        VARIANT* pvarVal;
    };
};

#define VARIANT_ALPHABOOL 0x2
#define VARIANT_NOVALUEPROP 0x1

void VariantInit(VARIANT* pvarg);
HRESULT VariantClear(VARIANT* pvarg);
HRESULT VariantCopy(VARIANT* pvargDest, const VARIANT* pvargSrc);
// Follows references, then converts between numbers, truth values, currency and strings with
// range checks (DISP_E_OVERFLOW) and banker's rounding; strings parse as numbers or "True"/"False".
// An object converts to a plain value through its default property (dispid 0).
HRESULT VariantChangeType(VARIANT* pvargDest, const VARIANT* pvarSrc, USHORT wFlags, VARTYPE vt);

// MFC's owning wrapper: clears itself and copies deeply.
class COleVariant : public VARIANT {
public:
    COleVariant() { VariantInit(this); }
    COleVariant(const VARIANT& v) { VariantInit(this); VariantCopy(this, &v); }
    COleVariant(const COleVariant& v) : COleVariant(static_cast<const VARIANT&>(v)) {}
    COleVariant(const char16_t* psz) { VariantInit(this); vt = VT_BSTR; bstrVal = SysAllocString(psz ? psz : u""); }
    COleVariant(const CString& s)
    {
        VariantInit(this);
        vt = VT_BSTR;
        bstrVal = SysAllocStringLen(s.GetString(), static_cast<UINT>(s.GetLength())); // NULs and all
    }
    COleVariant(SHORT n, VARTYPE vtSrc = VT_I2);
    COleVariant(LONG n, VARTYPE vtSrc = VT_I4);
    COleVariant(double d) { VariantInit(this); vt = VT_R8; dblVal = d; }
    COleVariant(IDispatch* p) { VariantInit(this); vt = VT_DISPATCH; pdispVal = p; if (p) p->AddRef(); }
    ~COleVariant() { VariantClear(this); }
    COleVariant& operator=(const VARIANT& v) { if (&v != this) VariantCopy(this, &v); return *this; }
    COleVariant& operator=(const COleVariant& v) { return *this = static_cast<const VARIANT&>(v); }
    HRESULT ChangeType(VARTYPE vtNew) { return VariantChangeType(this, this, 0, vtNew); }
    void Clear() { VariantClear(this); }
    VARIANT Detach() { VARIANT v = *this; VariantInit(this); return v; }
};

// The text of a BSTR as a CString (null is empty).
inline CString BstrToString(BSTR b) { return b ? CString(b, static_cast<int>(SysStringLen(b))) : CString(); }
