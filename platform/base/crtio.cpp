// _wfopen_s and fputws over UTF-16: Unicode text streams as glibc cookie streams.
#include "crtio.h"
#include <cassert>
#include <cerrno>
#include <string>
#include <vector>
#include "cstring.h"

namespace {

constexpr unsigned char kByteOrderMark[] = {0xFF, 0xFE};
constexpr char16_t kLineFeed = u'\n';
constexpr char16_t kCarriageReturn = u'\r';

// The underlying binary file, with the odd byte of a code unit split between two writes.
struct UnicodeTextCookie {
    FILE* pFile = nullptr;
    bool bHavePending = false;
    unsigned char pending = 0;
};

void PutUnit(std::vector<unsigned char>& out, char16_t unit)
{
    out.push_back(static_cast<unsigned char>(unit & 0xFF)); // low byte first: little-endian
    out.push_back(static_cast<unsigned char>(unit >> 8));
}

ssize_t CookieWrite(void* cookie, const char* buf, size_t size)
{
    auto* c = static_cast<UnicodeTextCookie*>(cookie);
    std::vector<unsigned char> out;
    out.reserve(size + size / 2);
    size_t i = 0;
    auto unitAt = [&](unsigned char lo, unsigned char hi) { return static_cast<char16_t>(lo | hi << 8); };
    if (c->bHavePending && size > 0) {
        char16_t unit = unitAt(c->pending, static_cast<unsigned char>(buf[0]));
        if (unit == kLineFeed) PutUnit(out, kCarriageReturn);
        PutUnit(out, unit);
        c->bHavePending = false;
        i = 1;
    }
    for (; i + 1 < size; i += 2) {
        char16_t unit = unitAt(static_cast<unsigned char>(buf[i]), static_cast<unsigned char>(buf[i + 1]));
        if (unit == kLineFeed) PutUnit(out, kCarriageReturn);
        PutUnit(out, unit);
    }
    if (i < size) {
        c->pending = static_cast<unsigned char>(buf[i]);
        c->bHavePending = true;
    }
    if (!out.empty() && std::fwrite(out.data(), 1, out.size(), c->pFile) != out.size()) return -1;
    return static_cast<ssize_t>(size);
}

int CookieClose(void* cookie)
{
    auto* c = static_cast<UnicodeTextCookie*>(cookie);
    int result = std::fclose(c->pFile);
    delete c;
    return result == 0 ? 0 : EOF;
}

struct Mode {
    char access = 0;       // 'r', 'w' or 'a'
    bool bBinary = false;
    bool bUnicode = false;
};

Mode ParseMode(const std::u16string& mode)
{
    Mode m;
    std::u16string flags = mode.substr(0, mode.find(u','));
    std::u16string ccs = flags.size() < mode.size() ? mode.substr(flags.size()) : std::u16string();
    assert(!flags.empty() && "_wfopen_s: an empty mode");
    m.access = static_cast<char>(flags[0]);
    assert((m.access == 'r' || m.access == 'w' || m.access == 'a') && "_wfopen_s: the mode must begin with r, w or a");
    for (size_t i = 1; i < flags.size(); ++i) {
        assert((flags[i] == u't' || flags[i] == u'b') && "_wfopen_s: only the t and b flags are provided");
        m.bBinary = flags[i] == u'b';
    }
    assert((ccs.empty() || ccs == u",ccs=UNICODE") && "_wfopen_s: only ccs=UNICODE is provided");
    m.bUnicode = !ccs.empty();
    assert((m.bBinary || m.bUnicode) && "_wfopen_s: ANSI text translation is not provided");
    assert(!(m.bUnicode && m.access != 'w') && "_wfopen_s: Unicode streams are provided for writing only");
    return m;
}

} // namespace

std::string FileSystemName(const WCHAR* filename) { return ToUtf8(std::u16string(filename ? filename : u"")); }

errno_t _wfopen_s(FILE** pFile, const WCHAR* filename, const WCHAR* mode)
{
    assert(pFile && filename && mode && "_wfopen_s: null argument");
    *pFile = nullptr;
    Mode m = ParseMode(mode);
    const char* cmode = m.access == 'r' ? "rb" : m.access == 'w' ? "wb" : "ab";
    FILE* f = std::fopen(FileSystemName(filename).c_str(), cmode);
    if (!f) return errno ? errno : EINVAL;
    if (!m.bUnicode) {
        *pFile = f;
        return 0;
    }
    if (std::fwrite(kByteOrderMark, 1, sizeof kByteOrderMark, f) != sizeof kByteOrderMark) {
        int err = errno;
        std::fclose(f);
        return err ? err : EIO;
    }
    auto* cookie = new UnicodeTextCookie{f};
    *pFile = fopencookie(cookie, "w", cookie_io_functions_t{nullptr, &CookieWrite, nullptr, &CookieClose});
    if (!*pFile) {
        CookieClose(cookie);
        return ENOMEM;
    }
    return 0;
}

int fputws(const WCHAR* str, FILE* stream)
{
    assert(str && stream && "fputws: null argument");
    size_t n = std::char_traits<char16_t>::length(str);
    if (std::fwrite(str, sizeof(char16_t), n, stream) != n) return EOF;
    return 0;
}
