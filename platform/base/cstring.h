// CString: the MFC string class over UTF-16 code units, with the operations the control uses.
#pragma once
#include <string>
#include <string_view>
#include <vector>
#include "wintypes.h"

class CString {
public:
    CString() = default;
    CString(const char16_t* psz) : m_str(psz ? psz : u"") {}
    CString(const char16_t* pch, int nLength) : m_str(pch, nLength > 0 ? nLength : 0) {}
    CString(char16_t ch, int nRepeat = 1) : m_str(nRepeat > 0 ? nRepeat : 0, ch) {}
    CString(std::u16string s) : m_str(std::move(s)) {}

    int GetLength() const { return static_cast<int>(m_str.size()); }
    bool IsEmpty() const { return m_str.empty(); }
    void Empty() { m_str.clear(); }
    char16_t GetAt(int i) const { return m_str.at(i); }
    void SetAt(int i, char16_t ch) { m_str.at(i) = ch; }
    char16_t operator[](int i) const { return m_str.at(i); }
    operator const char16_t*() const { return m_str.c_str(); }
    const char16_t* GetString() const { return m_str.c_str(); }
    const std::u16string& str() const { return m_str; }
    // Replaces the text, keeping the buffer when it is large enough.
    void SetString(const char16_t* pch, int nLength) { m_str.assign(pch, nLength > 0 ? static_cast<size_t>(nLength) : 0); }

    CString Left(int nCount) const;
    CString Right(int nCount) const;
    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;
    int Find(char16_t ch, int nStart = 0) const;
    int Find(const char16_t* psz, int nStart = 0) const;

    int Compare(const char16_t* psz) const;
    int CompareNoCase(const char16_t* psz) const;
    CString& MakeUpper();
    CString& MakeLower();
    CString& Insert(int nIndex, char16_t ch);
    int Delete(int nIndex, int nCount = 1);
    CString& TrimLeft();
    CString& TrimRight();
    CString& Trim() { TrimRight(); return TrimLeft(); }

    // printf-style formatting: %d %i %u %x %X %c %s %% with flags '-', '0' and a width.
    template <class... Args>
    void Format(const char16_t* fmt, Args... args) { m_str = FormatArgs(fmt, {FormatArg(args)...}); }

    CString& operator+=(const CString& s) { m_str += s.m_str; return *this; }
    CString& operator+=(const char16_t* s) { m_str += s; return *this; }
    CString& operator+=(char16_t ch) { m_str += ch; return *this; }
    friend CString operator+(CString a, const CString& b) { a += b; return a; }
    friend CString operator+(CString a, const char16_t* b) { a += b; return a; }
    friend CString operator+(CString a, char16_t b) { a += b; return a; }
    friend bool operator==(const CString& a, const CString& b) { return a.m_str == b.m_str; }
    friend bool operator==(const CString& a, const char16_t* b) { return a.m_str == b; }
    friend bool operator!=(const CString& a, const CString& b) { return a.m_str != b.m_str; }
    friend bool operator<(const CString& a, const CString& b) { return a.m_str < b.m_str; }

    struct FormatArg {
        enum Kind { Signed, Unsigned, Text } kind;
        long long s = 0;
        unsigned long long u = 0;
        const char16_t* text = nullptr;
        FormatArg(int v) : kind(Signed), s(v) {}
        FormatArg(long v) : kind(Signed), s(v) {}
        FormatArg(long long v) : kind(Signed), s(v) {}
        FormatArg(short v) : kind(Signed), s(v) {}
        FormatArg(unsigned v) : kind(Unsigned), u(v) {}
        FormatArg(unsigned long v) : kind(Unsigned), u(v) {}
        FormatArg(unsigned long long v) : kind(Unsigned), u(v) {}
        FormatArg(unsigned short v) : kind(Unsigned), u(v) {}
        FormatArg(char16_t v) : kind(Unsigned), u(v) {}
        FormatArg(const char16_t* v) : kind(Text), text(v) {}
        FormatArg(const CString& v) : kind(Text), text(v.GetString()) {}
    };

private:
    static std::u16string FormatArgs(const char16_t* fmt, std::vector<FormatArg> args);
    std::u16string m_str;
};

// Case mapping of one UTF-16 code unit over all letters (surrogates map to themselves).
char16_t ToUpperUnit(char16_t ch);
char16_t ToLowerUnit(char16_t ch);

// Conversions at the edges: files, scripts, terminal.
std::string ToUtf8(const std::u16string& s);
inline std::string ToUtf8(const CString& s) { return ToUtf8(s.str()); }
std::u16string FromUtf8(std::string_view s);
