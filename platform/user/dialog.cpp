// Dialog windows: creation from a template in dialog units, the base units of the dialog font,
// DefDlgProc with its frame and default button, EndDialog, and the item helpers.
#include <algorithm>
#include <cassert>
#include <cstdio>
#include <string>
#include "base/colors.h"
#include "dlg_p.h"
#include "drawapi.h"
#include "gdi/wingdi.h"
#include "inputapi.h"
#include "msgapi.h"
#include "wndapi.h"

namespace user {

DialogState* DialogOf(HWND hwnd)
{
    Wnd* w = FromHandle(hwnd);
    return w ? dynamic_cast<DialogState*>(w->pData.get()) : nullptr;
}

void FillSys(HDC hdc, const RECT& rc, int nColor) { FillRect(hdc, &rc, GetSysColorBrush(nColor)); }

void DrawSunkenBox(HDC hdc, const RECT& rc)
{
    RECT r = rc;
    DrawEdge(hdc, &r, EDGE_SUNKEN, BF_RECT);
}

HFONT FontOf(HWND hwnd)
{
    auto hFont = (HFONT)SendMessage(hwnd, WM_GETFONT, 0, 0);
    return hFont ? hFont : (HFONT)GetStockObject(DEFAULT_GUI_FONT);
}

} // namespace user

using namespace user;

