// The mask language: acceptance, stored forms, the template and the shaping of raw text.
#include "mask/MaskRules.h"

namespace mask {

namespace {
bool IsDigit(TCHAR c) { return c >= u'0' && c <= u'9'; }
bool IsLetter(TCHAR c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); }
} // namespace

bool IsPlaceholder(TCHAR k)
{
    return k == u'!' || k == u'#' || k == u'9' || k == u'A' || k == u'N' || k == u'X';
}

bool Accepts(TCHAR k, TCHAR c)
{
    switch (k) {
    case u'!':
    case u'X': return true;
    case u'#': return IsDigit(c) || c == u'-' || c == u' ';
    case u'9': return IsDigit(c) || c == u'-';
    case u'A': return IsLetter(c);
    case u'N': return IsLetter(c) || IsDigit(c);
    }
    return false;
}

TCHAR ApplyCase(SHORT nCaseType, TCHAR ch)
{
    if (nCaseType == 1 && ch >= u'a' && ch <= u'z') return ch - 32;
    if (nCaseType == 2 && ch >= u'A' && ch <= u'Z') return ch + 32;
    return ch;
}

TCHAR StoredForm(TCHAR k, TCHAR c, SHORT nCaseType)
{
    if (k == u'!') return ApplyCase(1, c); // "!" raises letters whatever CaseType says
    if (k == u'A' || k == u'N' || k == u'X') return ApplyCase(nCaseType, c);
    return c;
}

CString BuildLiteral(const CString& mask)
{
    std::u16string out(mask.str());
    for (auto& ch : out)
        if (IsPlaceholder(ch)) ch = u' ';
    return CString(std::move(out));
}

CString ApplyTextToMask(const CString& mask, const CString& text, SHORT nCaseType)
{
    if (mask.IsEmpty()) return text;
    std::u16string out;
    out.reserve(mask.GetLength());
    int m = 0, t = 0;
    while (t < text.GetLength() && m < mask.GetLength()) {
        TCHAR k = mask[m], c = text[t];
        if (!IsPlaceholder(k)) { out += k; ++m; }
        else if (Accepts(k, c)) { out += StoredForm(k, c, nCaseType); ++m; ++t; }
        else ++t;
    }
    for (; m < mask.GetLength(); ++m) out += IsPlaceholder(mask[m]) ? u' ' : mask[m];
    return CString(std::move(out));
}

CString StripLiterals(const CString& mask, const CString& text)
{
    std::u16string out;
    for (int i = 0; i < text.GetLength(); ++i)
        if (i >= mask.GetLength() || IsPlaceholder(mask[i])) out += text[i];
    return CString(std::move(out));
}

} // namespace mask
