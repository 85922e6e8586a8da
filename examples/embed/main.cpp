// A phone-number field on a form of one's own: the control made by ProgID through the registry, a
// number typed into it, its events heard, and the form saved as a PNG.
#include <cstdio>
#include <string>
#include "base/module.h"
#include "com/objbase.h"
#include "com/variant.h"
#include "host/Host.h"

namespace {

// Registers the module in this process's registry, as an installer runs its DllRegisterServer.
bool RegisterModule(const char* path)
{
    HMODULE hModule = LoadLibrary(FromUtf8(path).c_str());
    auto registerServer = hModule ? reinterpret_cast<HRESULT (*)()>(GetProcAddress(hModule, "DllRegisterServer")) : nullptr;
    return registerServer && SUCCEEDED(registerServer());
}

std::string Text(const VARIANT& value)
{
    COleVariant text;
    return SUCCEEDED(VariantChangeType(&text, &value, 0, VT_BSTR)) ? ToUtf8(BstrToString(text.bstrVal)) : "?";
}

} // namespace

int main(int argc, char** argv)
{
    const char* png = argc > 1 ? argv[1] : "embed.png";
    if (!RegisterModule(QUILLON_MODULE)) {
        std::fprintf(stderr, "embed: cannot register %s\n", QUILLON_MODULE);
        return 1;
    }
    CHost host;
    CForm* form = host.NewForm({20, 20, 260, 80});
    CControlSite* phone = form->Create(u"QUILLON.QuillonCtrl.2", {10, 10, 200, 34});
    if (!phone) {
        std::fprintf(stderr, "embed: no control is registered as QUILLON.QuillonCtrl.2\n");
        return 1;
    }
    phone->SetEventHandler([](const EventInfo& event, VARIANT* args, UINT count) {
        if (event.name.Left(3) == u"Key") return; // the keys themselves are not news
        std::string line = ToUtf8(event.name);
        for (UINT i = 0; i < count; ++i) line += " " + Text(args[i]);
        std::printf("%s\n", line.c_str());
    });
    phone->Put(u"EditMask", COleVariant(u"(###) ###-####"));
    host.Pump();
    host.Focus(*phone);
    host.Type(u"5551234567");
    COleVariant text;
    phone->Get(u"Text", &text);
    std::printf("Text: %s\n", Text(text).c_str());
    std::string problem;
    if (!host.Snapshot(png, &form->Rect(), &problem)) {
        std::fprintf(stderr, "embed: %s\n", problem.c_str());
        return 1;
    }
    std::printf("wrote %s\n", png);
    return 0;
}
