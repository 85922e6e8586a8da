// CWnd: MFC's window object: the handle map, message maps, Default, and the window wrappers.
#pragma once
#include "base/cstring.h"
#include "dispmap.h"
#include "user/winuser.h"

class CWnd;
class CDC;

// One row of a message map: the message and a thunk that cracks its parameters.
struct AFX_MSGMAP_ENTRY {
    UINT nMessage;
    LRESULT (*pfn)(CWnd* pWnd, WPARAM wParam, LPARAM lParam);
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
    size_t nEntries;
};

#define DECLARE_MESSAGE_MAP()                                   \
protected:                                                      \
    static const AFX_MSGMAP* GetThisMessageMap();               \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                      \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                 \
    {                                                                               \
        typedef theClass ThisClass;                                                 \
        typedef baseClass TheBaseClass;                                             \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                           \
        };                                                                          \
        static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, _messageEntries, \
                                              sizeof(_messageEntries) / sizeof(_messageEntries[0])}; \
        return &messageMap;                                                         \
    }

#define AFX_MSG_THUNK(msg, ...) \
    {msg, [](CWnd* w, [[maybe_unused]] WPARAM wParam, [[maybe_unused]] LPARAM lParam) -> LRESULT { \
         [[maybe_unused]] auto* self = static_cast<ThisClass*>(w); __VA_ARGS__ }},
#define AFX_POINT_LPARAM CPoint(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam))

#define ON_WM_CREATE() AFX_MSG_THUNK(WM_CREATE, return self->OnCreate(reinterpret_cast<LPCREATESTRUCT>(lParam));)
#define ON_WM_DESTROY() AFX_MSG_THUNK(WM_DESTROY, self->OnDestroy(); return 0;)
#define ON_WM_PAINT() AFX_MSG_THUNK(WM_PAINT, self->OnPaint(); return 0;)
#define ON_WM_SETFOCUS() AFX_MSG_THUNK(WM_SETFOCUS, self->OnSetFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wParam))); return 0;)
#define ON_WM_KILLFOCUS() AFX_MSG_THUNK(WM_KILLFOCUS, self->OnKillFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wParam))); return 0;)
#define ON_WM_LBUTTONDOWN() AFX_MSG_THUNK(WM_LBUTTONDOWN, self->OnLButtonDown(UINT(wParam), AFX_POINT_LPARAM); return 0;)
#define ON_WM_LBUTTONUP() AFX_MSG_THUNK(WM_LBUTTONUP, self->OnLButtonUp(UINT(wParam), AFX_POINT_LPARAM); return 0;)
#define ON_WM_LBUTTONDBLCLK() AFX_MSG_THUNK(WM_LBUTTONDBLCLK, self->OnLButtonDblClk(UINT(wParam), AFX_POINT_LPARAM); return 0;)
#define ON_WM_RBUTTONDOWN() AFX_MSG_THUNK(WM_RBUTTONDOWN, self->OnRButtonDown(UINT(wParam), AFX_POINT_LPARAM); return 0;)
#define ON_WM_RBUTTONUP() AFX_MSG_THUNK(WM_RBUTTONUP, self->OnRButtonUp(UINT(wParam), AFX_POINT_LPARAM); return 0;)
#define ON_WM_RBUTTONDBLCLK() AFX_MSG_THUNK(WM_RBUTTONDBLCLK, self->OnRButtonDblClk(UINT(wParam), AFX_POINT_LPARAM); return 0;)
#define ON_WM_MOUSEMOVE() AFX_MSG_THUNK(WM_MOUSEMOVE, self->OnMouseMove(UINT(wParam), AFX_POINT_LPARAM); return 0;)
#define ON_WM_MOUSEWHEEL() AFX_MSG_THUNK(WM_MOUSEWHEEL, \
    return self->OnMouseWheel(LOWORD(wParam), SHORT(HIWORD(wParam)), AFX_POINT_LPARAM);)
#define ON_WM_SETCURSOR() AFX_MSG_THUNK(WM_SETCURSOR, \
    return self->OnSetCursor(CWnd::FromHandle(reinterpret_cast<HWND>(wParam)), LOWORD(lParam), HIWORD(lParam));)
