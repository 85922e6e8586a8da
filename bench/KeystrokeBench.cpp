// One masked key event through the whole path a container uses: WM_KEYDOWN, WM_CHAR and WM_KEYUP
// through the message loop and pre-translation, the keystroke engine, Change, and the edit's repaint.
#include <benchmark/benchmark.h>
#include "com/objbase.h"
#include "host/Host.h"
#include "server/QuillonApp.h"

static void BM_MaskedKeyEvent(benchmark::State& state)
{
    CoRegisterInprocServer(&DllGetClassObject);
    CHost host;
    CForm* form = host.NewForm(RECT{100, 100, 500, 400});
    CControlSite* q = form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34});
    q->Put(u"EditMask", COleVariant(u"(###) ###-####"));
    long changes = 0;
    q->SetEventHandler([&](const EventEntry& e, VARIANT*, UINT) { changes += e.dispid == 3; });
    host.Pump();
    host.Focus(*q);
    const CString typed(u"(555) 123-4567");
    for (auto _ : state) {
        state.PauseTiming();
        q->Put(u"Text", COleVariant(u""));
        host.Focus(*q);
        state.ResumeTiming();
        host.Type(typed);
    }
    state.SetItemsProcessed(state.iterations() * typed.GetLength());
    state.counters["us_per_key"] = benchmark::Counter(static_cast<double>(state.iterations() * typed.GetLength()),
                                                      benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["changes"] = static_cast<double>(changes);
}
BENCHMARK(BM_MaskedKeyEvent)->Unit(benchmark::kMicrosecond);
