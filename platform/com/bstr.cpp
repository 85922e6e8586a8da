// BSTR allocation: a 32-bit byte length before the characters and a terminating zero after them.
#include "bstr.h"
#include <cstdlib>
#include <cstring>

namespace {
long g_live = 0; // strings live on the apartment's one thread, as every caller here does
}

BSTR SysAllocStringLen(const OLECHAR* pch, UINT cch)
{
    auto* block = static_cast<char*>(std::malloc(sizeof(uint32_t) + (cch + 1) * sizeof(OLECHAR)));
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
    std::free(reinterpret_cast<char*>(bstr) - sizeof(uint32_t));
}

UINT SysStringLen(BSTR bstr)
{
    if (!bstr) return 0;
    uint32_t bytes;
    std::memcpy(&bytes, reinterpret_cast<char*>(bstr) - sizeof(uint32_t), sizeof bytes);
    return bytes / sizeof(OLECHAR);
}

long SysLiveStringCount() { return g_live; }
