// quillon: runs a script against the control in a host (`quillon run SCRIPT.js`), or the demo.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include "DemoScript.h"
#include "ScriptHost.h"
#include "com/objbase.h"
#include "server/QuillonApp.h"

namespace {

int Usage()
{
    std::fprintf(stderr, "usage: quillon run SCRIPT.js\n       quillon demo\n");
    return 2;
}

int RunSource(const std::string& source, const std::string& name)
{
    CoRegisterInprocServer(&DllGetClassObject); // the host loads the control's module
    CScriptHost script;
    if (script.Run(source, name)) return 0;
    std::fprintf(stderr, "%s\n", script.Error().c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::string(argv[1]) == "demo") return RunSource(kDemoScript, "demo.js");
    if (argc != 3 || std::string(argv[1]) != "run") return Usage();
    std::ifstream file(argv[2], std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "quillon: cannot read '%s'\n", argv[2]);
        return 2;
    }
    std::ostringstream text;
    text << file.rdbuf();
    return RunSource(text.str(), argv[2]);
}
