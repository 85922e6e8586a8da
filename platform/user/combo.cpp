// The COMBOBOX window class of the CBS_DROPDOWN kind: an edit field with a drop button, lines kept
// in order or sorted (CBS_SORT), and a drop-down list in a popup window of its own (ComboLBox) that
// follows the keys, the mouse and the wheel. The CB_ messages and CBN_ notifications of the real class.
#include <algorithm>
#include <cassert>
#include <memory>
#include "base/colors.h"
#include "combo_p.h"
#include "drawapi.h"
#include "gdi/wingdi.h"
#include "inputapi.h"
#include "msgapi.h"
#include "sysapi.h"
#include "wndapi.h"

namespace user {

ComboState* ComboOf(HWND h)
{
    Wnd* w = FromHandle(h);
    return w ? dynamic_cast<ComboState*>(w->pData.get()) : nullptr;
}

int CompareLines(const std::u16string& a, const std::u16string& b)
{
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        char16_t x = a[i] >= u'a' && a[i] <= u'z' ? a[i] - 32 : a[i];
        char16_t y = b[i] >= u'a' && b[i] <= u'z' ? b[i] - 32 : b[i];
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool StartsWithNoCase(const std::u16string& line, const std::u16string& prefix)
{
    return line.size() >= prefix.size() && CompareLines(line.substr(0, prefix.size()), prefix) == 0;
}

int FindLine(const ComboState* c, int nAfter, const std::u16string& s, bool bExact)
{
    int n = (int)c->lines.size();
    if (n == 0) return CB_ERR;
    int start = nAfter < 0 || nAfter >= n ? 0 : nAfter + 1;
    for (int k = 0; k < n; ++k) {
        int i = (start + k) % n;
        if (bExact ? CompareLines(c->lines[i], s) == 0 : StartsWithNoCase(c->lines[i], s)) return i;
    }
    return CB_ERR;
}

void ComboNotify(HWND hCombo, WORD code)
{
    if (HWND parent = GetParent(hCombo)) SendMessage(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(hCombo), code), (LPARAM)hCombo);
}

int ComboItemHeight(HWND hCombo)
{
    HDC hdc = CreateCompatibleDC(nullptr);
    TEXTMETRICW tm{};
    {
        CScopedSelect font(hdc, FontOf(hCombo));
        GetTextMetrics(hdc, &tm);
    }
    DeleteDC(hdc);
    return tm.tmHeight;
}

std::u16string EditText(const ComboState* c)
{
    int n = GetWindowTextLength(c->hwndEdit);
    std::u16string s(n + 1, u'\0');
    GetWindowText(c->hwndEdit, s.data(), n + 1);
    s.resize(n);
    return s;
}

// The current line, shown in the edit with all its text selected.
void ShowCurrent(ComboState* c)
{
    std::u16string text = c->nCur >= 0 ? c->lines[c->nCur] : u"";
    c->bSettingText = true;
    SetWindowText(c->hwndEdit, text.c_str());
    c->bSettingText = false;
    SendMessage(c->hwndEdit, EM_SETSEL, 0, -1);
}

// The user moved the selection: the edit shows the line and the parent hears CBN_SELCHANGE.
void PickLine(HWND hCombo, int i)
{
    ComboState* c = ComboOf(hCombo);
    if (!c || c->lines.empty()) return;
    i = std::clamp(i, 0, (int)c->lines.size() - 1);
    if (i == c->nCur && c->bTypedSinceSelect == false) return;
    c->nCur = i;
    c->bTypedSinceSelect = false;
    ShowCurrent(c);
    if (c->hwndList) ComboListScrollTo(hCombo, i);
    ComboNotify(hCombo, CBN_SELCHANGE);
}

namespace {

constexpr int kEditId = 1001;   // the id of a combo box's edit, as on the real platform

void Layout(HWND h, ComboState* c)
{
    RECT rc{};
    GetClientRect(h, &rc);
    int button = GetSystemMetrics(SM_CXVSCROLL);
    int item = ComboItemHeight(h);
    SetWindowPos(c->hwndEdit, nullptr, 3, 3, std::max<int>(0, rc.right - 3 - button - 2 - 3), item,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT ButtonRect(HWND h)
{
    RECT rc{};
    GetClientRect(h, &rc);
    return RECT{rc.right - 2 - GetSystemMetrics(SM_CXVSCROLL), 2, rc.right - 2, rc.bottom - 2};
}

void DrawDropGlyph(HDC hdc, const RECT& rc, bool bEnabled)
{
    int cx = (rc.left + rc.right) / 2, cy = (rc.top + rc.bottom) / 2 - 1;
    HBRUSH hbr = GetSysColorBrush(bEnabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    for (int row = 0; row < 4; ++row) {
        RECT line{cx - 3 + row, cy + row, cx + 4 - row, cy + row + 1};
        FillRect(hdc, &line, hbr);
    }
}

void OnPaint(HWND h, ComboState* c)
{
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(h, &ps);
    if (hdc) {
        RECT rc{};
        GetClientRect(h, &rc);
        DrawSunkenBox(hdc, rc);
        RECT inside = rc;
        InflateRect(&inside, -2, -2);
        FillSys(hdc, inside, IsWindowEnabled(h) ? COLOR_WINDOW : COLOR_BTNFACE);
        RECT button = ButtonRect(h);
        FillSys(hdc, button, COLOR_BTNFACE);
        RECT edge = button;
        if (c->bButtonDown) FrameRect(hdc, &edge, GetSysColorBrush(COLOR_3DSHADOW));
        else DrawEdge(hdc, &edge, EDGE_RAISED, BF_RECT);
        if (c->bButtonDown) OffsetRect(&button, 1, 1);
        DrawDropGlyph(hdc, button, IsWindowEnabled(h));
    }
    EndPaint(h, &ps);
}

LRESULT OnAddString(HWND h, ComboState* c, LPCTSTR s, int at)
{
    std::u16string line = s ? s : u"";
    int n = (int)c->lines.size();
    if (at < 0 || at > n) at = n;
    if (GetWindowLongPtr(h, GWL_STYLE) & CBS_SORT) {
        at = (int)(std::upper_bound(c->lines.begin(), c->lines.end(), line,
                                    [](const std::u16string& a, const std::u16string& b) { return CompareLines(a, b) < 0; }) -
                   c->lines.begin());
    }
    c->lines.insert(c->lines.begin() + at, line);
    if (c->nCur >= at) ++c->nCur;
    if (c->hwndList) InvalidateRect(c->hwndList, nullptr, TRUE);
    return at;
}

LRESULT OnGetLine(ComboState* c, WPARAM i, LPARAM buf)
{
    if (i >= c->lines.size()) return CB_ERR;
    const std::u16string& s = c->lines[i];
    if (auto* p = reinterpret_cast<WCHAR*>(buf)) {
        std::copy(s.begin(), s.end(), p);
        p[s.size()] = 0;
    }
    return (LRESULT)s.size();
}

LRESULT OnSetCurSel(ComboState* c, WPARAM wp)
{
    int i = (int)wp;
    bool valid = i >= 0 && i < (int)c->lines.size();
    c->nCur = valid ? i : -1;
    c->bTypedSinceSelect = false;
    ShowCurrent(c);
    if (c->hwndList) InvalidateRect(c->hwndList, nullptr, TRUE);
    return valid ? i : CB_ERR;
}

// The edit's notifications become the combo's; typing takes the selection away, or, with the list
// open, moves it to the first line the text begins.
void OnEditCommand(HWND h, ComboState* c, WORD code)
{
    if (c->bSettingText) return;
    switch (code) {
    case EN_UPDATE: ComboNotify(h, CBN_EDITUPDATE); break;
    case EN_CHANGE: {
        std::u16string text = EditText(c);
        c->nCur = c->bDropped && !text.empty() ? FindLine(c, -1, text, false) : -1;
        c->bTypedSinceSelect = true;
        if (c->hwndList) {
            if (c->nCur >= 0) ComboListScrollTo(h, c->nCur);
            InvalidateRect(c->hwndList, nullptr, TRUE);
        }
        ComboNotify(h, CBN_EDITCHANGE);
        break;
    }
    case EN_SETFOCUS: ComboNotify(h, CBN_SETFOCUS); break;
    case EN_KILLFOCUS:
        ComboShowList(h, false, false);
        ComboNotify(h, CBN_KILLFOCUS);
        break;
    default: break;
    }
}

LRESULT OnComboMessage(HWND h, ComboState* c, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case CB_ADDSTRING: return OnAddString(h, c, reinterpret_cast<LPCTSTR>(lp), -1);
    case CB_INSERTSTRING: return OnAddString(h, c, reinterpret_cast<LPCTSTR>(lp), (int)wp);
    case CB_DELETESTRING:
        if (wp >= c->lines.size()) return CB_ERR;
        c->lines.erase(c->lines.begin() + wp);
        if (c->nCur == (int)wp) c->nCur = -1;
        else if (c->nCur > (int)wp) --c->nCur;
        return (LRESULT)c->lines.size();
    case CB_RESETCONTENT: c->lines.clear(); c->nCur = -1; c->nTop = 0; return 0;
    case CB_GETCOUNT: return (LRESULT)c->lines.size();
    case CB_GETCURSEL: return c->nCur;
    case CB_SETCURSEL: return OnSetCurSel(c, wp);
    case CB_GETLBTEXT: return OnGetLine(c, wp, lp);
    case CB_GETLBTEXTLEN: return wp < c->lines.size() ? (LRESULT)c->lines[wp].size() : CB_ERR;
    case CB_FINDSTRING: case CB_FINDSTRINGEXACT:
        return FindLine(c, (int)wp, reinterpret_cast<LPCTSTR>(lp) ? reinterpret_cast<LPCTSTR>(lp) : u"", msg == CB_FINDSTRINGEXACT);
    case CB_SELECTSTRING: {
        int i = FindLine(c, (int)wp, reinterpret_cast<LPCTSTR>(lp) ? reinterpret_cast<LPCTSTR>(lp) : u"", false);
        return i == CB_ERR ? CB_ERR : OnSetCurSel(c, (WPARAM)i);
    }
    case CB_SHOWDROPDOWN: ComboShowList(h, wp != 0, false); return TRUE;
    case CB_GETDROPPEDSTATE: return c->bDropped;
    case CB_GETITEMHEIGHT: return ComboItemHeight(h);
    case CB_LIMITTEXT: return SendMessage(c->hwndEdit, EM_LIMITTEXT, wp, 0);
    case CB_GETEDITSEL: return SendMessage(c->hwndEdit, EM_GETSEL, wp, lp);
    case CB_SETEDITSEL: return SendMessage(c->hwndEdit, EM_SETSEL, (WPARAM)(short)LOWORD(lp), (LPARAM)(short)HIWORD(lp));
    default: return DefWindowProc(h, msg, wp, lp);
    }
}

LRESULT OnMessage(HWND h, ComboState* c, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case WM_CREATE: {
        auto* cs = reinterpret_cast<const CREATESTRUCT*>(lp);
        [[maybe_unused]] constexpr DWORD kKindBits = CBS_SIMPLE | CBS_DROPDOWN;   // the low two bits name the kind
        assert((cs->style & kKindBits) == CBS_DROPDOWN && "ComboBox: only the CBS_DROPDOWN kind is built");
        c->nDropHeight = cs->cy;
        c->hwndEdit = CreateWindowEx(0, WC_EDIT, u"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 3, 3, 10, 10, h,
                                     (HMENU)(intptr_t)kEditId, nullptr, nullptr);
        SetWindowLongPtr(c->hwndEdit, GWLP_WNDPROC, (LONG_PTR)&ComboEditProc);
        return 0;
    }
    case WM_SETFONT: {
        c->hFont = (HFONT)wp;
        SendMessage(c->hwndEdit, WM_SETFONT, wp, lp);
        RECT rc{};
        GetWindowRect(h, &rc);
        // The field is as high as a line and its frame; the height given at creation is that of the open list.
        SetWindowPos(h, nullptr, 0, 0, rc.right - rc.left, ComboItemHeight(h) + 8, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    case WM_GETFONT: return (LRESULT)c->hFont;
    case WM_SIZE: Layout(h, c); return 0;
    case WM_PAINT: OnPaint(h, c); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_SETTEXT: {
        c->bSettingText = true;
        LRESULT r = SendMessage(c->hwndEdit, WM_SETTEXT, wp, lp);
        if ((c = ComboOf(h))) c->bSettingText = false;
        return r;
    }
    case WM_GETTEXT: return SendMessage(c->hwndEdit, WM_GETTEXT, wp, lp);
    case WM_GETTEXTLENGTH: return SendMessage(c->hwndEdit, WM_GETTEXTLENGTH, wp, lp);
    case WM_SETFOCUS:
        SetFocus(c->hwndEdit);
        SendMessage(c->hwndEdit, EM_SETSEL, 0, -1);
        return 0;
    case WM_GETDLGCODE: return SendMessage(c->hwndEdit, WM_GETDLGCODE, wp, lp);
    case WM_ENABLE: EnableWindow(c->hwndEdit, (BOOL)wp); InvalidateRect(h, nullptr, TRUE); return 0;
    case WM_LBUTTONDOWN: case WM_LBUTTONDBLCLK:
        if (GetFocus() != c->hwndEdit) SetFocus(c->hwndEdit);
        if ((c = ComboOf(h))) ComboShowList(h, !c->bDropped, true);
        return 0;
    case WM_MOUSEWHEEL:
        if (c->bDropped) ComboListScroll(h, -GET_WHEEL_DELTA_WPARAM(wp) / 40);
        else PickLine(h, c->nCur - GET_WHEEL_DELTA_WPARAM(wp) / 120);
        return 0;
    case WM_COMMAND:
        if ((HWND)lp == c->hwndEdit) OnEditCommand(h, c, HIWORD(wp));
        return 0;
    case WM_DESTROY:
        if (c->hwndList) { HWND list = c->hwndList; c->hwndList = nullptr; DestroyWindow(list); }
        return 0;
    default: return OnComboMessage(h, c, msg, wp, lp);
    }
}

} // namespace

// The edit of a combo box: the keys that belong to the list are taken before the edit sees them.
LRESULT CALLBACK ComboEditProc(HWND hEdit, UINT msg, WPARAM wp, LPARAM lp)
{
    HWND hCombo = GetParent(hEdit);
    ComboState* c = hCombo ? ComboOf(hCombo) : nullptr;
    if (!c) return EditWndProc(hEdit, msg, wp, lp);
    if (msg == WM_GETDLGCODE) return EditWndProc(hEdit, msg, wp, lp) | (c->bDropped ? DLGC_WANTALLKEYS : 0);
    if (msg == WM_CHAR && c->bDropped && (wp == u'\r' || wp == 27)) return 0;
    if (msg == WM_SYSKEYDOWN && (wp == VK_DOWN || wp == VK_UP)) { ComboShowList(hCombo, !c->bDropped, true); return 0; }
    if (msg != WM_KEYDOWN) return EditWndProc(hEdit, msg, wp, lp);
    int page = std::max(1, ComboListRows(hCombo) - 1);
    switch (wp) {
    case VK_F4: ComboShowList(hCombo, !c->bDropped, true); return 0;
    case VK_UP: PickLine(hCombo, c->nCur < 0 ? 0 : c->nCur - 1); return 0;
    case VK_DOWN: PickLine(hCombo, c->nCur < 0 ? 0 : c->nCur + 1); return 0;
    case VK_PRIOR: if (c->bDropped) { PickLine(hCombo, c->nCur - page); return 0; } break;
    case VK_NEXT: if (c->bDropped) { PickLine(hCombo, c->nCur + page); return 0; } break;
    case VK_RETURN: case VK_ESCAPE:
        if (c->bDropped) {
            if (wp == VK_RETURN && c->nCur >= 0 && c->bTypedSinceSelect) PickLine(hCombo, c->nCur);
            ComboShowList(hCombo, false, wp == VK_RETURN);
            return 0;
        }
        break;
    default: break;
    }
    return EditWndProc(hEdit, msg, wp, lp);
}

LRESULT CALLBACK ComboWndProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    if (msg == WM_NCCREATE) FromHandle(h)->pData = std::make_unique<ComboState>();
    ComboState* c = ComboOf(h);
    return c ? OnMessage(h, c, msg, wp, lp) : DefWindowProc(h, msg, wp, lp);
}

} // namespace user
