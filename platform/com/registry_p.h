// The registry's tree, shared by its API and its .reg text.
#pragma once
#include <map>
#include <memory>
#include <string>
#include "base/cstring.h"

namespace registry {

inline std::u16string Fold(const std::u16string& s) { return CString(s).MakeLower().str(); }

struct RegKey {
    std::u16string name;                                                         // as first written
    std::map<std::u16string, std::pair<std::u16string, std::u16string>> values; // folded name -> name, text
    std::map<std::u16string, std::unique_ptr<RegKey>> keys;                     // folded name -> key
};

RegKey& ClassesRoot();

} // namespace registry
