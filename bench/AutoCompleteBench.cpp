// Auto-complete at the item array's limit: each key of a word typed into an empty field through the
// host's message loop, with both passes run and the control and the opened list painted.
#include <benchmark/benchmark.h>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include "com/objbase.h"
#include "control/QuillonCtrl.h"
#include "host/Host.h"
#include "LinkedModule.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kItemFile = QUILLON_BENCH_DIR "/items-32760.txt";
constexpr RECT kFormRect{100, 100, 500, 400}, kControlRect{10, 10, 210, 34};
const char16_t* const kWords[] = {u"item01", u"Intern", u"berlin", u"New Yo", u"Nessvi"};
constexpr double kMicrosPerSecond = 1e6;

std::vector<CString> LoadItems()
{
    std::ifstream in(kItemFile);
    if (!in) throw std::runtime_error(std::string("cannot read ") + kItemFile);
    std::vector<CString> items;
    for (std::string line; std::getline(in, line);) items.push_back(CString(FromUtf8(line)));
    return items;
}

constexpr double kMedian = 0.5, kNinetieth = 0.9;

double Percentile(std::vector<double> v, double fraction)
{
    if (v.empty()) return 0;
    auto at = v.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(v.size() - 1) * fraction);
    std::nth_element(v.begin(), at, v.end());
    return *at;
}

// One key as a user gives it (key down, character, key up) and the paints it causes; in µs.
double TimedKey(CHost& host, char16_t ch)
{
    const auto start = Clock::now();
    host.Type(CString(ch));
    host.Pump();
    return std::chrono::duration<double>(Clock::now() - start).count() * kMicrosPerSecond;
}

// Back to an empty field with the list closed, as a user leaves it with Escape and clears it.
void ResetField(CHost& host, CControlSite& site)
{
    host.Key(VK_ESCAPE);
    site.Put(u"Text", COleVariant(u""));
    host.Focus(site);
    host.Pump();
}

} // namespace

static void BM_AutoCompleteKey(benchmark::State& state)
{
    UseLinkedModule();
    CHost host;
    CControlSite* q = host.NewForm(kFormRect)->Create(u"QUILLON.QuillonCtrl.2", kControlRect);
    CQuillonCtrl* c = static_cast<CQuillonCtrl*>(static_cast<COleControl*>(q->Control()));
    q->Put(u"AutoComplete", COleVariant(SHORT(AutoBoth)));
    q->Put(u"AutoFindSize", COleVariant(SHORT(1)));
    for (const CString& item : LoadItems()) c->AddItem(item);
    host.Pump();
    host.Focus(*q);
    // The index is built at the first search after the items change, so the first key after they were
    // added pays for it: timed once here, apart from the per-key figures below.
    const double firstSearchAfterAdding = TimedKey(host, kWords[0][0]);
    ResetField(host, *q);

    std::vector<double> keys, firstKeys, rebuilds;
    for (auto _ : state) {
        // The same rebuild, as every AddItem or RemoveItem causes: timed on its own and kept out of the
        // per-key medians.
        c->m_itemIndex.Invalidate();
        rebuilds.push_back(TimedKey(host, kWords[0][0]));
        ResetField(host, *q);
        double iteration = 0;
        for (const char16_t* word : kWords) {
            for (const char16_t* ch = word; *ch; ++ch) {
                const double us = TimedKey(host, *ch);
                keys.push_back(us);
                if (ch == word) firstKeys.push_back(us);
                iteration += us;
            }
            ResetField(host, *q);
        }
        state.SetIterationTime(iteration / kMicrosPerSecond);
    }
    state.counters["median_key_us"] = Percentile(keys, kMedian);
    state.counters["p90_key_us"] = Percentile(keys, kNinetieth);
    state.counters["median_first_key_us"] = Percentile(firstKeys, kMedian);
    state.counters["index_bytes"] = static_cast<double>(c->m_itemIndex.BytesHeld());
    state.counters["index_build_key_us"] = Percentile(rebuilds, kMedian);
    state.counters["first_search_after_adding_us"] = firstSearchAfterAdding;
    state.counters["items"] = c->m_items.GetSize();
}
BENCHMARK(BM_AutoCompleteKey)->Unit(benchmark::kMicrosecond)->UseManualTime();
