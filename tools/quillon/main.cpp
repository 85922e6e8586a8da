// quillon: runs a script against the Quillon control in a container, or shows the built-in demo.
#include <sys/stat.h>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <duktape.h>
#include "Help.h"
#include "ScriptHost.h"
#include "Viewer.h"
#include "com/objbase.h"
#include "server/QuillonApp.h"

namespace {
constexpr int kScriptFailed = 1;
constexpr int kBadUsage = 2;

int Usage(const char* problem)
{
    if (problem) std::fprintf(stderr, "quillon: %s\n", problem);
    std::fputs(kUsage, stderr);
    return kBadUsage;
}

bool IsHelp(const std::string& arg) { return arg == "--help" || arg == "-h"; }

int Help(const std::string& command)
{
    if (command.empty()) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    const char* text = CommandHelp(command);
    if (!text) return Usage(("no command '" + command + "' to help with").c_str());
    std::fputs(text, stdout);
    return 0;
}

int Version()
{
    std::printf("quillon %s (Duktape %ld.%ld.%ld)\n", QUILLON_VERSION, DUK_VERSION / 10000, DUK_VERSION / 100 % 100,
                DUK_VERSION % 100);
    return 0;
}

bool ReadFile(const char* path, std::string& text)
{
    struct stat st;
    if (::stat(path, &st) == 0 && S_ISDIR(st.st_mode)) {
        errno = EISDIR;
        return false;
    }
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

// Ends the program when a script runs past its time. The engine cannot be stopped from outside a
// script, so the watchdog writes out what the script printed, says why, and exits.
class CWatchdog {
public:
    CWatchdog(double seconds, std::string name) : m_strName(std::move(name))
    {
        if (seconds > 0) m_thread = std::thread([this, seconds] { Watch(seconds); });
    }
    ~CWatchdog()
    {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_bDone = true;
        }
        m_cv.notify_one();
        if (m_thread.joinable()) m_thread.join();
    }

private:
    void Watch(double seconds)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_cv.wait_for(lock, std::chrono::duration<double>(seconds), [this] { return m_bDone; })) return;
        std::fflush(stdout);
        std::fprintf(stderr, "quillon: %s: still running after --timeout %g seconds; stopped\n", m_strName.c_str(), seconds);
        std::_Exit(kScriptFailed);
    }

    std::string m_strName;
    std::mutex m_mutex;
    std::condition_variable m_cv;
    bool m_bDone = false;
    std::thread m_thread;
};

int RunScript(const std::string& source, const std::string& name, double timeout = 0)
{
    // The module is "loaded" the way COM would find its InprocServer32.
    CoRegisterInprocServer(&DllGetClassObject);
    bool ok;
    std::string error;
    {
        CWatchdog watchdog(timeout, name);
        CScriptHost script;
        ok = script.Run(source, name);
        error = script.Error();
    }
    std::fflush(stdout);
    if (ok) return 0;
    std::fprintf(stderr, "quillon: %s\n", error.c_str());
    return kScriptFailed;
}

struct RunOptions {
    std::string script;
    double timeout = 0;
};

// run SCRIPT.js|- [--timeout SECONDS]; false with the problem named, or with none for --help.
bool ParseRun(int argc, char** argv, RunOptions& o, std::string& problem)
{
    for (int i = 2; i < argc; ++i) {
        std::string arg = argv[i];
        if (IsHelp(arg)) return false;
        if (arg == "--timeout") {
            char* end = nullptr;
            o.timeout = i + 1 < argc ? std::strtod(argv[++i], &end) : 0;
            if (!end || *end || !(o.timeout > 0)) {
                problem = "--timeout takes a number of seconds above 0";
                return false;
            }
        } else if (arg.size() > 1 && arg[0] == '-') {
            problem = "unknown option '" + arg + "'";
            return false;
        } else if (o.script.empty()) {
            o.script = arg;
        } else {
            problem = "run takes one script";
            return false;
        }
    }
    if (o.script.empty()) problem = "run needs a script";
    return o.script.size() > 0;
}

int Run(int argc, char** argv)
{
    RunOptions o;
    std::string problem, source;
    if (!ParseRun(argc, argv, o, problem)) return problem.empty() ? Help("run") : Usage(problem.c_str());
    if (o.script == "-") {
        std::ostringstream in;
        in << std::cin.rdbuf();
        return RunScript(in.str(), "stdin", o.timeout);
    }
    if (!ReadFile(o.script.c_str(), source)) {
        std::fprintf(stderr, "quillon: cannot read '%s': %s\n", o.script.c_str(), std::strerror(errno));
        return kBadUsage;
    }
    return RunScript(source, o.script, o.timeout);
}

int Demo(int argc, char** argv)
{
    std::string gallery = "quillon-gallery.png";
    if (argc > 3) return Usage("demo takes at most the gallery's file name");
    if (argc == 3) {
        gallery = argv[2];
        if (IsHelp(gallery)) return Help("demo");
        if (gallery.size() > 1 && gallery[0] == '-') return Usage(("unknown option '" + gallery + "'").c_str());
    }
    return RunScript(DemoPrelude(gallery) + kDemoScript, "demo.js");
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
        } else if (IsHelp(arg)) {
            problem.clear();
            return false;
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
    if (!ParseView(argc, argv, o, problem)) return problem.empty() ? Help("view") : Usage(problem.c_str());
    if (!o.script.empty()) {
        name = o.script;
        if (!ReadFile(o.script.c_str(), source)) {
            std::fprintf(stderr, "quillon: cannot read '%s': %s\n", o.script.c_str(), std::strerror(errno));
            return kBadUsage;
        }
    }
    if (!CViewer::HasDisplay()) {
        std::fprintf(stderr, "quillon: view needs a display to open its window on, and DISPLAY and WAYLAND_DISPLAY are unset\n");
        return kBadUsage;
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
    if (command == "run") return Run(argc, argv);
    if (command == "demo") return Demo(argc, argv);
    if (command == "view") return View(argc, argv);
    if (command == "help" || IsHelp(command)) {
        if (argc > 3) return Usage("help takes at most one command");
        return Help(argc == 3 && !IsHelp(argv[2]) ? argv[2] : "");
    }
    if (command == "--version" || command == "-V") return Version();
    return Usage(("unknown command '" + command + "'").c_str());
}
