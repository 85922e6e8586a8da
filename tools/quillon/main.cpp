// quillon: runs a script against the Quillon control in a container, or shows the built-in demo.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
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
                 "usage: quillon run SCRIPT.js         run a script against the control in a container\n"
                 "       quillon demo [GALLERY.png]   show masked formatting and events, and write a gallery of looks\n");
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

// A string as a script literal.
std::string Quoted(const std::string& text)
{
    std::string out = "\"";
    for (char c : text) out += (c == '"' || c == '\\') ? std::string("\\") + c : std::string(1, c);
    return out + "\"";
}

// The demo's two settings, on its first line so that its line numbers stay those of demo.js: where
// the gallery goes, and the picture that ships beside the program.
std::string DemoPrelude(const std::string& galleryPath)
{
    char exe[4096];
    ssize_t n = ::readlink("/proc/self/exe", exe, sizeof exe - 1);
    std::string dir = n > 0 ? std::string(exe, static_cast<size_t>(n)) : std::string();
    dir = dir.substr(0, dir.find_last_of('/') + 1);
    return "var galleryPath = " + Quoted(galleryPath) + ", demoPicture = " + Quoted(dir + "arrow.bmp") + "; ";
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
        if (argc > 3) return Usage("demo takes at most the gallery's file name");
        return RunScript(DemoPrelude(argc == 3 ? argv[2] : "quillon-gallery.png") + kDemoScript, "demo.js");
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