namespace {

constexpr char16_t kLetters[] = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// What CreateDialogIndirectParam hands to the window at WM_NCCREATE.
struct DialogCreate {
    DLGPROC proc;
    LPARAM lInit;
};

void PaintFrame(HWND hDlg, HDC hdc)
{
    RECT rc{};
    GetClientRect(hDlg, &rc);
    // The background brush is asked of the dialog itself, so that its procedure may change it.
    auto hbr = (HBRUSH)SendMessage(hDlg, WM_CTLCOLORDLG, (WPARAM)hdc, (LPARAM)hDlg);
    FillRect(hdc, &rc, hbr ? hbr : GetSysColorBrush(COLOR_BTNFACE));
    if ((GetWindowLongPtr(hDlg, GWL_STYLE) & WS_CAPTION) != WS_CAPTION) return;
    RECT edge = rc;
    DrawEdge(hdc, &edge, EDGE_RAISED, BF_RECT);
    bool active = GetActiveWindow() == hDlg;
    RECT bar{DLG_FRAME_CX, DLG_FRAME_CX, rc.right - DLG_FRAME_CX, DLG_CAPTION_CY};
    FillSys(hdc, bar, active ? COLOR_ACTIVECAPTION : COLOR_INACTIVECAPTION);
    LOGFONTW lf{};
    GetObject(FontOf(hDlg), sizeof lf, &lf);
    lf.lfWeight = FW_BOLD;
    HFONT hBold = CreateFontIndirect(&lf);
    {
        CScopedSelect font(hdc, hBold);
        SetBkMode(hdc, TRANSPARENT);
        SetTextColor(hdc, GetSysColor(active ? COLOR_CAPTIONTEXT : COLOR_INACTIVECAPTIONTEXT));
        RECT text = bar;
        text.left += 4;
        std::u16string title = FromHandle(hDlg)->strText;
        DrawText(hdc, title.c_str(), (int)title.size(), &text, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
    DeleteObject(hBold);
}

// Stand-in for the non-client edge of a field: the dialog draws it around each child that asks
// for WS_EX_CLIENTEDGE, in the two pixels the child leaves free.
void PaintChildEdges(HWND hDlg, HDC hdc)
{
    for (HWND h = GetWindow(hDlg, GW_CHILD); h; h = GetWindow(h, GW_HWNDNEXT)) {
        if (!IsWindowVisible(h) || !(GetWindowLongPtr(h, GWL_EXSTYLE) & WS_EX_CLIENTEDGE)) continue;
        RECT rc{};
        GetWindowRect(h, &rc);
        MapWindowPoints(nullptr, hDlg, reinterpret_cast<POINT*>(&rc), 2);
        InflateRect(&rc, 2, 2);
        DrawSunkenBox(hdc, rc);
    }
}

void OnPaint(HWND hDlg)
{
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(hDlg, &ps);
    if (hdc) {
        PaintFrame(hDlg, hdc);
        PaintChildEdges(hDlg, hdc);
    }
    EndPaint(hDlg, &ps);
}

HWND FindDefaultButton(HWND hDlg)
{
    for (HWND h = GetWindow(hDlg, GW_CHILD); h; h = GetWindow(h, GW_HWNDNEXT))
        if (SendMessage(h, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) return h;
    return nullptr;
}

LRESULT OnGetDefId(HWND hDlg)
{
    HWND h = FindDefaultButton(hDlg);
    return h ? MAKELRESULT(GetDlgCtrlID(h), DC_HASDEFID) : 0;
}

void OnSetDefId(HWND hDlg, int id)
{
    for (HWND h = GetWindow(hDlg, GW_CHILD); h; h = GetWindow(h, GW_HWNDNEXT)) {
        LRESULT code = SendMessage(h, WM_GETDLGCODE, 0, 0);
        if (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) SetButtonDefault(h, GetDlgCtrlID(h) == id);
    }
}

// WM_NEXTDLGCTL: the focus moves to the next or previous tab stop, or to a given control; an edit
// that gets it this way has all its text selected.
void OnNextDlgCtl(HWND hDlg, WPARAM wParam, LPARAM lParam)
{
    HWND target = LOWORD(lParam) ? (HWND)wParam : GetNextDlgTabItem(hDlg, GetFocus(), wParam != 0);
    if (!target) return;
    SetFocus(target);
    if (SendMessage(target, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) SendMessage(target, EM_SETSEL, 0, -1);
}

void OnSetFocus(HWND hDlg, DialogState* d)
{
    HWND target = d->hwndFocus && IsWindow(d->hwndFocus) && IsChild(hDlg, d->hwndFocus) ? d->hwndFocus
                                                                                       : GetNextDlgTabItem(hDlg, nullptr, FALSE);
    if (target) SetFocus(target);
}

// A message the dialog procedure did not take.
LRESULT DefaultDialogMessage(HWND hDlg, DialogState* d, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_PAINT: OnPaint(hDlg); return 0;
    case WM_ERASEBKGND: return 1;   // the paint fills the whole window
    case WM_GETFONT: return (LRESULT)d->hFont;
    case WM_SETFONT: d->hFont = (HFONT)wParam; return 0;
    case DM_GETDEFID: return OnGetDefId(hDlg);
    case DM_SETDEFID: OnSetDefId(hDlg, (int)wParam); return TRUE;
    case WM_NEXTDLGCTL: OnNextDlgCtl(hDlg, wParam, lParam); return 0;
    case WM_SETFOCUS: OnSetFocus(hDlg, d); return 0;
    case WM_ACTIVATE:
        InvalidateRect(hDlg, nullptr, TRUE);   // the caption changes colour
        if (LOWORD(wParam) == WA_INACTIVE) {
            HWND focus = GetFocus();
            if (focus && IsChild(hDlg, focus)) d->hwndFocus = focus;
            return 0;
        }
        return DefWindowProc(hDlg, msg, wParam, lParam);
    case WM_CLOSE:
        // Closing a dialog is its Cancel.
        SendMessage(hDlg, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), (LPARAM)GetDlgItem(hDlg, IDCANCEL));
        return 0;
    case WM_NCDESTROY:
        if (d->bOwnFont) DeleteObject(d->hFont);
        d->hFont = nullptr;
        return DefWindowProc(hDlg, msg, wParam, lParam);
    default: return DefWindowProc(hDlg, msg, wParam, lParam);
    }
}

LRESULT CALLBACK DialogClassProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_NCCREATE) {
        auto* cs = reinterpret_cast<const CREATESTRUCT*>(lParam);
        auto state = std::make_unique<DialogState>();
        if (auto* dc = static_cast<const DialogCreate*>(cs->lpCreateParams)) {
            state->proc = dc->proc;
            state->lInit = dc->lInit;
        }
        FromHandle(hDlg)->pData = std::move(state);
    }
    return DefDlgProc(hDlg, msg, wParam, lParam);
}

HFONT MakeDialogFont(LPCDLGTEMPLATE t, bool* pbOwn)
{
    *pbOwn = false;
    if (!(t->style & DS_SETFONT) || !t->lpszFont) return (HFONT)GetStockObject(DEFAULT_GUI_FONT);
    *pbOwn = true;
    return CreateFont(-MulDiv(t->wPointSize, 96, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                      OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, t->lpszFont);
}

// Where a top-level dialog goes: its x, y from the owner's client origin, or centred with
// DS_CENTER on the owner (on the screen without one).
POINT PlaceTopLevel(LPCDLGTEMPLATE t, HWND hOwner, const RECT& px, SIZE size)
{
    RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (hOwner) GetWindowRect(hOwner, &area);
    if (t->style & DS_CENTER)
        return POINT{area.left + (area.right - area.left - size.cx) / 2, area.top + (area.bottom - area.top - size.cy) / 2};
    return POINT{area.left + px.left, area.top + px.top};
}

void CreateItem(HWND hDlg, DialogState* d, const DLGITEMTEMPLATE& it)
{
    RECT rc = DialogRectToPixels(RECT{it.x, it.y, it.x + it.cx, it.y + it.cy}, d->units);
    OffsetRect(&rc, d->ptClient.x, d->ptClient.y);
    // Items are visible children, as the resource compiler makes every item of a script.
    DWORD style = it.style | WS_CHILD | WS_VISIBLE, exStyle = it.dwExtendedStyle;
    // A bordered edit gets the sunken edge of the 3-D look, drawn by the dialog around it.
    if (std::u16string(it.lpszClass) == WC_EDIT && (style & WS_BORDER)) {
        style &= ~WS_BORDER;
        exStyle |= WS_EX_CLIENTEDGE;
    }
    if (exStyle & WS_EX_CLIENTEDGE) InflateRect(&rc, -2, -2);
    HWND h = CreateWindowEx(exStyle, it.lpszClass, it.lpszText, style, rc.left, rc.top, rc.right - rc.left,
                            rc.bottom - rc.top, hDlg, (HMENU)(intptr_t)it.id, nullptr, nullptr);
    if (!h) {
        std::fprintf(stderr, "USER: dialog item %d cannot be made: its class is not registered\n", it.id);
        assert(!"a dialog item's class is not registered");
        return;
    }
    // Items stand in the z-order as in the template, which makes it the tab order.
    SetWindowPos(h, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SendMessage(h, WM_SETFONT, (WPARAM)d->hFont, FALSE);
    if (std::u16string(it.lpszClass) == WC_EDIT) SendMessage(h, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(1, 1));
}

} // namespace

DLGBASEUNITS DialogBaseUnitsFromFont(int nLettersExtent, int nHeight)
{
    return DLGBASEUNITS{(nLettersExtent + 26) / 52, nHeight};
}

RECT DialogRectToPixels(const RECT& rc, DLGBASEUNITS u)
{
    return RECT{MulDiv(rc.left, u.cx, 4), MulDiv(rc.top, u.cy, 8), MulDiv(rc.right, u.cx, 4), MulDiv(rc.bottom, u.cy, 8)};
}

DLGBASEUNITS DialogBaseUnitsOf(HFONT hFont)
{
    HDC hdc = CreateCompatibleDC(nullptr);
    SIZE sz{0, 0};
    TEXTMETRICW tm{};
    {
        CScopedSelect font(hdc, hFont);
        GetTextExtentPoint32(hdc, kLetters, 52, &sz);
        GetTextMetrics(hdc, &tm);
    }
    DeleteDC(hdc);
    return DialogBaseUnitsFromFont(sz.cx, tm.tmHeight);
}

LONG GetDialogBaseUnits()
{
    DLGBASEUNITS u = DialogBaseUnitsOf((HFONT)GetStockObject(SYSTEM_FONT));
    return MAKELONG(u.cx, u.cy);
}

BOOL MapDialogRect(HWND hDlg, RECT* lpRect)
{
    DialogState* d = DialogOf(hDlg);
    assert(d && "MapDialogRect needs a dialog window");
    if (!d || !lpRect) return FALSE;
    *lpRect = DialogRectToPixels(*lpRect, d->units);
    return TRUE;
}

SIZE GetDialogTemplateSize(LPCDLGTEMPLATE t)
{
    bool bOwnFont = false;
    HFONT hFont = MakeDialogFont(t, &bOwnFont);
    RECT px = DialogRectToPixels(RECT{0, 0, t->cx, t->cy}, DialogBaseUnitsOf(hFont));
    if (bOwnFont) DeleteObject(hFont);
    return SIZE{px.right, px.bottom};
}

POINT GetDialogClientOffset(HWND hDlg)
{
    DialogState* d = DialogOf(hDlg);
    return d ? d->ptClient : POINT{0, 0};
}

HWND CreateDialogIndirectParam(HINSTANCE, LPCDLGTEMPLATE t, HWND hWndParent, DLGPROC lpDialogFunc, LPARAM dwInitParam)
{
    assert(t && "CreateDialogIndirectParam needs a template");
    if (!t) return nullptr;
    RegisterSystemClasses();
    bool bOwnFont = false;
    HFONT hFont = MakeDialogFont(t, &bOwnFont);
    DLGBASEUNITS units = DialogBaseUnitsOf(hFont);
    RECT px = DialogRectToPixels(RECT{t->x, t->y, t->x + t->cx, t->y + t->cy}, units);
    bool caption = (t->style & WS_CAPTION) == WS_CAPTION;
    POINT client = caption ? POINT{DLG_FRAME_CX, DLG_CAPTION_CY} : POINT{0, 0};
    SIZE size{px.right - px.left + (caption ? 2 * DLG_FRAME_CX : 0), px.bottom - px.top + (caption ? DLG_CAPTION_CY + DLG_FRAME_CX : 0)};
    POINT at = (t->style & WS_CHILD) ? POINT{px.left, px.top} : PlaceTopLevel(t, hWndParent, px, size);
    DialogCreate create{lpDialogFunc, dwInitParam};
    DWORD exStyle = t->dwExtendedStyle | ((t->style & DS_CONTROL) ? WS_EX_CONTROLPARENT : 0);
    HWND hDlg = CreateWindowEx(exStyle, WC_DIALOG, t->lpszTitle, t->style & ~WS_VISIBLE, at.x, at.y, size.cx, size.cy,
                               hWndParent, nullptr, nullptr, &create);
    DialogState* d = hDlg ? DialogOf(hDlg) : nullptr;
    if (!d) {
        if (bOwnFont) DeleteObject(hFont);
        return nullptr;
    }
    d->hFont = hFont;
    d->bOwnFont = bOwnFont;
    d->units = units;
    d->ptClient = client;
    for (WORD i = 0; i < t->cdit; ++i) CreateItem(hDlg, d, t->pItems[i]);
    HWND first = GetNextDlgTabItem(hDlg, nullptr, FALSE);
    if (SendMessage(hDlg, WM_INITDIALOG, (WPARAM)first, dwInitParam) && (d = DialogOf(hDlg))) d->hwndFocus = first;
    if (IsWindow(hDlg) && (t->style & WS_VISIBLE)) ShowWindow(hDlg, SW_SHOW);
    return IsWindow(hDlg) ? hDlg : nullptr;
}

LRESULT DefDlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    DialogState* d = DialogOf(hDlg);
    if (!d) return DefWindowProc(hDlg, msg, wParam, lParam);
    if (d->proc) {
        INT_PTR r = d->proc(hDlg, msg, wParam, lParam);
        if (r) {
            switch (msg) {
            case WM_INITDIALOG: case WM_GETDLGCODE: case WM_CTLCOLOREDIT: case WM_CTLCOLORBTN:
            case WM_CTLCOLORSTATIC: case WM_CTLCOLORDLG: case WM_CTLCOLORLISTBOX:
                return r;
            default: return 0;
            }
        }
        if (!(d = DialogOf(hDlg))) return 0;   // the procedure destroyed the dialog
    }
    return DefaultDialogMessage(hDlg, d, msg, wParam, lParam);
}

BOOL EndDialog(HWND hDlg, INT_PTR nResult)
{
    DialogState* d = DialogOf(hDlg);
    assert(d && "EndDialog needs a dialog window");
    if (!d) return FALSE;
    d->bEnded = true;
    d->nResult = nResult;
    // A modal dialog disappears at once; its window goes when the modal loop has ended.
    if (GetModalDialogDepth() > 0) ShowWindow(hDlg, SW_HIDE);
    return TRUE;
}

BOOL SetDlgItemText(HWND hDlg, int id, LPCTSTR lpString) { return SetWindowText(GetDlgItem(hDlg, id), lpString); }

UINT GetDlgItemText(HWND hDlg, int id, LPTSTR lpString, int cchMax)
{
    return (UINT)GetWindowText(GetDlgItem(hDlg, id), lpString, cchMax);
}

BOOL SetDlgItemInt(HWND hDlg, int id, UINT uValue, BOOL bSigned)
{
    std::string s = bSigned ? std::to_string((int)uValue) : std::to_string(uValue);
    return SetDlgItemText(hDlg, id, std::u16string(s.begin(), s.end()).c_str());
}

// Leading and trailing blanks are allowed; anything else that is not a digit fails.
UINT GetDlgItemInt(HWND hDlg, int id, BOOL* lpTranslated, BOOL bSigned)
{
    WCHAR buf[64] = {};
    GetDlgItemText(hDlg, id, buf, 64);
    std::u16string s(buf);
    size_t a = s.find_first_not_of(u' '), b = s.find_last_not_of(u' ');
    s = a == std::u16string::npos ? u"" : s.substr(a, b - a + 1);
    bool neg = bSigned && !s.empty() && s[0] == u'-';
    long long v = 0;
    bool ok = s.size() > (neg ? 1u : 0u);
    for (size_t i = neg ? 1 : 0; ok && i < s.size(); ++i) {
        ok = s[i] >= u'0' && s[i] <= u'9';
        v = v * 10 + (s[i] - u'0');
        if (v > 0xFFFFFFFFLL) ok = false;
    }
    if (ok && bSigned && v > (neg ? 0x80000000LL : 0x7FFFFFFFLL)) ok = false;
    if (lpTranslated) *lpTranslated = ok;
    if (!ok) return 0;
    return (UINT)(neg ? -v : v);
}

BOOL CheckDlgButton(HWND hDlg, int id, UINT uCheck)
{
    SendDlgItemMessage(hDlg, id, BM_SETCHECK, uCheck, 0);
    return TRUE;
}

UINT IsDlgButtonChecked(HWND hDlg, int id) { return (UINT)SendDlgItemMessage(hDlg, id, BM_GETCHECK, 0, 0); }

LRESULT SendDlgItemMessage(HWND hDlg, int id, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    HWND h = GetDlgItem(hDlg, id);
    return h ? SendMessage(h, Msg, wParam, lParam) : 0;
}

namespace user {

void RegisterDialogClasses()
{
    static bool done = false;
    if (done) return;
    done = true;
    auto reg = [](LPCTSTR name, WNDPROC proc, UINT style, LPCTSTR cursor) {
        WNDCLASS wc{};
        wc.style = style;
        wc.lpfnWndProc = proc;
        wc.hCursor = LoadCursor(nullptr, cursor);
        wc.lpszClassName = name;
        RegisterClass(&wc);
    };
    reg(WC_DIALOG, &DialogClassProc, CS_DBLCLKS | CS_SAVEBITS, IDC_ARROW);
    reg(WC_BUTTON, &ButtonWndProc, CS_DBLCLKS | CS_PARENTDC, IDC_ARROW);
    reg(WC_STATIC, &StaticWndProc, CS_PARENTDC, IDC_ARROW);
    reg(WC_COMBOBOX, &ComboWndProc, CS_DBLCLKS | CS_PARENTDC, IDC_ARROW);
    reg(WC_COMBOLBOX, &ComboListWndProc, CS_DBLCLKS | CS_SAVEBITS, IDC_ARROW);
}

} // namespace user
