// The text property bag: parsing, writing and typed reading of "Key = Value" lines.
#include "propbag.h"
#include <vector>
#include "stream.h"

namespace {

CString Quote(const CString& s)
{
    CString out(u'"');
    for (int i = 0; i < s.GetLength(); ++i) {
        char16_t c = s[i];
        switch (c) {
        case u'"': out += u"\\\""; break;
        case u'\\': out += u"\\\\"; break;
        case u'\n': out += u"\\n"; break;
        case u'\r': out += u"\\r"; break;
        case u'\t': out += u"\\t"; break;
        default:
            if (c < 0x20) { CString esc; esc.Format(u"\\u%04X", unsigned(c)); out += esc; }
            else out += c;
        }
    }
    return out + u'"';
}

int HexDigit(char16_t c)
{
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    return -1;
}

// The four hex digits of a \u escape at s[at]; -1 unless all four are there and are digits.
int ReadEscapeUnit(const CString& s, int at, int end)
{
    constexpr int kDigits = 4;
    if (at + kDigits > end) return -1;
    int unit = 0;
    for (int k = 0; k < kDigits; ++k) {
        int d = HexDigit(s[at + k]);
        if (d < 0) return -1;
        unit = unit << 4 | d;
    }
    return unit;
}

// A quoted value as Quote writes it; false, with the reason, for anything it would not write.
bool Unquote(const CString& s, CString& out, const char** pWhy = nullptr)
{
    auto fail = [pWhy](const char* why) { if (pWhy) *pWhy = why; return false; };
    int len = s.GetLength();
    if (len < 2 || s[0] != u'"' || s[len - 1] != u'"') return fail("a string must stand in double quotes");
    out.Empty();
    const int end = len - 1;
    for (int i = 1; i < end; ++i) {
        char16_t c = s[i];
        if (c == u'"') return fail("a double quote inside a string must be escaped");
        if (c != u'\\') { out += c; continue; }
        if (++i >= end) return fail("a string ends in a lone backslash");
        switch (s[i]) {
        case u'n': out += u'\n'; break;
        case u'r': out += u'\r'; break;
        case u't': out += u'\t'; break;
        case u'"': case u'\\': out += s[i]; break;
        case u'u': {
            int unit = ReadEscapeUnit(s, i + 1, end);
            if (unit < 0) return fail("a \\u escape needs four hex digits");
            out += static_cast<char16_t>(unit);
            i += 4;
            break;
        }
        default: return fail("unknown escape in a string");
        }
    }
    return true;
}

CString ToHex(const std::vector<BYTE>& bytes)
{
    static const char16_t digits[] = u"0123456789ABCDEF";
    std::u16string out;
    for (BYTE b : bytes) { out += digits[b >> 4]; out += digits[b & 15]; }
    return CString(out);
}

bool FromHex(const CString& s, std::vector<BYTE>& out)
{
    auto nibble = HexDigit;
    if (s.GetLength() % 2) return false;
    out.clear();
    for (int i = 0; i < s.GetLength(); i += 2) {
        int hi = nibble(s[i]), lo = nibble(s[i + 1]);
        if (hi < 0 || lo < 0) return false;
        out.push_back(static_cast<BYTE>(hi << 4 | lo));
    }
    return true;
}

class CTextPropertyBag final : public IPropertyBag {
public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IPropertyBag) { *ppv = static_cast<IPropertyBag*>(this); AddRef(); return S_OK; }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }
    HRESULT Read(LPCOLESTR name, VARIANT* pVar, IErrorLog*) override;
    HRESULT Write(LPCOLESTR name, VARIANT* pVar) override;

    HRESULT Parse(const CString& text, CString* pError);
    CString Text() const;

private:
    struct Line { CString key; CString value; bool read = false; };
    HRESULT ReadObject(const CString& value, VARIANT* pVar);
    HRESULT EncodeObject(IUnknown* p, CString& out);

    CComRefCount<CTextPropertyBag> m_ref;
    std::vector<Line> m_lines;
};

// The reason a value cannot be what Write writes, or nullptr. Bare values (numbers, words) are
// left to the coercion of the read that asks for them.
const char* DamageOf(const CString& value)
{
    const char* why = nullptr;
    CString unquoted;
    std::vector<BYTE> bytes;
    if (value.GetLength() && value[0] == u'"' && !Unquote(value, unquoted, &why)) return why;
    if (value.GetLength() && value[0] == u'{' && (value.Find(u"{object} ") != 0 || !FromHex(value.Mid(9), bytes)))
        return "an object must be {object} and the hex of its stream";
    return nullptr;
}

