// Internal state of the USER stand-in: window objects behind HWND, classes, queues, timers, input.
#pragma once
#include <cassert>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>
#include "msgapi.h"
#include "userconst.h"

namespace user {

struct ClassRec {
    std::u16string strName;
    WNDCLASS wc{};
    ATOM atom = 0;
};

// Data a built-in class (the edit control) keeps with its windows.
struct ClassData {
    virtual ~ClassData() = default;
};

struct Wnd {
    HWND hwnd = nullptr;
    ClassRec* pClass = nullptr;
    WNDPROC proc = nullptr;
    DWORD dwStyle = 0;
    DWORD dwExStyle = 0;
    HWND hwndParent = nullptr;          // WS_CHILD only
    HWND hwndOwner = nullptr;           // top-level windows only
    std::vector<HWND> children;         // z-order, topmost first
    RECT rc{};                          // in the parent's client coordinates, or the screen's
    std::u16string strText;
    LONG_PTR nId = 0;
    LONG_PTR nUserData = 0;
    bool bDestroying = false;
    bool bHasUpdate = false;            // update region, kept as one bounding rectangle
    RECT rcUpdate{};
    bool bUpdateErase = false;
    std::unique_ptr<ClassData> pData;
    HBITMAP hSurface = nullptr;         // the window's own 32-bit surface
    int nSurfaceW = 0, nSurfaceH = 0;
};

struct Timer {
    HWND hwnd;
    UINT_PTR nId;
    UINT nElapse;
    DWORD dwDue;
    TIMERPROC proc;
    uint64_t nSeq;                      // orders timers due at the same time
};

enum class InputKind { MouseMove, MouseButton, Wheel, Key };

struct InputEvent {
    InputKind kind;
    POINT pt;
    int nButton;                        // VK_LBUTTON, VK_RBUTTON, VK_MBUTTON
    bool bDown;
    int nDelta;
    UINT vk;
    WCHAR chPacket;
    WPARAM keyFlags;                    // MK_ flags at the time of the event
    LPARAM lKeyData;
    DWORD dwTime;
};

struct State {
    std::map<HWND, std::unique_ptr<Wnd>> windows;
    std::vector<HWND> topLevel;          // z-order, topmost first
    uintptr_t nNextHandle = 0x1000;
    std::vector<std::unique_ptr<ClassRec>> classes;
    ATOM nNextAtom = 0xC000;

    std::deque<MSG> posted;
    std::deque<InputEvent> input;
    std::vector<Timer> timers;
    uint64_t nTimerSeq = 0;
    UINT_PTR nNextThreadTimer = 1;
    bool bFailTimers = false;
    DWORD dwNow = 0;
    DWORD dwLastMsgTime = 0;
    DWORD dwLastMsgPos = 0;
    bool bQuitPending = false;
    bool bQuitSeen = false;
    int nQuitCode = 0;
    MessagePump pump;

    HWND hwndFocus = nullptr;
    HWND hwndActive = nullptr;
    HWND hwndCapture = nullptr;
    int nActivatingForFocus = 0;        // SetFocus is activating the target's top-level window

    POINT ptCursor{0, 0};
    HCURSOR hCursor = nullptr;
    BYTE asyncKeys[256]{};
    BYTE syncKeys[256]{};               // 0x80 down, 0x01 toggled

    // Last button press, for double clicks.
    bool bHaveClick = false;
    HWND hwndClick = nullptr;
    int nClickButton = 0;
    DWORD dwClickTime = 0;
    POINT ptClick{0, 0};
};

State& S();

ClassRec* FindClass(LPCTSTR name);
Wnd* FromHandle(HWND hwnd);             // null for an invalid or dead handle
Wnd* CheckedHandle(HWND hwnd);          // as above, asserting in debug builds
bool IsTopLevel(const Wnd* w);
HWND RootOf(HWND hwnd);                 // the top-level ancestor through parents
POINT ClientOrigin(const Wnd* w);       // the client area's origin on the screen
bool IsVisibleChain(const Wnd* w);      // visible with all its ancestors
bool IsEnabledChain(const Wnd* w);
std::vector<HWND>& SiblingList(const Wnd* w);
bool IsSameOrDescendant(HWND hwndAncestor, HWND hwnd);

// Pieces shared between the concerns.
void OnWindowGone(HWND hwnd);           // timers, caret, click memory: forget the window
void KillWindowTimers(HWND hwnd);
void LiftOwned(HWND hwndOwner);         // owned windows stay in front of their owner
void AfterHide(Wnd* w);                 // activation and focus leave a hidden window
void ActivateWindow(HWND hwnd, bool bClick);
void ActivateOther(HWND hwndGone);
void DropCaretOf(HWND hwnd);
bool PeekInput(MSG* pMsg, HWND hwndFilter, UINT nMin, UINT nMax, bool bRemove);
void SyncKeyStateFrom(const MSG& msg);
WCHAR TranslateKey(UINT vk, const BYTE* keys);
bool NextPaint(MSG* pMsg, HWND hwndFilter);
bool NextTimer(MSG* pMsg, HWND hwndFilter, bool bRemove);
bool EarliestTimer(DWORD* pdwDue);
void ResetInput();
void ResetMetrics();
void ResetClipboard();
void ResetCaret();
void FreeSurface(Wnd* w);               // paint.cpp
int LiveDCCount();

} // namespace user
