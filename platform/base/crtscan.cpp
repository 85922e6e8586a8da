// swscanf_s over UTF-16 text: integers, floats and character sets.
#include "crtscan.h"
#include <cassert>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

bool IsBlank(WCHAR ch) { return ch == u' ' || ch == u'\t' || ch == u'\n' || ch == u'\r' || ch == u'\v' || ch == u'\f'; }
bool IsDigit(WCHAR ch) { return ch >= u'0' && ch <= u'9'; }

struct Scanner {
    const WCHAR* p;
    void SkipBlanks() { while (IsBlank(*p)) ++p; }

    // An optional sign and at least one digit; the value wraps at 32 bits.
    bool ReadInteger(uint32_t& out)
    {
        SkipBlanks();
        const WCHAR* q = p;
        bool negative = *q == u'-';
        if (*q == u'-' || *q == u'+') ++q;
        if (!IsDigit(*q)) return false;
        uint32_t value = 0;
        for (; IsDigit(*q); ++q) value = value * 10u + static_cast<uint32_t>(*q - u'0');
        out = negative ? 0u - value : value;
        p = q;
        return true;
    }

    // The longest prefix that the C library reads as a float.
    bool ReadFloat(float& out)
    {
        SkipBlanks();
        std::string ascii;
        for (const WCHAR* q = p; *q && *q < 0x80; ++q) ascii += static_cast<char>(*q);
        char* end = nullptr;
        out = std::strtof(ascii.c_str(), &end);
        if (end == ascii.c_str()) return false;
        p += end - ascii.c_str();
        return true;
    }
};

// The set of a %[...] conversion; *pFormat is behind the '[' and ends behind the ']'.
struct CharSet {
    std::u16string members;
    bool bNegated = false;
    bool Contains(WCHAR ch) const { return (members.find(ch) != std::u16string::npos) != bNegated; }
};

CharSet ParseSet(const WCHAR*& f)
{
    CharSet set;
    if (*f == u'^') { set.bNegated = true; ++f; }
    if (*f == u']') set.members += *f++;
    while (*f && *f != u']') {
        assert(!(*f == u'-' && f[1] != u']' && !set.members.empty()) && "swscanf_s: ranges in a set are not provided");
        set.members += *f++;
    }
    assert(*f == u']' && "swscanf_s: an unterminated set");
    ++f;
    return set;
}

} // namespace

int swscanf_s(const WCHAR* buffer, const WCHAR* format, ...)
{
    assert(buffer && format && "swscanf_s: null argument");
    va_list args;
    va_start(args, format);
    Scanner in{buffer};
    int stored = 0;
    bool bConverted = false;
    for (const WCHAR* f = format; *f;) {
        if (IsBlank(*f)) { in.SkipBlanks(); ++f; continue; }
        if (*f != u'%' || f[1] == u'%') {
            if (*f == u'%') ++f;
            if (*in.p != *f) break;
            ++in.p, ++f;
            continue;
        }
        ++f;
        if (!*in.p && !bConverted) { stored = EOF; break; }
        WCHAR conv = *f++;
        bool ok = false;
        if (conv == u'd' || conv == u'u') {
            uint32_t value = 0;
            ok = in.ReadInteger(value);
            // %d gives the 32 bits back as a signed int, two's complement.
            if (ok && conv == u'd') *va_arg(args, int*) = static_cast<int>(value);
            else if (ok) *va_arg(args, unsigned*) = value;
        } else if (conv == u'f') {
            float value = 0;
            ok = in.ReadFloat(value);
            if (ok) *va_arg(args, float*) = value;
        } else {
            assert(conv == u'[' && "swscanf_s: only %d, %u, %f and %[ are provided");
            CharSet set = ParseSet(f);
            WCHAR* out = va_arg(args, WCHAR*);
            unsigned size = va_arg(args, unsigned);
            assert(out && size > 0 && "swscanf_s: a set needs a buffer and its size");
            unsigned n = 0;
            while (*in.p && set.Contains(*in.p) && n + 1 < size) out[n++] = *in.p++;
            bool bFits = !(*in.p && set.Contains(*in.p));
            out[bFits ? n : 0] = 0;
            ok = n > 0 && bFits;
        }
        bConverted = true;
        if (!ok) break;
        ++stored;
    }
    va_end(args);
    return stored;
}
