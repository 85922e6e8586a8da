// Fuzz target: any bytes as a stored property bag and as a stored stream, loaded into a control
// that then paints, saves and loads its own save again.
#include <cstdint>
#include <string>
#include "com/objbase.h"
#include "host/Host.h"
#include "LinkedModule.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static bool registered = (UseLinkedModule(), true);
    (void)registered;
    CHost host;
    CForm* form = host.NewForm(RECT{0, 0, 300, 100});
    std::string text(reinterpret_cast<const char*>(data), size);
    if (CControlSite* q = form->Load(u"QUILLON.QuillonCtrl.2", CString(FromUtf8(text)), RECT{10, 10, 130, 34})) {
        host.Pump();
        CString saved = q->Save();
        form->Load(u"QUILLON.QuillonCtrl.2", saved, RECT{10, 40, 130, 64});
    }
    if (CControlSite* q = form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 70, 130, 94})) {
        q->LoadStream(std::vector<BYTE>(data, data + size));
        host.Pump();
        q->SaveStream();
    }
    host.Pump();
    return 0;
}
