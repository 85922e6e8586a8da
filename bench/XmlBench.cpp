// Writing and reading a document of 32,760 items, each against a bare libxml2 parse of the same
// file measured in the same run (the counter "x_bare_parse" is the ratio).
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <chrono>
#include <fstream>
#include <string>
#include "com/objbase.h"
#include "host/Host.h"
#include "LinkedModule.h"

namespace {

const std::string kItemsPath = QUILLON_BENCH_DIR "/items-32760.txt";
const std::string kDocumentPath = QUILLON_BENCH_OUT "/bench-items.xml";
constexpr int kBareParseRuns = 15;

using Clock = std::chrono::steady_clock;

// A control holding the item set, on a host that lives as long as the benchmark.
struct ItemsControl {
    ItemsControl()
    {
        UseLinkedModule();
        q = host.NewForm(RECT{100, 100, 500, 400})->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34});
        std::ifstream in(kItemsPath);
        for (std::string line; std::getline(in, line);) {
            COleVariant result;
            q->Call(u"AddItem", {COleVariant(CString(FromUtf8(line)))}, &result);
        }
    }
    bool Call(const char16_t* method, const std::string& path)
    {
        COleVariant result;
        q->Call(method, {COleVariant(CString(FromUtf8(path))), COleVariant(SHORT(0))}, &result);
        return result.vt == VT_BOOL && result.boolVal == VARIANT_TRUE;
    }
    CHost host;
    CControlSite* q = nullptr;
};

double BareParseSeconds()
{
    double best = 1e9;
    for (int i = 0; i < kBareParseRuns; ++i) {
        auto t0 = Clock::now();
        xmlDocPtr doc = xmlReadFile(kDocumentPath.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
        benchmark::DoNotOptimize(doc);
        double s = std::chrono::duration<double>(Clock::now() - t0).count();
        xmlFreeDoc(doc);
        if (s < best) best = s;
    }
    return best;
}

// Runs one operation per iteration and reports its best time against the best bare parse.
template <class Op>
void RunAgainstBareParse(benchmark::State& state, Op op)
{
    double best = 1e9;
    for (auto _ : state) {
        auto t0 = Clock::now();
        if (!op()) state.SkipWithError("the operation failed");
        double s = std::chrono::duration<double>(Clock::now() - t0).count();
        if (s < best) best = s;
    }
    state.counters["x_bare_parse"] = best / BareParseSeconds();
    state.counters["best_ms"] = best * 1000;
}

} // namespace

static void BM_XmlBareParse(benchmark::State& state)
{
    ItemsControl c;
    c.Call(u"WriteFile", kDocumentPath);
    RunAgainstBareParse(state, [] {
        xmlDocPtr doc = xmlReadFile(kDocumentPath.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
        bool ok = doc != nullptr;
        xmlFreeDoc(doc);
        return ok;
    });
}
BENCHMARK(BM_XmlBareParse)->Unit(benchmark::kMillisecond);

static void BM_XmlWriteFile(benchmark::State& state)
{
    ItemsControl c;
    RunAgainstBareParse(state, [&] { return c.Call(u"WriteFile", kDocumentPath); });
}
BENCHMARK(BM_XmlWriteFile)->Unit(benchmark::kMillisecond);

static void BM_XmlReadFile(benchmark::State& state)
{
    ItemsControl c;
    c.Call(u"WriteFile", kDocumentPath);
    RunAgainstBareParse(state, [&] { return c.Call(u"ReadFile", kDocumentPath); });
}
BENCHMARK(BM_XmlReadFile)->Unit(benchmark::kMillisecond);
