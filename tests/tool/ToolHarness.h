// A script host whose print lines are kept for comparison, with the module registered as the tool does.
#pragma once
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>
#include "ScriptHost.h"

class ScriptTest : public ::testing::Test {
protected:
    ScriptTest();
    ~ScriptTest() override;

    // Runs the source after a prelude that makes `form` and a control `q` on it.
    bool RunWithControl(const std::string& source);
    bool Run(const std::string& source);
    // Lines printed since the last call.
    std::vector<std::string> TakeLines();
    const std::string& Error() const { return m_pScript->Error(); }

    std::unique_ptr<CScriptHost> m_pScript;
    std::vector<std::string> m_lines;
};

// Compares whole sequences and prints both side by side on a mismatch.
void ExpectLines(const std::vector<std::string>& expected, const std::vector<std::string>& actual);
