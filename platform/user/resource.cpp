// Each module's string table.
#include "resource.h"
#include <cassert>
#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace {
std::map<std::pair<HINSTANCE, UINT>, std::u16string>& Strings()
{
    static std::map<std::pair<HINSTANCE, UINT>, std::u16string> strings;
    return strings;
}
} // namespace

void AddStringResources(HINSTANCE hInstance, std::initializer_list<STRINGRESOURCE> strings)
{
    for (const auto& s : strings) Strings()[{hInstance, s.id}] = s.text;
}

int LoadString(HINSTANCE hInstance, UINT uID, LPTSTR lpBuffer, int cchBufferMax)
{
    assert(cchBufferMax > 0 && lpBuffer && "LoadString: the read-only pointer form is not offered");
    if (cchBufferMax <= 0 || !lpBuffer) return 0;
    auto it = Strings().find({hInstance, uID});
    if (it == Strings().end()) {
        lpBuffer[0] = 0;
        return 0;
    }
    // A string table entry is at most 4,097 characters long.
    const int n = std::min(static_cast<int>(it->second.size()), cchBufferMax - 1);
    it->second.copy(lpBuffer, static_cast<size_t>(n));
    lpBuffer[n] = 0;
    return n;
}
