// CString operations: substrings, comparison, case mapping, formatting, UTF-8 at the edges.
#include "cstring.h"
#include <algorithm>
#include <clocale>
#include <cwctype>
#include <locale.h>

namespace {

// Case tables of the C.UTF-8 locale cover every script, not ASCII alone.
locale_t UnicodeLocale()
{
    static locale_t loc = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    return loc;
}

bool IsSurrogate(char16_t ch) { return ch >= 0xD800 && ch <= 0xDFFF; }

int Clamp(int n, int lo, int hi) { return std::max(lo, std::min(n, hi)); }

} // namespace

char16_t ToUpperUnit(char16_t ch)
{
    if (ch < 0x80) return (ch >= u'a' && ch <= u'z') ? ch - 32 : ch;
    if (IsSurrogate(ch) || !UnicodeLocale()) return ch;
    wint_t up = towupper_l(ch, UnicodeLocale());
    return up <= 0xFFFF ? static_cast<char16_t>(up) : ch;
}

char16_t ToLowerUnit(char16_t ch)
{
    if (ch < 0x80) return (ch >= u'A' && ch <= u'Z') ? ch + 32 : ch;
    if (IsSurrogate(ch) || !UnicodeLocale()) return ch;
    wint_t low = towlower_l(ch, UnicodeLocale());
    return low <= 0xFFFF ? static_cast<char16_t>(low) : ch;
}

CString CString::Left(int nCount) const
{
    return CString(m_str.substr(0, Clamp(nCount, 0, GetLength())));
}

CString CString::Right(int nCount) const
{
    int n = Clamp(nCount, 0, GetLength());
    return CString(m_str.substr(GetLength() - n));
}

CString CString::Mid(int nFirst) const { return Mid(nFirst, GetLength()); }

CString CString::Mid(int nFirst, int nCount) const
{
    int first = Clamp(nFirst, 0, GetLength());
    int count = Clamp(nCount, 0, GetLength() - first);
    return CString(m_str.substr(first, count));
}

