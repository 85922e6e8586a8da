// BSTR allocation: a 32-bit byte length before the characters and a terminating zero after them.
#include "bstr.h"
#include <cstdlib>
#include <cstring>

namespace {
long g_live = 0; // strings live on the apartment's one thread, as every caller here does

// Like OLE Automation's own string cache: freed short strings are kept by size class and handed
// out again, since strings come and go by the thousand. Off under AddressSanitizer, as
// OANOCACHE turns the real one off, so that a string used after its release is caught.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kCacheStrings = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kCacheStrings = false;
#else
constexpr bool kCacheStrings = true;
#endif
#else
constexpr bool kCacheStrings = true;
#endif
constexpr UINT kClassUnits = 16;     // capacity steps, in characters with the terminator
constexpr UINT kCachedClasses = 4;   // strings of up to 63 characters
constexpr int kBlocksPerClass = 16;

struct StringCache {
    char* blocks[kCachedClasses][kBlocksPerClass] = {};
    int counts[kCachedClasses] = {};
} g_cache;

// The class of a string of cch characters, or kCachedClasses when it is too long to keep.
UINT ClassOf(UINT cch) { return (cch + 1 + kClassUnits - 1) / kClassUnits - 1; }

char* AllocateBlock(UINT cch)
{
    UINT cls = ClassOf(cch);
    if (!kCacheStrings || cls >= kCachedClasses)
        return static_cast<char*>(std::malloc(sizeof(uint32_t) + (cch + 1) * sizeof(OLECHAR)));
    if (g_cache.counts[cls] > 0) return g_cache.blocks[cls][--g_cache.counts[cls]];
    return static_cast<char*>(std::malloc(sizeof(uint32_t) + (cls + 1) * kClassUnits * sizeof(OLECHAR)));
}

void FreeBlock(char* block, UINT cch)
{
    UINT cls = ClassOf(cch);
    if (!kCacheStrings || cls >= kCachedClasses || g_cache.counts[cls] == kBlocksPerClass) return std::free(block);
    g_cache.blocks[cls][g_cache.counts[cls]++] = block;
}
} // namespace

BSTR SysAllocStringLen(const OLECHAR* pch, UINT cch)
{
    auto* block = AllocateBlock(cch);
    if (!block) return nullptr;
    uint32_t bytes = cch * sizeof(OLECHAR);
    std::memcpy(block, &bytes, sizeof bytes);
    auto* text = reinterpret_cast<OLECHAR*>(block + sizeof(uint32_t));
    if (pch) std::memcpy(text, pch, cch * sizeof(OLECHAR));
    else std::memset(text, 0, cch * sizeof(OLECHAR));
    text[cch] = 0;
    ++g_live;
    return text;
}

BSTR SysAllocString(const OLECHAR* psz)
{
    if (!psz) return nullptr;
    UINT n = 0;
    while (psz[n]) ++n;
    return SysAllocStringLen(psz, n);
}

void SysFreeString(BSTR bstr)
{
    if (!bstr) return;
    --g_live;
    FreeBlock(reinterpret_cast<char*>(bstr) - sizeof(uint32_t), SysStringLen(bstr));
}

UINT SysStringLen(BSTR bstr)
{
    if (!bstr) return 0;
    uint32_t bytes;
    std::memcpy(&bytes, reinterpret_cast<char*>(bstr) - sizeof(uint32_t), sizeof bytes);
    return bytes / sizeof(OLECHAR);
}

long SysLiveStringCount() { return g_live; }
