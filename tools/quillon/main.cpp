// quillon: runs a script against the Quillon control in a container, or shows the built-in demo.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include "ScriptHost.h"
#include "com/objbase.h"
#include "server/QuillonApp.h"

namespace {
constexpr int kScriptFailed = 1;
constexpr int kUsage = 2;

int Usage(const char* problem, FILE* out = stderr)
{
    if (problem) std::fprintf(stderr, "quillon: %s\n", problem);
    std::fprintf(out,
                 "usage: quillon run SCRIPT.js   run a script against the control in a container\n"
                 "       quillon demo            show masked formatting and events\n");
    return kUsage;
}

bool ReadFile(const char* path, std::string& text)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::ostringstream buf;
    buf << in.rdbuf();
    text = buf.str();
    return !in.bad();
}

int RunScript(const std::string& source, const std::string& name)
{
    // The module is "loaded" the way COM would find its InprocServer32.
    CoRegisterInprocServer(&DllGetClassObject);
    bool ok;
    std::string error;
    {
        CScriptHost script;
        ok = script.Run(source, name);
        error = script.Error();
    }
    std::fflush(stdout);
    if (ok) return 0;
    std::fprintf(stderr, "quillon: %s\n", error.c_str());
    return kScriptFailed;
}
} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) return Usage(nullptr);
    std::string command = argv[1];
    if (command == "demo") {
        if (argc != 2) return Usage("demo takes no arguments");
        return RunScript(kDemoScript, "demo.js");
    }
    if (command == "run") {
        if (argc != 3) return Usage(argc < 3 ? "run needs a script" : "run takes one script");
        std::string source;
        if (!ReadFile(argv[2], source)) {
            std::fprintf(stderr, "quillon: cannot read '%s': %s\n", argv[2], std::strerror(errno));
            return kUsage;
        }
        return RunScript(source, argv[2]);
    }
    if (command == "-h" || command == "--help" || command == "help") {
        Usage(nullptr, stdout);
        return 0;
    }
    return Usage(("unknown command '" + command + "'").c_str());
}
