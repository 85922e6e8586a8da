// VARIANT life cycle and the coercions of VariantChangeType.
#include "variant.h"
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

void VariantInit(VARIANT* v)
{
    v->vt = VT_EMPTY;
    v->wReserved1 = v->wReserved2 = v->wReserved3 = 0;
    v->llVal = 0;
}

HRESULT VariantClear(VARIANT* v)
{
    if (!(v->vt & VT_BYREF)) {
        if (v->vt == VT_BSTR) SysFreeString(v->bstrVal);
        else if ((v->vt == VT_DISPATCH || v->vt == VT_UNKNOWN) && v->punkVal) v->punkVal->Release();
    }
    VariantInit(v);
    return S_OK;
}

HRESULT VariantCopy(VARIANT* dst, const VARIANT* src)
{
    if (dst == src) return S_OK;
    VARIANT copy = *src;
    if (!(src->vt & VT_BYREF)) {
        if (src->vt == VT_BSTR && src->bstrVal) {
            copy.bstrVal = SysAllocStringLen(src->bstrVal, SysStringLen(src->bstrVal));
            if (!copy.bstrVal) return E_OUTOFMEMORY;
        } else if ((src->vt == VT_DISPATCH || src->vt == VT_UNKNOWN) && src->punkVal) {
            src->punkVal->AddRef();
        }
    }
    VariantClear(dst);
    *dst = copy;
    return S_OK;
}

COleVariant::COleVariant(SHORT n, VARTYPE vtSrc)
{
    VariantInit(this);
    vt = vtSrc;
    if (vtSrc == VT_BOOL) boolVal = n ? VARIANT_TRUE : VARIANT_FALSE;
    else iVal = n;
}

COleVariant::COleVariant(LONG n, VARTYPE vtSrc)
{
    VariantInit(this);
    vt = vtSrc;
    if (vtSrc == VT_BOOL) boolVal = n ? VARIANT_TRUE : VARIANT_FALSE;
    else if (vtSrc == VT_I2) iVal = static_cast<SHORT>(n);
    else lVal = n;
}

