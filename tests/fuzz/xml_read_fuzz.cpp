// Fuzz target: any bytes as a document file read into a control with items, under each reading
// selector; what was read is then written and read back into a second control.
#include <unistd.h>
#include <cstdint>
#include <cstdio>
#include <string>
#include "com/objbase.h"
#include "host/Host.h"
#include "LinkedModule.h"

namespace {

std::string TempPath(const char* what)
{
    const char* dir = std::getenv("TMPDIR");
    return std::string(dir && *dir ? dir : "/tmp") + "/quillon-xml-fuzz-" + std::to_string(getpid()) + "-" + what;
}

bool Call(CControlSite* q, const char16_t* method, const std::string& path, SHORT nFileInfo)
{
    COleVariant result;
    q->Call(method, {COleVariant(CString(FromUtf8(path))), COleVariant(nFileInfo)}, &result);
    return result.vt == VT_BOOL && result.boolVal == VARIANT_TRUE;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static bool registered = (UseLinkedModule(), true);
    (void)registered;
    static const std::string input = TempPath("in.xml"), output = TempPath("out.xml");
    if (FILE* f = std::fopen(input.c_str(), "wb")) {
        std::fwrite(data, 1, size, f);
        std::fclose(f);
    }
    CHost host;
    CForm* form = host.NewForm(RECT{0, 0, 300, 100});
    CControlSite* q = form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34});
    CControlSite* r = form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 40, 130, 64});
    if (!q || !r) return 0;
    COleVariant ignored;
    q->Call(u"AddItem", {COleVariant(u"kept")}, &ignored);
    for (SHORT nFileInfo : {0, 1, 2, 3}) Call(q, u"ReadFile", input, nFileInfo);
    Call(q, u"ReadFile", input, 0);
    host.Pump();
    if (Call(q, u"WriteFile", output, 0)) Call(r, u"ReadFile", output, 0);
    host.Pump();
    return 0;
}
