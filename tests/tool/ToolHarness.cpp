// The script host fixture: print captured, and nothing of the container left behind afterwards.
#include "ToolHarness.h"
#include <algorithm>
#include <sstream>
#include "com/objbase.h"
#include "Registration.h"
#include "user/sysapi.h"

ScriptTest::ScriptTest()
{
    // The module as the program finds it: registered, then loaded through the registry.
    std::string problem;
    EXPECT_TRUE(CallRegistrationExport(QUILLON_MODULE, true, problem)) << problem;
    m_pScript = std::make_unique<CScriptHost>();
    m_pScript->SetPrintSink([this](const std::string& line) { m_lines.push_back(line); });
}

ScriptTest::~ScriptTest()
{
    m_pScript.reset();
    EXPECT_EQ(GetLiveWindowCount(), 0) << "windows left behind";
    EXPECT_EQ(GetLiveTimerCount(), 0) << "timers left behind";
    ResetUserState();
}

bool ScriptTest::Run(const std::string& source)
{
    return m_pScript->Run(source, "test.js");
}

bool ScriptTest::RunWithControl(const std::string& source)
{
    // One line, so that line numbers in errors are those of the source plus one.
    return Run("var form = host.form(100, 100, 400, 300); var q = form.create(\"QUILLON.QuillonCtrl.2\", 10, 10, 120, 24);\n" +
               source);
}

std::vector<std::string> ScriptTest::TakeLines()
{
    std::vector<std::string> out;
    out.swap(m_lines);
    return out;
}

void ExpectLines(const std::vector<std::string>& expected, const std::vector<std::string>& actual)
{
    if (expected == actual) return;
    std::ostringstream table;
    size_t n = std::max(expected.size(), actual.size());
    table << "expected | actual\n";
    for (size_t i = 0; i < n; ++i) {
        bool same = i < expected.size() && i < actual.size() && expected[i] == actual[i];
        table << (i < expected.size() ? expected[i] : "-") << " | " << (i < actual.size() ? actual[i] : "-")
              << (same ? "" : "   <<") << "\n";
    }
    ADD_FAILURE() << table.str();
}