namespace {

// Every value passes through one of three forms on its way between types.
struct Scalar {
    enum Kind { Integer, Real, Text } kind = Integer;
    long long i = 0;
    double d = 0;
    std::u16string text;
};

double RoundHalfEven(double d)
{
    double r = std::nearbyint(d); // the default rounding mode is to nearest, ties to even
    return r;
}

HRESULT Dereference(const VARIANT* src, VARIANT* out)
{
    if (!(src->vt & VT_BYREF)) { *out = *src; return S_OK; }
    VariantInit(out);
    VARTYPE base = src->vt & ~VT_BYREF;
    out->vt = base;
    switch (base) {
    case VT_I2: out->iVal = *src->piVal; break;
    case VT_I4: out->lVal = *src->plVal; break;
    case VT_BOOL: out->boolVal = *src->pboolVal; break;
    case VT_BSTR: out->bstrVal = *src->pbstrVal; break;
    case VT_VARIANT: return Dereference(src->pvarVal, out);
    default: return DISP_E_BADVARTYPE;
    }
    return S_OK;
}

HRESULT ReadScalar(const VARIANT& v, Scalar& s)
{
    switch (v.vt) {
    case VT_EMPTY: s.i = 0; return S_OK;
    case VT_I1: s.i = static_cast<signed char>(v.bVal); return S_OK;
    case VT_UI1: s.i = v.bVal; return S_OK;
    case VT_I2: s.i = v.iVal; return S_OK;
    case VT_UI2: s.i = v.uiVal; return S_OK;
    case VT_I4: case VT_INT: s.i = v.lVal; return S_OK;
    case VT_UI4: case VT_UINT: s.i = v.ulVal; return S_OK;
    case VT_I8: case VT_UI8: s.i = v.llVal; return S_OK;
    case VT_BOOL: s.i = v.boolVal ? -1 : 0; return S_OK;
    case VT_R4: s.kind = Scalar::Real; s.d = v.fltVal; return S_OK;
    case VT_R8: case VT_DATE: s.kind = Scalar::Real; s.d = v.dblVal; return S_OK;
    case VT_CY:
        if (v.cyVal.int64 % 10000 == 0) s.i = v.cyVal.int64 / 10000;
        else { s.kind = Scalar::Real; s.d = v.cyVal.int64 / 10000.0; }
        return S_OK;
    case VT_BSTR: s.kind = Scalar::Text; s.text = BstrToString(v.bstrVal).str(); return S_OK;
    }
    return DISP_E_TYPEMISMATCH;
}

HRESULT ParseText(const std::u16string& text, Scalar& s)
{
    CString t(text);
    t.Trim();
    if (t.CompareNoCase(u"true") == 0) { s = Scalar{}; s.i = -1; return S_OK; }
    if (t.CompareNoCase(u"false") == 0) { s = Scalar{}; s.i = 0; return S_OK; }
    std::string ascii = ToUtf8(t);
    if (ascii.empty()) return DISP_E_TYPEMISMATCH;
    char* end = nullptr;
    if (ascii.size() > 2 && ascii[0] == '&' && (ascii[1] == 'H' || ascii[1] == 'h')) { // &HFF, as Basic writes it
        s = Scalar{}; s.i = std::strtoll(ascii.c_str() + 2, &end, 16);
        if (*end == '&') ++end;
        return *end ? DISP_E_TYPEMISMATCH : S_OK;
    }
    double d = std::strtod(ascii.c_str(), &end);
    if (*end || !std::isfinite(d)) return DISP_E_TYPEMISMATCH; // "nan", "inf" and numbers past double are no numbers
    s = Scalar{};
    if (d == std::floor(d) && std::fabs(d) < 9.2e18) s.i = static_cast<long long>(d);
    else { s.kind = Scalar::Real; s.d = d; }
    return S_OK;
}

// 2^63: the first double past the 64-bit integers (INT64_MAX itself rounds up to it as a double).
constexpr double kInt64Limit = 9223372036854775808.0;

HRESULT ToInteger(const Scalar& s, long long lo, long long hi, long long& out)
{
    long long v = s.i;
    if (s.kind == Scalar::Real) {
        double d = RoundHalfEven(s.d);
        if (!(d >= -kInt64Limit && d < kInt64Limit)) return DISP_E_OVERFLOW; // NaN and infinities too
        v = static_cast<long long>(d);
    }
    if (v < lo || v > hi) return DISP_E_OVERFLOW;
    out = v;
    return S_OK;
}

bool IsNonFinite(const Scalar& s) { return s.kind == Scalar::Real && !std::isfinite(s.d); }

std::u16string FormatScalar(const Scalar& s, bool alphaBool, VARTYPE from)
{
    if (from == VT_BOOL && alphaBool) return s.i ? u"True" : u"False";
    if (s.kind == Scalar::Real) {
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.15g", s.d);
        return FromUtf8(buf);
    }
    return FromUtf8(std::to_string(s.i));
}

HRESULT WriteScalar(const Scalar& s, VARTYPE vt, VARIANT& out)
{
    long long n = 0;
    HRESULT hr = S_OK;
    VariantInit(&out);
    out.vt = vt;
    switch (vt) {
    case VT_I2: hr = ToInteger(s, -32768, 32767, n); out.iVal = static_cast<SHORT>(n); break;
    case VT_UI2: hr = ToInteger(s, 0, 65535, n); out.uiVal = static_cast<USHORT>(n); break;
    case VT_I4: case VT_INT: hr = ToInteger(s, INT32_MIN, INT32_MAX, n); out.lVal = static_cast<LONG>(n); break;
    case VT_UI4: case VT_UINT: hr = ToInteger(s, 0, UINT32_MAX, n); out.ulVal = static_cast<ULONG>(n); break;
    case VT_UI1: hr = ToInteger(s, 0, 255, n); out.bVal = static_cast<BYTE>(n); break;
    case VT_I8: hr = ToInteger(s, INT64_MIN, INT64_MAX, n); out.llVal = n; break;
    case VT_BOOL: out.boolVal = (s.kind == Scalar::Real ? s.d != 0 : s.i != 0) ? VARIANT_TRUE : VARIANT_FALSE; break;
    case VT_R4: {
        double d = s.kind == Scalar::Real ? s.d : static_cast<double>(s.i);
        if (std::isfinite(d) && std::fabs(d) > std::numeric_limits<float>::max()) return DISP_E_OVERFLOW;
        out.fltVal = static_cast<float>(d);
        break;
    }
    case VT_R8: out.dblVal = s.kind == Scalar::Real ? s.d : static_cast<double>(s.i); break;
    case VT_CY: {
        double d = (s.kind == Scalar::Real ? s.d : static_cast<double>(s.i)) * 10000.0;
        if (!(std::fabs(d) <= 9.2e18)) return DISP_E_OVERFLOW; // NaN and infinities too
        out.cyVal.int64 = static_cast<LONGLONG>(RoundHalfEven(d));
        break;
    }
    default: out.vt = VT_EMPTY; return DISP_E_BADVARTYPE;
    }
    if (FAILED(hr)) VariantInit(&out);
    return hr;
}

// An object gives its value through the default property, as automation does.
HRESULT DefaultValue(IDispatch* p, VARIANT& out)
{
    if (!p) return DISP_E_TYPEMISMATCH;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    VariantInit(&out);
    HRESULT hr = p->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &out, nullptr, nullptr);
    return FAILED(hr) ? DISP_E_TYPEMISMATCH : S_OK;
}

