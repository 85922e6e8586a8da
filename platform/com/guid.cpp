// GUIDs as registry text: "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper-case hexadecimal.
#include "objbase.h"
#include <cstdio>
#include <string>

namespace {
constexpr int kGuidChars = 38; // braces, 32 digits and 4 dashes
bool ParseHex(const char16_t* s, int nDigits, uint64_t& value)
{
    value = 0;
    for (int i = 0; i < nDigits; ++i) {
        char16_t c = s[i];
        int digit = c >= u'0' && c <= u'9' ? c - u'0' : c >= u'a' && c <= u'f' ? c - u'a' + 10
                  : c >= u'A' && c <= u'F' ? c - u'A' + 10 : -1;
        if (digit < 0) return false;
        value = value << 4 | static_cast<uint64_t>(digit);
    }
    return true;
}
} // namespace

int StringFromGUID2(REFGUID rguid, LPOLESTR lpsz, int cchMax)
{
    if (!lpsz || cchMax <= kGuidChars) return 0;
    char text[kGuidChars + 1];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", rguid.Data1, rguid.Data2,
                  rguid.Data3, rguid.Data4[0], rguid.Data4[1], rguid.Data4[2], rguid.Data4[3], rguid.Data4[4],
                  rguid.Data4[5], rguid.Data4[6], rguid.Data4[7]);
    for (int i = 0; i <= kGuidChars; ++i) lpsz[i] = static_cast<char16_t>(text[i]);
    return kGuidChars + 1;
}

std::u16string GuidString(REFGUID rguid)
{
    OLECHAR text[kGuidChars + 1];
    StringFromGUID2(rguid, text, kGuidChars + 1);
    return text;
}

HRESULT CLSIDFromString(LPCOLESTR lpsz, CLSID* pclsid)
{
    if (!lpsz || !pclsid) return E_INVALIDARG;
    const char16_t* s = lpsz;
    uint64_t v[11];
    // {8-4-4-4-12}: the last group is six bytes of Data4.
    static const int kDigits[11] = {8, 4, 4, 2, 2, 2, 2, 2, 2, 2, 2};
    static const int kAt[11] = {1, 10, 15, 20, 22, 25, 27, 29, 31, 33, 35};
    bool ok = std::char_traits<char16_t>::length(s) == kGuidChars && s[0] == u'{' && s[9] == u'-' && s[14] == u'-' &&
              s[19] == u'-' && s[24] == u'-' && s[37] == u'}';
    for (int i = 0; ok && i < 11; ++i) ok = ParseHex(s + kAt[i], kDigits[i], v[i]);
    if (!ok) return CO_E_CLASSSTRING;
    // Each group was read with exactly as many digits as its field holds.
    *pclsid = GUID{static_cast<uint32_t>(v[0]), static_cast<uint16_t>(v[1]), static_cast<uint16_t>(v[2]), {}};
    for (int i = 0; i < 8; ++i) pclsid->Data4[i] = static_cast<uint8_t>(v[3 + i]);
    return S_OK;
}
