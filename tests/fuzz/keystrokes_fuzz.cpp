// Fuzz target: a mask and a run of keys, selections, Text puts and property changes, typed into a
// focused control through the container's message loop.
#include <cstdint>
#include "com/objbase.h"
#include "host/Host.h"
#include "LinkedModule.h"

namespace {

// Bytes taken one at a time, 0 once they run out.
struct Input {
    const uint8_t* p;
    size_t n;
    uint8_t Next() { return n ? (--n, *p++) : 0; }
};

const char16_t kMaskChars[] = u"!#9ANX-()/: a";
const char16_t kTyped[] = u"09aZ -x!\u00e9.";

CString MaskFrom(Input& in)
{
    CString mask;
    for (int len = in.Next() % 12; len > 0; --len) mask += kMaskChars[in.Next() % (sizeof kMaskChars / 2 - 1)];
    return mask;
}

void Act(CHost& host, CControlSite& q, Input& in)
{
    static const UINT kKeys[] = {VK_BACK, VK_DELETE, VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_RETURN};
    uint8_t op = in.Next();
    switch (op % 8) {
    case 0: case 1: case 2: host.Type(CString(kTyped[in.Next() % (sizeof kTyped / 2 - 1)])); break;
    case 3: host.Key(kKeys[in.Next() % 7], op & 0x80); break;
    case 4: {
        COleVariant a(SHORT(in.Next() % 20 - 2)), b(SHORT(in.Next() % 20 - 2)), noScroll(SHORT(0), VT_BOOL);
        q.Call(u"SetSel", {a, b, noScroll}, nullptr);
        break;
    }
    case 5: q.Put(u"Text", COleVariant(CString(kTyped[in.Next() % 5], in.Next() % 16))); break;
    case 6: q.Put(u"UseMaskChars", COleVariant(SHORT(in.Next() & 1), VT_BOOL)); break;
    case 7: q.Put(u"CaseType", COleVariant(LONG(in.Next() % 3))); break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static bool registered = (UseLinkedModule(), true);
    (void)registered;
    Input in{data, size};
    CHost host;
    CControlSite* q = host.NewForm(RECT{0, 0, 300, 100})->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34});
    if (!q) return 0;
    q->Put(u"EditMask", COleVariant(MaskFrom(in)));
    if (in.Next() % 4 == 0) q->Put(u"PasswordChar", COleVariant(u"*"));
    host.Pump();
    host.Focus(*q);
    for (int steps = 0; in.n && steps < 64; ++steps) Act(host, *q, in);
    host.Pump();
    return 0;
}