HRESULT ChangeFromObject(VARIANT* dst, const VARIANT& src, USHORT flags, VARTYPE vt)
{
    if (vt == VT_DISPATCH || vt == VT_UNKNOWN) {
        if (src.vt != VT_DISPATCH && src.vt != VT_UNKNOWN) return DISP_E_TYPEMISMATCH; // no value becomes an object
        if (!src.punkVal) { VARIANT r; VariantInit(&r); r.vt = vt; VariantClear(dst); *dst = r; return S_OK; }
        void* p = nullptr;
        HRESULT hr = src.punkVal->QueryInterface(vt == VT_DISPATCH ? IID_IDispatch : IID_IUnknown, &p);
        if (FAILED(hr)) return DISP_E_TYPEMISMATCH;
        VARIANT r; VariantInit(&r); r.vt = vt; r.punkVal = static_cast<IUnknown*>(p);
        VariantClear(dst); *dst = r;
        return S_OK;
    }
    if (src.vt != VT_DISPATCH || (flags & VARIANT_NOVALUEPROP)) return DISP_E_TYPEMISMATCH;
    COleVariant value;
    HRESULT hr = DefaultValue(src.pdispVal, value);
    if (FAILED(hr)) return hr;
    return VariantChangeType(dst, &value, flags, vt);
}

} // namespace

HRESULT VariantChangeType(VARIANT* dst, const VARIANT* srcIn, USHORT flags, VARTYPE vt)
{
    VARIANT src;
    HRESULT hr = Dereference(srcIn, &src);
    if (FAILED(hr)) return hr;
    if (src.vt == vt) return VariantCopy(dst, &src);
    if (src.vt == VT_DISPATCH || src.vt == VT_UNKNOWN || vt == VT_DISPATCH || vt == VT_UNKNOWN)
        return ChangeFromObject(dst, src, flags, vt);
    if (src.vt == VT_NULL) return DISP_E_TYPEMISMATCH;
    Scalar s;
    if (FAILED(hr = ReadScalar(src, s))) return hr;
    // Not a number and the infinities have no value outside the floating types.
    if (IsNonFinite(s) && vt != VT_R4 && vt != VT_R8) return vt == VT_BSTR ? DISP_E_TYPEMISMATCH : DISP_E_OVERFLOW;
    VARIANT result;
    VariantInit(&result);
    if (vt == VT_BSTR && src.vt == VT_EMPTY) {
        result.vt = VT_BSTR; // empty is the empty string, not "0"
        result.bstrVal = SysAllocStringLen(u"", 0);
    } else if (vt == VT_BSTR) {
        if (s.kind == Scalar::Text) return VariantCopy(dst, &src);
        std::u16string text = FormatScalar(s, flags & VARIANT_ALPHABOOL, src.vt);
        result.vt = VT_BSTR;
        result.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    } else {
        if (s.kind == Scalar::Text && FAILED(hr = ParseText(s.text, s))) return hr;
        if (FAILED(hr = WriteScalar(s, vt, result))) return hr;
    }
    VariantClear(dst);
    *dst = result;
    return S_OK;
}
