// The texts of `quillon help`: the summary of every command and the help of each one.
#pragma once
#include <string>

// One line per command, for `quillon help` and after a usage error.
extern const char* const kUsage;
// The help of one command ("run", "demo", "view", "typelib", "register", "unregister", "help"), or null for a name that is none.
const char* CommandHelp(const std::string& command);
