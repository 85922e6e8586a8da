// quillon: runs a script against the Quillon control in a container, or shows the built-in demo.
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include "ScriptHost.h"
#include "Viewer.h"
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
                 "       quillon demo [GALLERY.png]   show masked formatting and events, and write a gallery of looks\n"
                 "       quillon view [SCRIPT.js] [--scale N] [--snapshot FILE] [--latency]\n"
                 "                                    try the script's forms (or a showcase) by hand in a window\n");
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
struct ViewOptions {
    std::string script, snapshot;
    int nScale = 1;
    bool bLatency = false;
};

constexpr int kMaxScale = 8;

// view [SCRIPT.js] [--scale N] [--snapshot FILE]; false with the problem named.
bool ParseView(int argc, char** argv, ViewOptions& o, std::string& problem)
{
    for (int i = 2; i < argc; ++i) {
        std::string arg = argv[i];
        if ((arg == "--scale" || arg == "--snapshot") && i + 1 >= argc) {
            problem = arg + " needs a value";
            return false;
        }
        if (arg == "--scale") {
            char* end = nullptr;
            long n = std::strtol(argv[++i], &end, 10);
            if (*end || n < 1 || n > kMaxScale) {
                problem = "--scale takes a whole number from 1 to " + std::to_string(kMaxScale);
                return false;
            }
            o.nScale = static_cast<int>(n);
        } else if (arg == "--snapshot") {
            o.snapshot = argv[++i];
        } else if (arg == "--latency") {
            o.bLatency = true;
        } else if (!arg.empty() && arg[0] == '-') {
            problem = "unknown option '" + arg + "'";
            return false;
        } else if (o.script.empty()) {
            o.script = arg;
        } else {
            problem = "view takes one script";
            return false;
        }
    }
    return true;
}

// The forms the script made, within the screen.
RECT ViewArea(CHost& host)
{
    RECT forms = host.FormsArea();
    return RECT{std::max<LONG>(forms.left, 0), std::max<LONG>(forms.top, 0),
                std::min<LONG>(forms.right, ::GetSystemMetrics(SM_CXVIRTUALSCREEN)),
                std::min<LONG>(forms.bottom, ::GetSystemMetrics(SM_CYVIRTUALSCREEN))};
}

int View(int argc, char** argv)
{
    // Each line printed by the script's handlers shows at once, while the person is trying things.
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    ViewOptions o;
    std::string problem, source = kShowcaseScript, name = "showcase.js";
    if (!ParseView(argc, argv, o, problem)) return Usage(problem.c_str());
    if (!o.script.empty()) {
        name = o.script;
        if (!ReadFile(o.script.c_str(), source)) {
            std::fprintf(stderr, "quillon: cannot read '%s': %s\n", o.script.c_str(), std::strerror(errno));
            return kUsage;
        }
    }
    if (!CViewer::HasDisplay()) {
        std::fprintf(stderr, "quillon: view needs a display to open its window on, and DISPLAY and WAYLAND_DISPLAY are unset\n");
        return kUsage;
    }
    CoRegisterInprocServer(&DllGetClassObject);
    CScriptHost script;
    if (!script.Run(source, name)) {
        std::fprintf(stderr, "quillon: %s\n", script.Error().c_str());
        return kScriptFailed;
    }
    RECT area = ViewArea(script.Host());
    if (area.right <= area.left || area.bottom <= area.top) {
        std::fprintf(stderr, "quillon: %s made no form on the screen to show\n", name.c_str());
        return kScriptFailed;
    }
    script.Host().Pump();
    CViewer viewer(script, area, o.nScale, "quillon view: " + name);
    bool ok = viewer.Run(o.snapshot);
    std::fflush(stdout);
    if (o.bLatency)
        std::fprintf(stderr, "quillon: key to repainted window: median %.2f ms over %zu keys\n",
                     viewer.MedianKeyLatency() * 1000, viewer.KeyCount());
    if (ok) return 0;
    std::fprintf(stderr, "quillon: %s\n", viewer.Error().c_str());
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
    if (command == "view") return View(argc, argv);
    if (command == "-h" || command == "--help" || command == "help") {
        Usage(nullptr, stdout);
        return 0;
    }
    return Usage(("unknown command '" + command + "'").c_str());
}
