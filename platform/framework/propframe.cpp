// OleCreatePropertyFrame: the modal tabbed frame over a set of objects, with a tab per page made
// from its class identifier, the pages' Apply on OK and Apply, and the property sheet messages.
#include <algorithm>
#include <memory>
#include <vector>
#include "base/colors.h"
#include "com/objbase.h"
#include "com/proppage.h"
#include "dc.h"
#include "gdi/wingdi.h"
#include "stockpages.h"
#include "user/winuser.h"

namespace {

constexpr const char16_t* kTabsClass = u"QuillonPropFrameTabs";
constexpr int kTabsId = 0x3020;

struct Frame;

// The frame's side of each page: it hears that the page has become dirty.
class CPageSite final : public IPropertyPageSite {
public:
    explicit CPageSite(Frame* f) : m_pFrame(f) {}
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IPropertyPageSite) { *ppv = this; return S_OK; }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return 2; }   // lives inside the frame
    ULONG Release() override { return 1; }
    HRESULT OnStatusChange(DWORD dwFlags) override;
    HRESULT GetLocaleID(LCID* pLocaleID) override;
    HRESULT GetPageContainer(IUnknown**) override { return E_NOTIMPL; }
    HRESULT TranslateAccelerator(MSG*) override { return S_FALSE; }
private:
    Frame* m_pFrame;
};

struct Page {
    IPropertyPage* p = nullptr;
    std::u16string strTitle;
    SIZE size{0, 0};
    HWND hwnd = nullptr;      // while active
};

struct Frame {
    std::vector<Page> pages;
    std::vector<IUnknown*> objects;
    LCID lcid = 0;
    int nCur = -1;
    RECT rcPage{};
    HWND hDlg = nullptr;
    CPageSite site{this};
};

HRESULT CPageSite::OnStatusChange(DWORD dwFlags)
{
    if ((dwFlags & PROPPAGESTATUS_DIRTY) && m_pFrame->hDlg) ::EnableWindow(::GetDlgItem(m_pFrame->hDlg, ID_APPLY_NOW), TRUE);
    return S_OK;
}

HRESULT CPageSite::GetLocaleID(LCID* pLocaleID)
{
    *pLocaleID = m_pFrame->lcid;
    return S_OK;
}

Frame* FrameOf(HWND hDlg) { return reinterpret_cast<Frame*>(::GetWindowLongPtr(hDlg, GWLP_USERDATA)); }

// The window a page has just made: the child of the frame that holds controls and no page had.
HWND FindNewPageWindow(Frame* f)
{
    for (HWND h = ::GetWindow(f->hDlg, GW_CHILD); h; h = ::GetWindow(h, GW_HWNDNEXT)) {
        if (!(::GetWindowLongPtr(h, GWL_EXSTYLE) & WS_EX_CONTROLPARENT)) continue;
        bool known = false;
        for (const Page& pg : f->pages) known = known || pg.hwnd == h;
        if (!known) return h;
    }
    return nullptr;
}

