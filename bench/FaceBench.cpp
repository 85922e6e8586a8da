// One full run-mode paint of a 120 by 24 face with both buttons and a gradient fill: the
// off-screen buffer, the face, the copy to the target surface, and the child edit it tends.
#include <benchmark/benchmark.h>
#include "com/objbase.h"
#include "control/QuillonCtrl.h"
#include "host/Host.h"
#include "LinkedModule.h"

static void BM_FacePaint(benchmark::State& state)
{
    UseLinkedModule();
    CHost host;
    CControlSite* q = host.NewForm(RECT{100, 100, 500, 400})->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34});
    q->Put(u"DropButton", COleVariant(SHORT(1), VT_BOOL));
    q->Put(u"SpinButton", COleVariant(SHORT(1), VT_BOOL));
    q->Put(u"ButtonFillType", COleVariant(LONG(FillHorizontal)));
    q->Put(u"Text", COleVariant(u"(555) 123-4567"));
    host.Pump();
    auto* ctrl = static_cast<CQuillonCtrl*>(static_cast<COleControl*>(q->Control()));
    CDC target;
    target.CreateCompatibleDC(nullptr);
    CBitmap surface;
    surface.CreateBitmap(120, 24, 1, 32, nullptr);
    HGDIOBJ old = target.SelectObject(&surface);
    const CRect bounds(0, 0, 120, 24);
    for (auto _ : state) ctrl->OnDraw(&target, bounds, bounds);
    target.SelectObject(old);
}
BENCHMARK(BM_FacePaint)->Unit(benchmark::kMicrosecond);
