// A module of its own for the loader and version tests: it enters a version resource as it loads
// and takes it out as it unloads, as a control's module does. The tests load it themselves.
#include "base/winver.h"

namespace {

const VERSIONSTRING kStrings[] = {{u"FileDescription", u"Version test module"}, {u"SpecialBuild", u""}};

// German, Windows-1252: a table named otherwise than the usual 040904B0.
const VERSIONINFOTEMPLATE kVersionInfo = {{1, 2, 3, 4}, {5, 6, 7, 8}, VS_FFI_FILEFLAGSMASK, VS_FF_DEBUG,
                                          VOS_NT_WINDOWS32, VFT_DLL, VFT2_UNKNOWN, 0x0407, 0x04E4, kStrings, 2};

struct CVersionEntry {
    CVersionEntry()
    {
        GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCTSTR>(this), &m_hModule);
        RegisterVersionResource(m_hModule, VS_VERSION_INFO, kVersionInfo);
    }
    ~CVersionEntry() { UnregisterVersionResource(m_hModule); }
    HMODULE m_hModule = nullptr;
} g_versionEntry;

} // namespace

extern "C" int VersionTestModuleAnswer() { return 42; }
