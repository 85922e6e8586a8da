// CHost and CForm: the container's ambient properties, its forms and the making of controls by ProgID.
#include "host/Host.h"
#include <algorithm>
#include "com/objbase.h"
#include "base/colors.h"
#include "gdi/wingdi.h"
#include "user/commdlg.h"
#include "user/winuser.h"

namespace {

constexpr const char16_t* kFormClass = u"QuillonHostForm";

LRESULT FormProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    auto* form = reinterpret_cast<CForm*>(::GetWindowLongPtr(hWnd, GWLP_USERDATA));
    if (msg == WM_PAINT && form) {
        PAINTSTRUCT ps;
        HDC hdc = ::BeginPaint(hWnd, &ps);
        form->Paint(hdc);
        ::EndPaint(hWnd, &ps);
        return 0;
    }
    if (msg == WM_ERASEBKGND) return 1; // the paint fills the whole form
    return ::DefWindowProc(hWnd, msg, wParam, lParam);
}

void RegisterFormClass()
{
    static bool done = false;
    if (done) return;
    WNDCLASS wc{};
    wc.lpfnWndProc = &FormProc;
    wc.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = kFormClass;
    ::RegisterClass(&wc);
    done = true;
}

} // namespace

CHost::CHost()
{
    FONTDESC fd{sizeof(FONTDESC), u"MS Sans Serif", {}, FW_NORMAL, 0, FALSE, FALSE, FALSE};
    fd.cySize.int64 = 82500; // 8.25 pt
    OleCreateFontIndirect(&fd, IID_IFont, reinterpret_cast<void**>(&m_pAmbientFont));
    ::SetMessagePump([this](MSG& msg) {
        if (DropsInput(msg)) return;
        if (msg.message >= WM_KEYFIRST && msg.message <= WM_KEYLAST)
            if (CControlSite* site = SiteOfWindow(msg.hwnd); site && site->PreTranslate(msg)) return;
        if (msg.message == WM_PAINT) {
            DispatchPaint(msg);
            return;
        }
        ::TranslateMessage(&msg);
        ::DispatchMessage(&msg);
    });
    ::SetMessageBeepHook([this](UINT type) { if (m_onBeep) m_onBeep(type); });
    ::SetFileDialogHook([this](BOOL bOpen, const CString& initialName, CString& path) {
        return m_onFileDialog && m_onFileDialog(bOpen ? "open" : "save", initialName, path);
    });
    ::SetModalDialogHook([this](HWND hDlg) { if (m_onDialog) m_onDialog(hDlg); });
}

CHost::~CHost()
{
    Thaw();
    m_forms.clear();
    ::SetMessagePump(nullptr);
    ::SetMessageBeepHook(nullptr);
    ::SetFileDialogHook(nullptr);
    ::SetModalDialogHook(nullptr);
    if (m_pAmbientFont) m_pAmbientFont->Release();
}

CForm* CHost::NewForm(const RECT& rc)
{
    m_forms.push_back(std::make_unique<CForm>(*this, rc));
    return m_forms.back().get();
}

bool CHost::Screen(int width, int height, int monitors) { return ::SetVirtualScreen(width, height, monitors) != FALSE; }
void CHost::Pump() { ::PumpMessages(); }
void CHost::Advance(DWORD ms) { ::AdvanceClock(ms); }

// A control that makes its child windows in its first paint (a live edit over its face) has painted
// before they were in place. A real form repaints once its controls are in place, and so does this
// one: after the paint that gave a control its first child window, the whole form paints again.
void CHost::DispatchPaint(const MSG& msg)
{
    CControlSite* site = SiteOfWindow(msg.hwnd);
    bool control = site && site->Window() == msg.hwnd;
    bool hadChildren = control && ::GetWindow(msg.hwnd, GW_CHILD);
    ::DispatchMessage(&msg);
    if (control && !hadChildren && ::IsWindow(msg.hwnd) && ::GetWindow(msg.hwnd, GW_CHILD))
        InvalidateWindowTree(site->FormWindow());
}

// The site whose control window is the window or one of its ancestors.
CControlSite* CHost::SiteOfWindow(HWND hWnd)
{
    for (HWND h = hWnd; h; h = ::GetParent(h))
        for (auto& form : m_forms)
            for (auto& site : form->Sites())
                if (site->Window() == h) return site.get();
    return nullptr;
}

CForm* CHost::FormOfWindow(HWND hWnd)
{
    for (auto& form : m_forms)
        if (hWnd && form->Window() == hWnd) return form.get();
    return nullptr;
}

CForm::CForm(CHost& host, const RECT& rc) : m_host(host), m_rc(rc)
{
    RegisterFormClass();
    m_hWnd = ::CreateWindowEx(0, kFormClass, u"", WS_POPUP, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top,
                              nullptr, nullptr, nullptr, nullptr);
    ::SetWindowLongPtr(m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::ShowWindow(m_hWnd, SW_SHOW);
}

CForm::~CForm()
{
    m_sites.clear();
    if (m_hWnd) ::DestroyWindow(m_hWnd);
}

void CForm::Paint(HDC hdc)
{
    RECT client;
    ::GetClientRect(m_hWnd, &client);
    ::FillRect(hdc, &client, ::GetSysColorBrush(COLOR_BTNFACE));
    for (auto& site : m_sites)
        if (!site->Window()) site->DrawInto(hdc);
}

CControlSite* CForm::Make(const CString& progID, const RECT& rc, HRESULT* phr)
{
    CLSID clsid;
    IUnknown* control = nullptr;
    HRESULT hr = CLSIDFromProgID(progID, &clsid);
    if (SUCCEEDED(hr)) hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, reinterpret_cast<void**>(&control));
    if (phr) *phr = hr;
    if (FAILED(hr)) return nullptr;
    m_sites.push_back(std::make_unique<CControlSite>(m_host, control, rc));
    control->Release();
    return m_sites.back().get();
}

// After the control holds its state, it goes live in the form: a window in run mode.
void CForm::Reactivate()
{
    for (auto& site : m_sites) {
        site->InPlaceDeactivate();
        site->InPlaceActivate(m_hWnd);
    }
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

void CHost::SetUserMode(BOOL bUserMode)
{
    m_bUserMode = bUserMode;
    for (auto& form : m_forms) form->Reactivate();
    Pump();
}

RECT CHost::FormsArea() const
{
    if (m_forms.empty()) return RECT{0, 0, 0, 0};
    RECT all = m_forms.front()->Rect();
    for (auto& form : m_forms) {
        const RECT& rc = form->Rect();
        all = RECT{std::min(all.left, rc.left), std::min(all.top, rc.top), std::max(all.right, rc.right),
                   std::max(all.bottom, rc.bottom)};
    }
    return all;
}

CControlSite* CForm::Activate(CControlSite* site, HRESULT hr, HRESULT* phr)
{
    if (SUCCEEDED(hr)) hr = site->InPlaceActivate(m_hWnd);
    if (phr) *phr = hr;
    return site;
}

CControlSite* CForm::Create(const CString& progID, const RECT& rc, HRESULT* phr)
{
    CControlSite* site = Make(progID, rc, phr);
    return site ? Activate(site, site->InitNew(), phr) : nullptr;
}

CControlSite* CForm::Load(const CString& progID, const CString& bagText, const RECT& rc, HRESULT* phr)
{
    CControlSite* site = Make(progID, rc, phr);
    return site ? Activate(site, site->Load(bagText), phr) : nullptr;
}
