// One masked key event through the whole path a container uses: WM_KEYDOWN, WM_CHAR and WM_KEYUP
// through the message loop and pre-translation, the keystroke engine, Change, and the edit's repaint.
#include <benchmark/benchmark.h>
#include "com/objbase.h"
#include "host/Host.h"
#include "LinkedModule.h"

static void BM_MaskedKeyEvent(benchmark::State& state)
{
    UseLinkedModule();
    CHost host;
    CForm* form = host.NewForm(RECT{100, 100, 500, 400});
    CControlSite* q = form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34});
    q->Put(u"EditMask", COleVariant(u"(###) ###-####"));
    long changes = 0;
    q->SetEventHandler([&](const EventInfo& e, VARIANT*, UINT) { changes += e.dispid == 3; });
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

// One Backspace over a long run of literals: the engine restores each literal as a step of its own,
// with its own Change, so the cost of a step must stay near one copy of the text.
static void BM_BackspaceOverLiteralRun(benchmark::State& state)
{
    UseLinkedModule();
    CHost host;
    CForm* form = host.NewForm(RECT{100, 100, 500, 400});
    CControlSite* q = form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 190, 34});
    const int nLiterals = static_cast<int>(state.range(0));
    q->Put(u"EditMask", COleVariant(CString(u"#") + CString(u'-', nLiterals) + u"#"));
    long changes = 0;
    q->SetEventHandler([&](const EventInfo& e, VARIANT*, UINT) { changes += e.dispid == 3; });
    host.Pump();
    for (auto _ : state) {
        state.PauseTiming();
        host.Focus(*q);
        host.Type(u"12"); // the caret ends behind the last placeholder
        state.ResumeTiming();
        host.Key(VK_BACK);
        host.Key(VK_BACK);
        state.PauseTiming();
        q->Put(u"Text", COleVariant(u""));
        state.ResumeTiming();
    }
    state.counters["changes_per_iteration"] = static_cast<double>(changes) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_BackspaceOverLiteralRun)->Arg(16000)->Arg(32000)->Unit(benchmark::kMillisecond)->Iterations(1);
