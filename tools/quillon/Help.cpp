// The texts of `quillon help`.
#include "Help.h"

const char* const kUsage =
    "usage: quillon run SCRIPT.js [--timeout SECONDS]   run a script against the control in a container\n"
    "       quillon demo [GALLERY.png]                  show masked formatting and events, and write a gallery of looks\n"
    "       quillon view [SCRIPT.js] [--scale N] [--snapshot FILE] [--latency]\n"
    "                                                   try the script's forms (or a showcase) by hand in a window\n"
    "       quillon typelib [--markdown]                print the control's type library as ODL text\n"
    "       quillon register [MODULE]                   register the control's module, printing the keys written\n"
    "       quillon unregister [MODULE]                 unregister it, printing the keys removed\n"
    "       quillon help [COMMAND]                      this summary, or the help of one command\n"
    "       quillon --version                           the program's version and the control module's\n"
    "Every command but help takes --registry FILE: the registry is read from that .reg file instead of\n"
    "being the program's own with the shipped module registered in it; register and unregister write it back.\n"
    "The script API is described in docs/scripting.md; examples/ holds scripts to start from.\n";

namespace {
const char kRunHelp[] =
    "usage: quillon run SCRIPT.js [--timeout SECONDS]\n"
    "       quillon run - [--timeout SECONDS]\n"
    "\n"
    "Runs a JavaScript file against the Quillon control in a container (with -, the script comes from\n"
    "standard input). The script makes forms and controls, sets properties, hears events, types and\n"
    "clicks, and prints; see docs/scripting.md. The status is 0 when the script ends, 1 when it fails:\n"
    "the message goes to standard error with the file and line at fault.\n"
    "\n"
    "  --timeout SECONDS   stop a script still running after SECONDS of real time (status 1)\n";

const char kDemoHelp[] =
    "usage: quillon demo [GALLERY.png]\n"
    "\n"
    "Prints masked formatting, an event log and auto-complete over a few hundred city names, and writes\n"
    "a gallery of the control's looks to GALLERY.png (quillon-gallery.png when not given).\n";

const char kViewHelp[] =
    "usage: quillon view [SCRIPT.js] [--scale N] [--snapshot FILE] [--latency]\n"
    "\n"
    "Opens a window on the forms the script made (a showcase form without a script), with its event\n"
    "handlers live and print on the terminal. Click into a field and type; F2 switches between run and\n"
    "design mode; Ctrl+Q or closing the window quits. Needs a display.\n"
    "\n"
    "  --scale N         show each pixel N times larger (1 to 8)\n"
    "  --snapshot FILE   save the screen as PNG when the window closes\n"
    "  --latency         report the median time from a key to the repainted window\n";

const char kTypelibHelp[] =
    "usage: quillon typelib [--markdown]\n"
    "\n"
    "Prints the type library the registry names for the control (QUILLON.QuillonCtrl.2), as ODL text: the enumerations with their values, the properties and methods of _DQuillon\n"
    "with their dispatch ids and types, the events of _DQuillonEvents and the coclass. With --markdown\n"
    "the text comes inside the page docs/control.md is made of.\n";

const char kRegisterHelp[] =
    "usage: quillon register [--registry FILE] [MODULE]\n"
    "       quillon unregister [--registry FILE] [MODULE]\n"
    "\n"
    "Loads MODULE (the Quillon.ocx shipped with the program when not given), runs its DllRegisterServer\n"
    "(the type library, the classes of the control and its pages, the safety categories) or\n"
    "DllUnregisterServer, and prints the registry keys written or removed as .reg text. Without\n"
    "--registry the program's registry starts empty and is gone when it ends; with it, the registry is\n"
    "read from FILE (when it exists) and written back to it.\n";

const char kHelpHelp[] =
    "usage: quillon help [COMMAND]\n"
    "\n"
    "Prints the summary of all commands, or the help of one (also given by quillon COMMAND --help).\n";
} // namespace

const char* CommandHelp(const std::string& command)
{
    if (command == "run") return kRunHelp;
    if (command == "demo") return kDemoHelp;
    if (command == "view") return kViewHelp;
    if (command == "typelib") return kTypelibHelp;
    if (command == "register" || command == "unregister") return kRegisterHelp;
    if (command == "help") return kHelpHelp;
    return nullptr;
}
