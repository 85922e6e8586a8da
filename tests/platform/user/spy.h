// A recording window class for the USER tests: windows named by the test, messages logged as lines.
#pragma once
#include <functional>
#include <map>
#include <string>
#include <vector>
#include <gtest/gtest.h>
#include "user/winuser.h"

namespace spy {

// A handler may answer a message itself; returning false passes it to DefWindowProc.
using Hook = std::function<bool(HWND, UINT, WPARAM, LPARAM, LRESULT*)>;

struct Log {
    std::vector<std::string> lines;
    std::map<HWND, std::string> names;
    std::map<HWND, Hook> hooks;
    std::vector<UINT> watched;   // messages written to the log
};

Log& L();
std::string Name(HWND h);
std::string MessageName(UINT msg);
LRESULT CALLBACK Proc(HWND, UINT, WPARAM, LPARAM);

constexpr const char16_t* kClass = u"SpyWnd";
constexpr const char16_t* kClassDbl = u"SpyWndDbl";

// Each test starts from a reset USER state and must leave no window, timer or capture behind.
class UserTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    HWND Make(const char* name, DWORD style, int x, int y, int cx, int cy, HWND parent = nullptr,
              const char16_t* cls = kClass, int id = 0);
    void Watch(std::initializer_list<UINT> msgs) { L().watched = msgs; }
    std::vector<std::string> Take();
    int m_nGdiAtStart = 0;
};

} // namespace spy