// A page is made the first time its tab is chosen, and only hidden when another is chosen, so that
// what the user changed on it stays until Apply.
void SelectPage(Frame* f, int i)
{
    if (i < 0 || i >= (int)f->pages.size() || i == f->nCur) return;
    if (f->nCur >= 0) f->pages[f->nCur].p->Show(SW_HIDE);
    f->nCur = i;
    Page& pg = f->pages[i];
    if (!pg.hwnd) {
        pg.p->Activate(f->hDlg, &f->rcPage, TRUE);
        pg.hwnd = FindNewPageWindow(f);
        if (pg.hwnd) ::SetWindowText(pg.hwnd, pg.strTitle.c_str());
    }
    // The page lies over the tab strip's body, and its fields come first in the tab order.
    if (pg.hwnd) ::SetWindowPos(pg.hwnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    pg.p->Show(SW_SHOW);
    if (HWND first = pg.hwnd ? ::GetNextDlgTabItem(pg.hwnd, nullptr, FALSE) : nullptr) ::SetFocus(first);
    ::InvalidateRect(::GetDlgItem(f->hDlg, kTabsId), nullptr, TRUE);
}

// Every dirty page applies, in page order; a page that refuses is shown and stops the rest.
bool ApplyAll(Frame* f)
{
    for (size_t i = 0; i < f->pages.size(); ++i) {
        if (f->pages[i].p->IsPageDirty() != S_OK) continue;
        if (FAILED(f->pages[i].p->Apply())) {
            SelectPage(f, (int)i);
            return false;
        }
    }
    ::EnableWindow(::GetDlgItem(f->hDlg, ID_APPLY_NOW), FALSE);
    return true;
}

// The tab strip: a row of tabs over the body that the page lies in.
HFONT FrameFont(HWND hTabs) { return reinterpret_cast<HFONT>(::SendMessage(::GetParent(hTabs), WM_GETFONT, 0, 0)); }

int TabHeight(HWND hTabs)
{
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    CSelectObject font(&dc, FrameFont(hTabs));
    TEXTMETRICW tm{};
    ::GetTextMetrics(dc, &tm);
    return tm.tmHeight + 8;
}

// The tabs' rectangles, measured in the frame's font, which the DC has selected.
std::vector<RECT> TabRects(HWND hTabs, HDC hdc, Frame* f)
{
    std::vector<RECT> out;
    int x = 2, h = TabHeight(hTabs);
    for (const Page& pg : f->pages) {
        SIZE sz{0, 0};
        ::GetTextExtentPoint32(hdc, pg.strTitle.c_str(), (int)pg.strTitle.size(), &sz);
        out.push_back(RECT{x, 2, x + sz.cx + 12, h});
        x += sz.cx + 12;
    }
    return out;
}

void PaintTabs(HWND hTabs)
{
    PAINTSTRUCT ps;
    CDC dc;
    dc.Attach(::BeginPaint(hTabs, &ps));
    HDC hdc = dc;
    Frame* f = FrameOf(::GetParent(hTabs));
    if (hdc && f) {
        RECT rc{};
        ::GetClientRect(hTabs, &rc);
        ::FillRect(hdc, &rc, ::GetSysColorBrush(COLOR_BTNFACE));
        CSelectObject font(&dc, FrameFont(hTabs));
        int h = TabHeight(hTabs);
        RECT body{0, h, rc.right, rc.bottom};
        ::DrawEdge(hdc, &body, EDGE_RAISED, BF_RECT);
        std::vector<RECT> tabs = TabRects(hTabs, hdc, f);
        ::SetBkMode(hdc, TRANSPARENT);
        for (size_t i = 0; i < tabs.size(); ++i) {
            RECT t = tabs[i];
            bool sel = (int)i == f->nCur;
            if (sel) ::InflateRect(&t, 2, 2);   // the chosen tab stands out and joins the body
            RECT face{t.left, t.top, t.right, t.bottom + (sel ? 1 : 0)};
            ::FillRect(hdc, &face, ::GetSysColorBrush(COLOR_BTNFACE));
            RECT left{t.left, t.top + 1, t.left + 1, t.bottom}, top{t.left + 1, t.top, t.right - 1, t.top + 1};
            RECT right{t.right - 1, t.top + 1, t.right, t.bottom}, shade{t.right - 2, t.top + 1, t.right - 1, t.bottom};
            ::FillRect(hdc, &left, ::GetSysColorBrush(COLOR_3DHIGHLIGHT));
            ::FillRect(hdc, &top, ::GetSysColorBrush(COLOR_3DHIGHLIGHT));
            ::FillRect(hdc, &right, ::GetSysColorBrush(COLOR_3DDKSHADOW));
            ::FillRect(hdc, &shade, ::GetSysColorBrush(COLOR_3DSHADOW));
            ::SetTextColor(hdc, ::GetSysColor(COLOR_BTNTEXT));
            const std::u16string& s = f->pages[i].strTitle;
            ::DrawText(hdc, s.c_str(), (int)s.size(), &t, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        }
    }
    ::EndPaint(hTabs, &ps);
    dc.Detach();
}

LRESULT CALLBACK TabsProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case WM_PAINT: PaintTabs(h); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_LBUTTONDOWN: {
        Frame* f = FrameOf(::GetParent(h));
        if (!f) return 0;
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        std::vector<RECT> tabs;
        {
            CSelectObject font(&dc, FrameFont(h));
            tabs = TabRects(h, dc, f);
        }
        POINT pt{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
        for (size_t i = 0; i < tabs.size(); ++i)
            if (::PtInRect(&tabs[i], pt)) ::SendMessage(::GetParent(h), PSM_SETCURSEL, i, 0);
        return 0;
    }
    default: return ::DefWindowProc(h, msg, wp, lp);
    }
}

void RegisterTabsClass()
{
    static bool done = false;
    if (done) return;
    done = true;
    WNDCLASS wc{};
    wc.lpfnWndProc = &TabsProc;
    wc.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = kTabsClass;
    ::RegisterClass(&wc);
}

// The pages' largest size sets the body; the buttons go under it on the right.
void Layout(HWND hDlg, Frame* f)
{
    RECT du{7, 7, 50, 14};
    ::MapDialogRect(hDlg, &du);
    int margin = du.left, bw = du.right, bh = du.bottom, gap = MulDiv(4, du.left, 7);
    SIZE page{0, 0};
    for (const Page& pg : f->pages) page = SIZE{std::max(page.cx, pg.size.cx), std::max(page.cy, pg.size.cy)};
    HWND tabs = ::GetDlgItem(hDlg, kTabsId);
    int th = TabHeight(tabs);
    POINT o = ::GetDialogClientOffset(hDlg);
    RECT rcTabs{o.x + margin, o.y + margin, o.x + margin + page.cx + 8, o.y + margin + th + page.cy + 8};
    ::MoveWindow(tabs, rcTabs.left, rcTabs.top, rcTabs.right - rcTabs.left, rcTabs.bottom - rcTabs.top, FALSE);
    f->rcPage = RECT{rcTabs.left + 4, rcTabs.top + th + 4, rcTabs.left + 4 + page.cx, rcTabs.top + th + 4 + page.cy};
    int y = rcTabs.bottom + margin, x = rcTabs.right;
    for (int id : {ID_APPLY_NOW, IDCANCEL, IDOK}) {
        x -= bw;
        ::MoveWindow(::GetDlgItem(hDlg, id), x, y, bw, bh, FALSE);
        x -= gap;
    }
    RECT rc{};
    ::GetWindowRect(hDlg, &rc);
    ::SetWindowPos(hDlg, nullptr, 0, 0, rcTabs.right + margin + DLG_FRAME_CX, y + bh + margin + DLG_FRAME_CX,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Press(HWND hDlg, Frame* f, int id)
{
    if (id == IDOK) {
        if (ApplyAll(f)) ::EndDialog(hDlg, IDOK);
    } else if (id == IDCANCEL) {
        ::EndDialog(hDlg, IDCANCEL);
    } else if (id == ID_APPLY_NOW && ::IsWindowEnabled(::GetDlgItem(hDlg, ID_APPLY_NOW))) {
        ApplyAll(f);
    }
}

INT_PTR FrameProc(HWND hDlg, UINT msg, WPARAM wp, LPARAM lp)
{
    Frame* f = FrameOf(hDlg);
    switch (msg) {
    case WM_INITDIALOG:
        f = reinterpret_cast<Frame*>(lp);
        f->hDlg = hDlg;
        ::SetWindowLongPtr(hDlg, GWLP_USERDATA, lp);
        ::EnableWindow(::GetDlgItem(hDlg, ID_APPLY_NOW), FALSE);
        Layout(hDlg, f);
        SelectPage(f, 0);
        return FALSE;   // the page's first field has the focus
    case WM_COMMAND:
        if (HIWORD(wp) == BN_CLICKED && f) Press(hDlg, f, LOWORD(wp));
        return TRUE;
    case PSM_SETCURSEL: if (f) SelectPage(f, (int)wp); return TRUE;
    case PSM_PRESSBUTTON:
        if (f) Press(hDlg, f, wp == PSBTN_OK ? IDOK : wp == PSBTN_CANCEL ? IDCANCEL : wp == PSBTN_APPLYNOW ? ID_APPLY_NOW : 0);
        return TRUE;
    default: return FALSE;
    }
}

// The frame's own messages answer through the dialog procedure's result; these carry values.
LRESULT AskFrame(HWND hDlg, UINT msg, WPARAM wp)
{
    Frame* f = FrameOf(hDlg);
    if (!f) return 0;
    if (msg == PSM_GETCURRENTPAGEHWND) return f->nCur >= 0 ? (LRESULT)f->pages[f->nCur].hwnd : 0;
    if (msg == PSM_GETPAGECOUNT_STANDIN) return (LRESULT)f->pages.size();
    if (msg == PSM_INDEXTOHWND) return wp < f->pages.size() ? (LRESULT)f->pages[wp].hwnd : 0;
    return 0;
}

const DLGITEMTEMPLATE kFrameItems[] = {
    {0, 0, 0, 0, 10, 10, kTabsId, kTabsClass, u""},
    {WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 0, 0, 50, 14, IDOK, WC_BUTTON, u"OK"},
    {WS_TABSTOP | BS_PUSHBUTTON, 0, 0, 0, 50, 14, IDCANCEL, WC_BUTTON, u"Cancel"},
    {WS_TABSTOP | BS_PUSHBUTTON, 0, 0, 0, 50, 14, ID_APPLY_NOW, WC_BUTTON, u"Apply"},
};

// Stand-in: the frame's window procedure answers the value-carrying PSM_ messages before the dialog
// procedure, which can only say whether it took a message.
WNDPROC g_pfnDialog = nullptr;
LRESULT CALLBACK FrameWndProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    if (msg == PSM_GETCURRENTPAGEHWND || msg == PSM_INDEXTOHWND || msg == PSM_GETPAGECOUNT_STANDIN) return AskFrame(h, msg, wp);
    return ::CallWindowProc(g_pfnDialog, h, msg, wp, lp);
}

} // namespace

HRESULT OleCreatePropertyFrame(HWND hwndOwner, UINT x, UINT y, LPCOLESTR lpszCaption, ULONG cObjects, IUnknown** ppUnk,
                               ULONG cPages, const CLSID* pPageClsID, LCID lcid, DWORD, void*)
{
    RegisterTabsClass();
    RegisterStockPropertyPages();
    auto f = std::make_unique<Frame>();
    f->lcid = lcid;
    f->objects.assign(ppUnk, ppUnk + cObjects);
    for (ULONG i = 0; i < cPages; ++i) {
        Page pg;
        if (FAILED(CoCreateInstance(pPageClsID[i], nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage, reinterpret_cast<void**>(&pg.p))))
            continue;   // a page that cannot be made is left out
        PROPPAGEINFO info{sizeof(PROPPAGEINFO), nullptr, {0, 0}, nullptr, nullptr, 0};
        pg.p->GetPageInfo(&info);
        if (info.pszTitle) pg.strTitle = info.pszTitle;
        CoTaskMemFree(info.pszTitle);
        pg.size = info.size;
        pg.p->SetPageSite(&f->site);
        pg.p->SetObjects(cObjects, ppUnk);
        f->pages.push_back(pg);
    }
    std::u16string caption = std::u16string(lpszCaption ? lpszCaption : u"") + u" Properties";
    DLGTEMPLATE t{WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT, 0, 0, 0, 100, 60,
                  caption.c_str(), 8, u"MS Shell Dlg", kFrameItems, 4};
    HWND hDlg = ::CreateDialogIndirectParam(nullptr, &t, hwndOwner, &FrameProc, reinterpret_cast<LPARAM>(f.get()));
    HRESULT hr = E_OUTOFMEMORY;
    if (hDlg) {
        // x and y are pixels from the owner's origin.
        RECT owner{0, 0, 0, 0};
        if (hwndOwner) ::GetWindowRect(hwndOwner, &owner);
        ::SetWindowPos(hDlg, nullptr, owner.left + static_cast<int>(x), owner.top + static_cast<int>(y), 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        g_pfnDialog = reinterpret_cast<WNDPROC>(::SetWindowLongPtr(hDlg, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FrameWndProc)));
        ::RunModalDialog(hDlg, hwndOwner);
        for (Page& pg : f->pages)
            if (pg.hwnd) pg.p->Deactivate();
        ::DestroyWindow(hDlg);
        hr = S_OK;
    }
    for (Page& pg : f->pages) {
        pg.p->SetObjects(0, nullptr);
        pg.p->SetPageSite(nullptr);
        pg.p->Release();
    }
    return hr;
}