#define ON_WM_KEYDOWN() AFX_MSG_THUNK(WM_KEYDOWN, self->OnKeyDown(UINT(wParam), LOWORD(lParam), HIWORD(lParam)); return 0;)
#define ON_WM_KEYUP() AFX_MSG_THUNK(WM_KEYUP, self->OnKeyUp(UINT(wParam), LOWORD(lParam), HIWORD(lParam)); return 0;)
#define ON_WM_CHAR() AFX_MSG_THUNK(WM_CHAR, self->OnChar(UINT(wParam), LOWORD(lParam), HIWORD(lParam)); return 0;)
#define ON_WM_TIMER() AFX_MSG_THUNK(WM_TIMER, self->OnTimer(UINT_PTR(wParam)); return 0;)
#define ON_WM_SIZE() AFX_MSG_THUNK(WM_SIZE, self->OnSize(UINT(wParam), LOWORD(lParam), HIWORD(lParam)); return 0;)
#define ON_WM_MOVE() AFX_MSG_THUNK(WM_MOVE, self->OnMove(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)); return 0;)
#define ON_WM_ENABLE() AFX_MSG_THUNK(WM_ENABLE, self->OnEnable(BOOL(wParam)); return 0;)
// Needs framework/dc.h where it is used.
#define ON_WM_CTLCOLOR() AFX_MSG_THUNK(WM_CTLCOLOREDIT, return AfxHandleCtlColor(self, wParam, lParam, CTLCOLOR_EDIT);)
#define ON_WM_CAPTURECHANGED() AFX_MSG_THUNK(WM_CAPTURECHANGED, self->OnCaptureChanged(CWnd::FromHandle(reinterpret_cast<HWND>(lParam))); return 0;)
#define ON_WM_ERASEBKGND() AFX_MSG_THUNK(WM_ERASEBKGND, return self->OnEraseBkgnd(reinterpret_cast<HDC>(wParam));)

#define CTLCOLOR_MSGBOX 0
#define CTLCOLOR_EDIT 1

class CWnd : public CCmdTarget {
public:
    CWnd() = default;
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

    // The object attached to a handle; a handle that has none gets a temporary object.
    static CWnd* FromHandle(HWND hWnd);
    static CWnd* FromHandlePermanent(HWND hWnd);
    // The top-level window that owns whatever a dialog over hWnd shows (the active window when
    // hWnd is null), in *pWndTop too when asked.
    static HWND GetSafeOwner_(HWND hWnd, HWND* pWndTop);

    BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID, void* lpParam = nullptr);
    BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                        CWnd* pParentWnd, UINT nID);
    BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x, int y,
                  int cx, int cy, HWND hWndParent, UINT nID, void* lpParam = nullptr);
    virtual BOOL DestroyWindow();

    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The default handling of the message now being handled.
    LRESULT Default();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    virtual void PostNcDestroy() {}

    // Wrappers of USER calls.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const { return ::SendMessage(m_hWnd, message, wParam, lParam); }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const { return ::PostMessage(m_hWnd, message, wParam, lParam); }
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* GetCapture() { return FromHandle(::GetCapture()); }
    void SetWindowText(LPCTSTR lpszString) { ::SetWindowText(m_hWnd, lpszString); }
    void GetWindowText(CString& rString) const;
    CString GetWindowText() const { CString s; GetWindowText(s); return s; }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, lpRect, bErase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer = nullptr) { return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer); }
    BOOL KillTimer(UINT_PTR nIDEvent) { return ::KillTimer(m_hWnd, nIDEvent); }
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }

    static const CWnd wndTop;
    static const CWnd wndTopMost;

    // Default handlers: each lets the window's default procedure have the message.
    int OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
    void OnDestroy() { Default(); }
    void OnPaint() { Default(); }
    void OnSetFocus(CWnd*) { Default(); }
    void OnKillFocus(CWnd*) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }
    void OnRButtonUp(UINT, CPoint) { Default(); }
    void OnRButtonDblClk(UINT, CPoint) { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    BOOL OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
    BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    void OnKeyDown(UINT, UINT, UINT) { Default(); }
    void OnKeyUp(UINT, UINT, UINT) { Default(); }
    void OnChar(UINT, UINT, UINT) { Default(); }
    void OnTimer(UINT_PTR) { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnMove(int, int) { Default(); }
    void OnEnable(BOOL) { Default(); }
    void OnCaptureChanged(CWnd*) { Default(); }
    BOOL OnEraseBkgnd(HDC) { return static_cast<BOOL>(Default()); }
    HBRUSH OnCtlColor(CDC*, CWnd*, UINT) { return reinterpret_cast<HBRUSH>(Default()); }

    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

protected:
    void Attach(HWND hWnd);
    HWND Detach();
    WNDPROC m_pfnSuper = nullptr; // the class's own procedure of a subclassed window

    friend LRESULT AfxWndProc(HWND, UINT, WPARAM, LPARAM);
    friend LRESULT AfxCallWndProc(CWnd*, HWND, UINT, WPARAM, LPARAM);
};

// The procedure of every window that has a CWnd: looks the object up and runs its WindowProc.
LRESULT AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
// Registers (once) a window class with AfxWndProc and returns its name.
LPCTSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr, HBRUSH hbrBackground = nullptr, HICON hIcon = nullptr);
// Number of windows attached to CWnd objects (tests check that none is left behind).
int AfxLiveWindowCount();
