// HKEY_CLASSES_ROOT as regedit exports it: a header line, then each key as "[path]" followed by
// its values ("@" for the default one) and a blank line. Only string values are written or read.
#include <fstream>
#include <sstream>
#include "registry_p.h"
#include "winreg.h"

using registry::ClassesRoot;
using registry::Fold;
using registry::RegKey;

namespace {

constexpr const char* kHeader = "Windows Registry Editor Version 5.00";

std::string Quoted(const std::u16string& s)
{
    std::string out = "\"";
    for (char ch : ToUtf8(s)) {
        if (ch == '\\' || ch == '"') out += '\\';
        out += ch;
    }
    return out + "\"";
}

void ExportKey(std::ostringstream& out, const RegKey& key, const std::string& path)
{
    if (&key != &ClassesRoot() || !key.values.empty()) {
        out << "[" << path << "]\n";
        for (const auto& [folded, value] : key.values)
            out << (value.first.empty() ? std::string("@") : Quoted(value.first)) << "=" << Quoted(value.second) << "\n";
        out << "\n";
    }
    for (const auto& [folded, sub] : key.keys) ExportKey(out, *sub, path + "\\" + ToUtf8(sub->name));
}

// Reads a quoted string at s[i], undoing the backslash escapes; false when it is not one.
bool ReadQuoted(const std::string& s, size_t& i, std::string& out)
{
    if (i >= s.size() || s[i] != '"') return false;
    out.clear();
    for (++i; i < s.size(); ++i) {
        if (s[i] == '"') return ++i, true;
        if (s[i] == '\\' && ++i == s.size()) return false;
        out += s[i];
    }
    return false;
}

// A "[path]" line: the key under HKEY_CLASSES_ROOT it names, created. "[-path]" deletes instead.
bool ReadKeyLine(const std::string& line, RegKey& root, RegKey*& current)
{
    if (line.back() != ']') return false;
    std::string path = line.substr(1, line.size() - 2);
    const bool bDelete = !path.empty() && path[0] == '-';
    if (bDelete) path.erase(0, 1);
    const std::string kRoot = "HKEY_CLASSES_ROOT";
    if (path.compare(0, kRoot.size(), kRoot) != 0 || (path.size() > kRoot.size() && path[kRoot.size()] != '\\')) return false;
    RegKey* key = &root;
    RegKey* parent = nullptr;
    std::u16string leaf;
    std::istringstream parts(path.substr(kRoot.size()));
    for (std::string part; std::getline(parts, part, '\\');) {
        if (part.empty()) continue;
        leaf = FromUtf8(part);
        auto& slot = key->keys[Fold(leaf)];
        if (!slot) slot = std::make_unique<RegKey>(RegKey{leaf, {}, {}});
        parent = key;
        key = slot.get();
    }
    if (bDelete && parent) parent->keys.erase(Fold(leaf));
    current = bDelete ? nullptr : key;
    return !bDelete || parent;
}

// A '@="text"' or '"name"="text"' line, into the current key.
bool ReadValueLine(const std::string& line, RegKey* current)
{
    if (!current) return false;
    size_t i = 0;
    std::string name, text;
    if (line[0] == '@') i = 1;
    else if (!ReadQuoted(line, i, name)) return false;
    if (i >= line.size() || line[i++] != '=' || !ReadQuoted(line, i, text) || i != line.size()) return false;
    std::u16string wideName = FromUtf8(name);
    current->values[Fold(wideName)] = {wideName, FromUtf8(text)};
    return true;
}

} // namespace

std::string RegExportText()
{
    std::ostringstream out;
    out << kHeader << "\n\n";
    ExportKey(out, ClassesRoot(), "HKEY_CLASSES_ROOT");
    return out.str();
}

bool RegExportFile(const char* pszPath)
{
    std::ofstream file(pszPath, std::ios::binary | std::ios::trunc);
    file << RegExportText();
    return static_cast<bool>(file.flush());
}

bool RegImportFile(const char* pszPath, int* pnBadLine)
{
    if (pnBadLine) *pnBadLine = 0;
    std::ifstream file(pszPath, std::ios::binary);
    if (!file) return false;
    RegKey fresh{u"HKEY_CLASSES_ROOT", {}, {}};
    RegKey* current = nullptr;
    int nLine = 0;
    for (std::string line; std::getline(file, line);) {
        ++nLine;
        if (nLine == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3); // a byte-order mark
        if (!line.empty() && line.back() == '\r') line.pop_back();
        bool ok = line.empty() || line[0] == ';' || (nLine == 1 && line == kHeader) ||
                  (line[0] == '[' ? ReadKeyLine(line, fresh, current) : ReadValueLine(line, current));
        if (!ok) {
            if (pnBadLine) *pnBadLine = nLine;
            return false;
        }
    }
    ClassesRoot().values = std::move(fresh.values);
    ClassesRoot().keys = std::move(fresh.keys);
    return true;
}

void RegClearClassesRoot()
{
    ClassesRoot().values.clear();
    ClassesRoot().keys.clear();
}
