// CWnd: the handle map, creation and subclassing, message dispatch through the maps, Default.
#include "wnd.h"
#include <map>
#include <tuple>
#include <memory>

namespace {

std::map<HWND, CWnd*>& PermanentMap()
{
    static std::map<HWND, CWnd*> map;
    return map;
}

// Objects made by FromHandle for windows that have none; they live as long as the process,
// since callers only compare or use them at once (MFC frees its temporaries at idle time).
std::map<HWND, std::unique_ptr<CWnd>>& TemporaryMap()
{
    static std::map<HWND, std::unique_ptr<CWnd>> map;
    return map;
}

CWnd* g_pWndInit = nullptr;          // the object whose window is being created

struct CurrentMessage { HWND hWnd; UINT message; WPARAM wParam; LPARAM lParam; };
CurrentMessage g_lastSent{};         // the message Default() hands on

class CTempWnd : public CWnd {};

} // namespace

const CWnd CWnd::wndTop;
const CWnd CWnd::wndTopMost;

// An object that dies first takes its window with it; a temporary wrapper only lets go of it.
CWnd::~CWnd()
{
    if (m_hWnd && FromHandlePermanent(m_hWnd) == this) {
        HWND h = m_hWnd;
        Detach();
        ::DestroyWindow(h);
    }
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    auto it = PermanentMap().find(hWnd);
    return it == PermanentMap().end() ? nullptr : it->second;
}

CWnd* CWnd::FromHandle(HWND hWnd)
{
    if (!hWnd) return nullptr;
    if (CWnd* p = FromHandlePermanent(hWnd)) return p;
    auto& temp = TemporaryMap()[hWnd];
    if (!temp) temp = std::make_unique<CTempWnd>();
    temp->m_hWnd = hWnd;
    return temp.get();
}

HWND CWnd::GetSafeOwner_(HWND hWnd, HWND* pWndTop)
{
    HWND top = hWnd ? ::GetAncestor(hWnd, GA_ROOT) : ::GetActiveWindow();
    if (pWndTop) *pWndTop = top;
    return top;
}

void CWnd::Attach(HWND hWnd)
{
    m_hWnd = hWnd;
    PermanentMap()[hWnd] = this;
    TemporaryMap().erase(hWnd);
}

HWND CWnd::Detach()
{
    HWND h = m_hWnd;
    if (h) PermanentMap().erase(h);
    m_hWnd = nullptr;
    return h;
}

int AfxLiveWindowCount() { return static_cast<int>(PermanentMap().size()); }

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int cx, int cy, HWND hWndParent, UINT nID, void* lpParam)
{
    CWnd* previous = g_pWndInit;
    g_pWndInit = this;
    HWND hWnd = ::CreateWindowEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, x, y, cx, cy, hWndParent,
                                 reinterpret_cast<HMENU>(static_cast<uintptr_t>(nID)), nullptr, lpParam);
    g_pWndInit = previous;
    if (!hWnd) return FALSE;
    if (!m_hWnd) Attach(hWnd);
    // A window of a foreign class (the EDIT control) is subclassed once it exists.
    if (reinterpret_cast<WNDPROC>(::GetWindowLongPtr(hWnd, GWLP_WNDPROC)) != &AfxWndProc)
        m_pfnSuper = reinterpret_cast<WNDPROC>(::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    return TRUE;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                    CWnd* pParentWnd, UINT nID, void* lpParam)
{
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr, nID, lpParam);
}

BOOL CWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

BOOL CWnd::DestroyWindow() { return m_hWnd ? ::DestroyWindow(m_hWnd) : FALSE; }

BOOL CWnd::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    HWND after = pWndInsertAfter == &wndTop ? HWND_TOP : pWndInsertAfter == &wndTopMost ? HWND_TOPMOST
                                                                                          : (pWndInsertAfter ? pWndInsertAfter->m_hWnd : nullptr);
    return ::SetWindowPos(m_hWnd, after, x, y, cx, cy, nFlags);
}

void CWnd::GetWindowText(CString& rString) const
{
    int n = ::GetWindowTextLength(m_hWnd);
    std::u16string buf(n + 1, u'\0');
    n = ::GetWindowText(m_hWnd, buf.data(), n + 1);
    buf.resize(n > 0 ? n : 0);
    rString = CString(std::move(buf));
}

BOOL CWnd::PreTranslateMessage(MSG*) { return FALSE; }

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pfnSuper) return ::CallWindowProc(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProc(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() { return DefWindowProc(g_lastSent.message, g_lastSent.wParam, g_lastSent.lParam); }

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
        for (size_t i = 0; i < map->nEntries; ++i) {
            if (map->lpEntries[i].nMessage != message) continue;
            *pResult = map->lpEntries[i].pfn(this, wParam, lParam);
            return TRUE;
        }
    }
    return FALSE;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result)) result = DefWindowProc(message, wParam, lParam);
    return result;
}

const AFX_MSGMAP* CWnd::GetThisMessageMap()
{
    static const AFX_MSGMAP map = {nullptr, nullptr, 0};
    return &map;
}

const AFX_MSGMAP* CWnd::GetMessageMap() const { return GetThisMessageMap(); }

LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    CurrentMessage saved = g_lastSent; // nested sends each keep their own current message
    g_lastSent = {hWnd, nMsg, wParam, lParam};
    LRESULT result = pWnd->WindowProc(nMsg, wParam, lParam);
    if (nMsg == WM_NCDESTROY && pWnd->m_hWnd == hWnd) {
        pWnd->Detach();
        pWnd->m_pfnSuper = nullptr;
        pWnd->PostNcDestroy();
    }
    g_lastSent = saved;
    return result;
}

LRESULT AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    CWnd* pWnd = CWnd::FromHandlePermanent(hWnd);
    if (!pWnd && g_pWndInit && !g_pWndInit->m_hWnd) {
        pWnd = g_pWndInit;
        pWnd->Attach(hWnd);
    }
    if (!pWnd) return ::DefWindowProc(hWnd, nMsg, wParam, lParam);
    return AfxCallWndProc(pWnd, hWnd, nMsg, wParam, lParam);
}

// As in MFC, one class per combination of style, cursor, brush and icon, named after them; a null
// cursor means the class has none, and whoever owns the window sets the cursor itself.
LPCTSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon)
{
    static std::map<std::tuple<UINT, HCURSOR, HBRUSH, HICON>, CString> names;
    CString& name = names[{nClassStyle, hCursor, hbrBackground, hIcon}];
    if (name.IsEmpty()) {
        name.Format(u"Afx:%x:%llx:%llx:%llx", nClassStyle, static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(hCursor)),
                    static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(hbrBackground)),
                    static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(hIcon)));
        WNDCLASS wc{};
        wc.style = nClassStyle;
        wc.lpfnWndProc = &AfxWndProc;
        wc.hCursor = hCursor;
        wc.hbrBackground = hbrBackground;
        wc.hIcon = hIcon;
        wc.lpszClassName = name;
        ::RegisterClass(&wc);
    }
    return name;
}