int CString::Find(char16_t ch, int nStart) const
{
    if (nStart < 0 || nStart >= GetLength()) return -1;
    auto pos = m_str.find(ch, nStart);
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int CString::Find(const char16_t* psz, int nStart) const
{
    if (nStart < 0 || nStart > GetLength()) return -1;
    auto pos = m_str.find(psz, nStart);
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int CString::Compare(const char16_t* psz) const
{
    int r = m_str.compare(psz);
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

int CString::CompareNoCase(const char16_t* psz) const
{
    const char16_t* a = m_str.c_str();
    for (;; ++a, ++psz) {
        char16_t ca = ToLowerUnit(*a), cb = ToLowerUnit(*psz);
        if (ca != cb) return ca < cb ? -1 : 1;
        if (ca == 0) return 0;
    }
}

CString& CString::MakeUpper()
{
    for (auto& ch : m_str) ch = ToUpperUnit(ch);
    return *this;
}

CString& CString::MakeLower()
{
    for (auto& ch : m_str) ch = ToLowerUnit(ch);
    return *this;
}

CString& CString::Insert(int nIndex, char16_t ch)
{
    m_str.insert(m_str.begin() + Clamp(nIndex, 0, GetLength()), ch);
    return *this;
}

int CString::Delete(int nIndex, int nCount)
{
    if (nIndex >= 0 && nIndex < GetLength() && nCount > 0)
        m_str.erase(nIndex, std::min(nCount, GetLength() - nIndex));
    return GetLength();
}

CString& CString::TrimLeft()
{
    auto it = std::find_if(m_str.begin(), m_str.end(), [](char16_t c) { return !iswspace(c); });
    m_str.erase(m_str.begin(), it);
    return *this;
}

CString& CString::TrimRight()
{
    while (!m_str.empty() && iswspace(m_str.back())) m_str.pop_back();
    return *this;
}

namespace {

std::u16string Digits(unsigned long long v, unsigned base, bool upper)
{
    const char* set = upper ? "0123456789ABCDEF" : "0123456789abcdef";
    std::u16string out;
    do { out.insert(out.begin(), char16_t(set[v % base])); v /= base; } while (v);
    return out;
}

std::u16string Convert(char conv, const CString::FormatArg& a)
{
    switch (conv) {
    case 'd': case 'i':
        if (a.kind == CString::FormatArg::Signed && a.s < 0) return u"-" + Digits(0ull - static_cast<unsigned long long>(a.s), 10, false);
        return Digits(a.kind == CString::FormatArg::Signed ? a.s : a.u, 10, false);
    case 'u': return Digits(a.kind == CString::FormatArg::Signed ? static_cast<unsigned>(a.s) : a.u, 10, false);
    case 'x': case 'X': {
        unsigned long long v = a.kind == CString::FormatArg::Signed ? static_cast<unsigned>(a.s) : a.u;
        return Digits(v, 16, conv == 'X');
    }
    case 'c': return std::u16string(1, static_cast<char16_t>(a.kind == CString::FormatArg::Signed ? a.s : a.u));
    case 's': return a.kind == CString::FormatArg::Text && a.text ? std::u16string(a.text) : std::u16string();
    }
    return {};
}

} // namespace

std::u16string CString::FormatArgs(const char16_t* fmt, std::vector<FormatArg> args)
{
    std::u16string out;
    size_t next = 0;
    for (const char16_t* p = fmt; *p; ++p) {
        if (*p != u'%') { out += *p; continue; }
        if (*++p == u'%') { out += u'%'; continue; }
        bool left = false, zero = false;
        for (; *p == u'-' || *p == u'0'; ++p) (*p == u'-' ? left : zero) = true;
        size_t width = 0;
        for (; *p >= u'0' && *p <= u'9'; ++p) width = width * 10 + (*p - u'0');
        while (*p == u'l' || *p == u'h') ++p;
        if (!*p) break;
        std::u16string field = next < args.size() ? Convert(static_cast<char>(*p), args[next++]) : std::u16string();
        if (field.size() < width) {
            size_t pad = width - field.size();
            if (left) field.append(pad, u' ');
            else if (zero && *p != u's') field.insert(field[0] == u'-' ? 1 : 0, pad, u'0');
            else field.insert(0, pad, u' ');
        }
        out += field;
    }
    return out;
}

std::string ToUtf8(const std::u16string& s)
{
    std::string out;
    for (size_t i = 0; i < s.size(); ++i) {
        uint32_t cp = s[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < s.size() && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF)
            cp = 0x10000 + ((cp - 0xD800) << 10) + (s[++i] - 0xDC00);
        if (cp < 0x80) out += char(cp);
        else if (cp < 0x800) { out += char(0xC0 | cp >> 6); out += char(0x80 | (cp & 0x3F)); }
        else if (cp < 0x10000) { out += char(0xE0 | cp >> 12); out += char(0x80 | ((cp >> 6) & 0x3F)); out += char(0x80 | (cp & 0x3F)); }
        else { out += char(0xF0 | cp >> 18); out += char(0x80 | ((cp >> 12) & 0x3F)); out += char(0x80 | ((cp >> 6) & 0x3F)); out += char(0x80 | (cp & 0x3F)); }
    }
    return out;
}

std::u16string FromUtf8(std::string_view s)
{
    std::u16string out;
    for (size_t i = 0; i < s.size();) {
        unsigned char c = s[i];
        int extra = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
        uint32_t cp = extra == 0 ? c : extra == 1 ? (c & 0x1F) : extra == 2 ? (c & 0x0F) : (c & 0x07);
        if (c >= 0x80 && c < 0xC0) { cp = 0xFFFD; extra = 0; }
        ++i;
        for (int k = 0; k < extra && i < s.size(); ++k, ++i) cp = (cp << 6) | (static_cast<unsigned char>(s[i]) & 0x3F);
        if (cp >= 0x10000) { cp -= 0x10000; out += char16_t(0xD800 + (cp >> 10)); out += char16_t(0xDC00 + (cp & 0x3FF)); }
        else out += char16_t(cp);
    }
    return out;
}