HRESULT CTextPropertyBag::Parse(const CString& text, CString* pError)
{
    int start = 0;
    for (int nLine = 1; start < text.GetLength(); ++nLine) {
        int end = text.Find(u'\n', start);
        if (end < 0) end = text.GetLength();
        CString line = text.Mid(start, end - start);
        start = end + 1;
        if (line.GetLength() && line[line.GetLength() - 1] == u'\r') line = line.Left(line.GetLength() - 1);
        if (CString(line).Trim().IsEmpty()) continue;
        int eq = line.Find(u" = ");
        const char* why = eq <= 0 ? "a line must read Key = Value" : DamageOf(line.Mid(eq + 3));
        if (why) {
            if (pError) pError->Format(u"line %d: %s", nLine, FromUtf8(why).c_str());
            return E_INVALIDARG;
        }
        m_lines.push_back({line.Left(eq), line.Mid(eq + 3)});
    }
    return S_OK;
}

CString CTextPropertyBag::Text() const
{
    CString out;
    for (const auto& l : m_lines) out += l.key + u" = " + l.value + u"\n";
    return out;
}

HRESULT CTextPropertyBag::Write(LPCOLESTR name, VARIANT* pVar)
{
    CString value;
    if (pVar->vt == VT_BSTR) value = Quote(BstrToString(pVar->bstrVal));
    else if (pVar->vt == VT_DISPATCH || pVar->vt == VT_UNKNOWN) {
        HRESULT hr = EncodeObject(pVar->punkVal, value);
        if (FAILED(hr)) return hr;
    } else {
        COleVariant text;
        HRESULT hr = VariantChangeType(&text, pVar, 0, VT_BSTR);
        if (FAILED(hr)) return hr;
        value = BstrToString(text.bstrVal);
    }
    m_lines.push_back({name, value});
    return S_OK;
}

HRESULT CTextPropertyBag::EncodeObject(IUnknown* p, CString& out)
{
    if (!p) { out = u"Nothing"; return S_OK; }
    CComPtr<IPersistStream> persist;
    if (FAILED(p->QueryInterface(IID_IPersistStream, reinterpret_cast<void**>(&persist)))) return DISP_E_TYPEMISMATCH;
    CComPtr<IStream> stm;
    CreateStreamOnHGlobal({}, &stm);
    HRESULT hr = OleSaveToStream(persist.Get(), stm.Get());
    if (SUCCEEDED(hr)) out = CString(u"{object} ") + ToHex(GetStreamBytes(stm.Get()));
    return hr;
}

HRESULT CTextPropertyBag::ReadObject(const CString& value, VARIANT* pVar)
{
    std::vector<BYTE> bytes;
    if (value.Find(u"{object} ") != 0 || !FromHex(value.Mid(9), bytes)) return DISP_E_TYPEMISMATCH;
    CComPtr<IStream> stm;
    CreateStreamOnHGlobal(std::move(bytes), &stm);
    VARTYPE want = pVar->vt == VT_DISPATCH ? VT_DISPATCH : VT_UNKNOWN;
    void* p = nullptr;
    HRESULT hr = OleLoadFromStream(stm.Get(), want == VT_DISPATCH ? IID_IDispatch : IID_IUnknown, &p);
    if (FAILED(hr)) return hr;
    VariantInit(pVar);
    pVar->vt = want;
    pVar->punkVal = static_cast<IUnknown*>(p);
    return S_OK;
}

HRESULT CTextPropertyBag::Read(LPCOLESTR name, VARIANT* pVar, IErrorLog*)
{
    Line* line = nullptr;
    for (auto& l : m_lines)
        if (!l.read && l.key.CompareNoCase(name) == 0) { line = &l; break; }
    if (!line) return E_INVALIDARG;
    line->read = true;
    if (line->value == u"Nothing") { VARTYPE vt = pVar->vt; VariantInit(pVar); pVar->vt = vt == VT_DISPATCH ? VT_DISPATCH : VT_UNKNOWN; return S_OK; }
    if (line->value.GetLength() && line->value[0] == u'{') return ReadObject(line->value, pVar);
    CString text;
    if (!Unquote(line->value, text)) text = line->value;
    COleVariant stored(text);
    VARTYPE want = pVar->vt == VT_EMPTY ? VARTYPE(VT_BSTR) : pVar->vt;
    VariantInit(pVar);
    return VariantChangeType(pVar, &stored, 0, want);
}

} // namespace

HRESULT CreateTextPropertyBag(const CString& text, IPropertyBag** ppBag, CString* pError)
{
    auto* bag = new CTextPropertyBag;
    HRESULT hr = bag->Parse(text, pError);
    if (FAILED(hr)) { bag->Release(); return hr; }
    *ppBag = bag;
    return S_OK;
}

CString GetPropertyBagText(IPropertyBag* pBag)
{
    auto* bag = dynamic_cast<CTextPropertyBag*>(pBag);
    return bag ? bag->Text() : CString();
}
