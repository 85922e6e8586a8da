// The EDIT window class: its window procedure, keys, mouse selection, EM_ messages, clipboard
// messages and EN_ notifications to the parent.
#include <algorithm>
#include "dlg_p.h"
#include "edit_p.h"
#include "inputapi.h"
#include "sysapi.h"
#include "wndapi.h"

namespace user {

EditState* EditOf(HWND hwnd)
{
    Wnd* w = FromHandle(hwnd);
    return w ? dynamic_cast<EditState*>(w->pData.get()) : nullptr;
}

void RegisterSystemClasses()
{
    static bool done = false;
    if (done) return;
    done = true;
    WNDCLASS wc{};
    wc.style = CS_DBLCLKS | CS_PARENTDC;
    wc.lpfnWndProc = EditWndProc;
    wc.hCursor = LoadCursor(nullptr, IDC_IBEAM);
    wc.lpszClassName = WC_EDIT;
    RegisterClass(&wc);
    RegisterDialogClasses();
}

} // namespace user

using namespace user;

namespace {

DWORD StyleOf(HWND h) { return (DWORD)GetWindowLongPtr(h, GWL_STYLE); }

void Notify(HWND hwnd, WORD code)
{
    HWND parent = GetParent(hwnd);
    if (parent) SendMessage(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(hwnd), code), (LPARAM)hwnd);
}

// After a change of the text: the view follows, then EN_UPDATE before the display and EN_CHANGE after.
void Changed(EditState* e, bool bByUser)
{
    HWND hwnd = e->hwnd;
    if (bByUser) e->bModified = true;
    EditScrollToCaret(e);
    InvalidateRect(hwnd, nullptr, TRUE);
    Notify(hwnd, EN_UPDATE);
    if (IsWindow(hwnd)) Notify(hwnd, EN_CHANGE);
}

void SelectionMoved(EditState* e)
{
    EditScrollToCaret(e);
    InvalidateRect(e->hwnd, nullptr, TRUE);
}

// Typed or pasted text in place of the selection, cut to the limit and, without ES_AUTOHSCROLL,
// to the width of the window.
void InsertText(EditState* e, std::u16string s)
{
    size_t room = e->m.Room(s.size());
    bool cut = room < s.size();
    s.resize(room);
    if (!(StyleOf(e->hwnd) & ES_AUTOHSCROLL)) {
        auto with = [e](const std::u16string& t) {
            std::u16string r = e->m.text;
            r.replace(e->m.SelStart(), e->m.SelEnd() - e->m.SelStart(), t);
            return r;
        };
        if (!s.empty() && !EditFits(e, with(s))) {
            // The longest start of s that fits, by halves: widths only grow with more characters.
            size_t lo = 0, hi = s.size() - 1;
            while (lo < hi) {
                size_t mid = (lo + hi + 1) / 2;
                if (EditFits(e, with(s.substr(0, mid)))) lo = mid;
                else hi = mid - 1;
            }
            s.resize(lo);
            cut = true;
        }
    }
    if (cut) Notify(e->hwnd, EN_MAXTEXT);
    if ((e = EditOf(e->hwnd)) && e->m.ReplaceSel(s)) Changed(e, true);
}

bool ReadOnly(EditState* e) { return (StyleOf(e->hwnd) & ES_READONLY) != 0; }

void OnCopy(EditState* e)
{
    if (!e->m.HasSel() || e->chPassword) return;   // a password is never copied out
    std::u16string s = e->m.text.substr(e->m.SelStart(), e->m.SelEnd() - e->m.SelStart());
    if (!OpenClipboard(e->hwnd)) return;
    EmptyClipboard();
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, (s.size() + 1) * sizeof(WCHAR));
    if (h) {
        auto* p = static_cast<WCHAR*>(GlobalLock(h));
        std::copy(s.begin(), s.end(), p);
        p[s.size()] = 0;
        GlobalUnlock(h);
        SetClipboardData(CF_UNICODETEXT, h);
    }
    CloseClipboard();
}

void OnClear(EditState* e)
{
    if (!ReadOnly(e) && e->m.ReplaceSel(u"")) Changed(e, true);
}

// A single-line edit takes the clipboard text up to its first line break.
void OnPaste(EditState* e)
{
    if (ReadOnly(e) || !OpenClipboard(e->hwnd)) return;
    std::u16string s;
    if (HANDLE h = GetClipboardData(CF_UNICODETEXT)) {
        for (auto* p = static_cast<const WCHAR*>(GlobalLock(h)); *p && *p != u'\r' && *p != u'\n'; ++p) s += *p;
        GlobalUnlock(h);
    }
    CloseClipboard();
    InsertText(e, s);
}

void OnChar(EditState* e, WCHAR ch)
{
    switch (ch) {
    case 1: e->m.SetSel(0, -1); SelectionMoved(e); return;           // Ctrl+A
    case 3: OnCopy(e); return;                                       // Ctrl+C
    case 22: OnPaste(e); return;                                     // Ctrl+V
    case 24: OnCopy(e); OnClear(e); return;                          // Ctrl+X
    case 8:
        if (!ReadOnly(e) && e->m.Backspace()) Changed(e, true);
        return;
    default: break;
    }
    if (ch < 0x20 || ch == 0x7F || ReadOnly(e)) return;   // other control characters are not text
    DWORD style = StyleOf(e->hwnd);
    if ((style & ES_NUMBER) && (ch < u'0' || ch > u'9')) { MessageBeep(MB_OK); return; }
    if ((style & ES_UPPERCASE) && ch >= u'a' && ch <= u'z') ch -= 32;
    if ((style & ES_LOWERCASE) && ch >= u'A' && ch <= u'Z') ch += 32;
    InsertText(e, std::u16string(1, ch));
}

// Left and Right move from the caret end, and collapse a selection there unless Shift is down;
// Ctrl moves by words.
void OnKeyDown(EditState* e, UINT vk)
{
    bool shift = GetKeyState(VK_SHIFT) < 0, ctrl = GetKeyState(VK_CONTROL) < 0;
    EditModel& m = e->m;
    switch (vk) {
    case VK_LEFT: m.MoveTo(ctrl ? m.WordStart(m.nCaret) : m.nCaret - 1, shift); break;
    case VK_RIGHT: m.MoveTo(ctrl ? m.WordEnd(m.nCaret) : m.nCaret + 1, shift); break;
    case VK_HOME: m.MoveTo(0, shift); break;
    case VK_END: m.MoveTo(m.Length(), shift); break;
    case VK_DELETE:
        if (shift) { OnCopy(e); OnClear(e); }
        else if (!ReadOnly(e) && m.DeleteForward()) Changed(e, true);
        return;
    case VK_INSERT:
        if (shift) OnPaste(e);
        else if (ctrl) OnCopy(e);
        return;
    default: return;
    }
    SelectionMoved(e);
}

void OnButtonDown(EditState* e, WPARAM flags, LPARAM lp)
{
    HWND hwnd = e->hwnd;
    if (GetFocus() != hwnd) SetFocus(hwnd);   // the edit control focuses itself on a click
    if (!(e = EditOf(hwnd))) return;
    e->m.MoveTo(EditPosFromX(e, GET_X_LPARAM(lp)), (flags & MK_SHIFT) != 0);
    e->bDragging = true;
    SetCapture(hwnd);
    if ((e = EditOf(hwnd))) SelectionMoved(e);
}

void OnMouseMove(EditState* e, LPARAM lp)
{
    if (!e->bDragging || GetCapture() != e->hwnd) return;
    int pos = EditPosFromX(e, GET_X_LPARAM(lp));
    if (pos == e->m.nCaret) return;
    e->m.MoveTo(pos, true);
    SelectionMoved(e);
}

void OnButtonUp(EditState* e)
{
    if (!e->bDragging) return;
    e->bDragging = false;
    if (GetCapture() == e->hwnd) ReleaseCapture();
}

// Stand-in: a double click selects the word without going on to select by words while dragging.
void OnDoubleClick(EditState* e, LPARAM lp)
{
    e->m.SelectWordAt(EditPosFromX(e, GET_X_LPARAM(lp)));
    SelectionMoved(e);
}

void OnSetFocus(EditState* e)
{
    CreateCaret(e->hwnd, nullptr, 1, EditTextHeight(e));
    EditPlaceCaret(e);
    ShowCaret(e->hwnd);
    InvalidateRect(e->hwnd, nullptr, TRUE);
    Notify(e->hwnd, EN_SETFOCUS);
}

void OnKillFocus(EditState* e)
{
    e->bDragging = false;
    DestroyCaret();
    InvalidateRect(e->hwnd, nullptr, TRUE);
    Notify(e->hwnd, EN_KILLFOCUS);
}

void SetText(EditState* e, LPCTSTR psz)
{
    e->m.text = psz ? psz : u"";
    e->m.nAnchor = e->m.nCaret = 0;
    e->nScroll = 0;
    e->bModified = false;
    EditPlaceCaret(e);
    Changed(e, false);
}

LRESULT GetSel(EditState* e, WPARAM wp, LPARAM lp)
{
    DWORD a = (DWORD)e->m.SelStart(), b = (DWORD)e->m.SelEnd();
    if (wp) *reinterpret_cast<DWORD*>(wp) = a;
    if (lp) *reinterpret_cast<DWORD*>(lp) = b;
    return (a > 0xFFFF || b > 0xFFFF) ? -1 : (LRESULT)(DWORD)MAKELONG(a, b);
}

// Stand-in: EC_USEFONTINFO gives margins of 0.
void SetMargins(EditState* e, WPARAM flags, LPARAM lp)
{
    auto value = [](WORD v) { return v == EC_USEFONTINFO ? 0 : (int)v; };
    if (flags & EC_LEFTMARGIN) e->nLeftMargin = value(LOWORD(lp));
    if (flags & EC_RIGHTMARGIN) e->nRightMargin = value(HIWORD(lp));
    SelectionMoved(e);
}

void SetPasswordChar(EditState* e, WCHAR ch)
{
    e->chPassword = ch;
    DWORD style = StyleOf(e->hwnd);
    Wnd* w = FromHandle(e->hwnd);
    w->dwStyle = ch ? (style | ES_PASSWORD) : (style & ~ES_PASSWORD);
    SelectionMoved(e);
}

LRESULT OnEditMessage(EditState* e, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case EM_GETSEL: return GetSel(e, wp, lp);
    case EM_SETSEL:
        e->m.SetSel((int)wp, (int)lp);
        EditPlaceCaret(e);
        InvalidateRect(e->hwnd, nullptr, TRUE);
        return 0;
    case EM_SCROLLCARET: EditScrollToCaret(e); InvalidateRect(e->hwnd, nullptr, TRUE); return 1;
    case EM_REPLACESEL: {
        LPCTSTR s = reinterpret_cast<LPCTSTR>(lp);
        if (e->m.ReplaceSel(s ? s : u"")) Changed(e, true);
        return 0;
    }
    case EM_SETPASSWORDCHAR: SetPasswordChar(e, (WCHAR)wp); return 0;
    case EM_GETPASSWORDCHAR: return e->chPassword;
    case EM_SETMARGINS: SetMargins(e, wp, lp); return 0;
    case EM_GETMARGINS: return MAKELRESULT(e->nLeftMargin, e->nRightMargin);
    case EM_LIMITTEXT: e->m.nLimit = wp ? (int)std::min<WPARAM>(wp, 0x7FFFFFFE) : 0x7FFFFFFE; return 0;
    case EM_GETLIMITTEXT: return e->m.nLimit;
    case EM_GETMODIFY: return e->bModified;
    case EM_SETMODIFY: e->bModified = wp != 0; return 0;
    case EM_SETREADONLY: {
        Wnd* w = FromHandle(e->hwnd);
        w->dwStyle = wp ? (w->dwStyle | ES_READONLY) : (w->dwStyle & ~ES_READONLY);
        InvalidateRect(e->hwnd, nullptr, TRUE);
        return 1;
    }
    case EM_POSFROMCHAR:
        if ((int)wp > e->m.Length()) return -1;
        return MAKELRESULT(EditTextX(e, (int)wp), 0);
    case EM_CHARFROMPOS: return MAKELRESULT(EditPosFromX(e, GET_X_LPARAM(lp)), 0);
    case EM_GETLINECOUNT: return 1;
    case EM_LINELENGTH: return e->m.Length();
    case EM_CANUNDO: case EM_UNDO: return 0;   // no undo buffer here
    case EM_EMPTYUNDOBUFFER: return 0;
    default: return DefWindowProc(e->hwnd, msg, wp, lp);
    }
}

LRESULT OnCreate(HWND hwnd, const CREATESTRUCT* cs)
{
    auto state = std::make_unique<EditState>();
    state->hwnd = hwnd;
    if (cs->style & ES_PASSWORD) state->chPassword = u'*';
    if (cs->lpszName && !IS_INTRESOURCE(cs->lpszName)) state->m.text = cs->lpszName;
    FromHandle(hwnd)->pData = std::move(state);
    return TRUE;
}

} // namespace

LRESULT CALLBACK EditWndProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_NCCREATE) return OnCreate(hWnd, reinterpret_cast<const CREATESTRUCT*>(lParam));
    EditState* e = EditOf(hWnd);
    if (!e) return DefWindowProc(hWnd, uMsg, wParam, lParam);
    switch (uMsg) {
    case WM_SETTEXT: SetText(e, reinterpret_cast<LPCTSTR>(lParam)); return TRUE;
    case WM_GETTEXT: {
        auto* buf = reinterpret_cast<WCHAR*>(lParam);
        if (!buf || !wParam) return 0;
        size_t n = std::min<size_t>(wParam - 1, e->m.text.size());
        std::copy_n(e->m.text.data(), n, buf);
        buf[n] = 0;
        return (LRESULT)n;
    }
    case WM_GETTEXTLENGTH: return e->m.Length();
    case WM_CHAR: OnChar(e, (WCHAR)wParam); return 0;
    case WM_KEYDOWN: OnKeyDown(e, (UINT)wParam); return 0;
    case WM_LBUTTONDOWN: OnButtonDown(e, wParam, lParam); return 0;
    case WM_MOUSEMOVE: OnMouseMove(e, lParam); return 0;
    case WM_LBUTTONUP: OnButtonUp(e); return 0;
    case WM_LBUTTONDBLCLK: OnDoubleClick(e, lParam); return 0;
    case WM_CAPTURECHANGED: e->bDragging = false; return 0;
    case WM_SETFOCUS: OnSetFocus(e); return 0;
    case WM_KILLFOCUS: OnKillFocus(e); return 0;
    case WM_PAINT: EditPaint(e); return 0;
    case WM_ERASEBKGND: return 1;   // the paint fills the background with the parent's brush
    case WM_SETFONT:
        // Stand-in: the margins stay as they are; the real control resets them from the font.
        e->hFont = (HFONT)wParam;
        e->widths = {}; // a handle may come back for another font once its first one is deleted
        if (GetFocus() == hWnd) OnSetFocus(e);
        EditScrollToCaret(e);
        if (LOWORD(lParam)) InvalidateRect(hWnd, nullptr, TRUE);
        return 0;
    case WM_GETFONT: return (LRESULT)e->hFont;
    case WM_SIZE: case WM_ENABLE: SelectionMoved(e); return 0;
    case WM_COPY: OnCopy(e); return 0;
    case WM_CUT: if (!e->chPassword) { OnCopy(e); OnClear(e); } return 0;
    case WM_PASTE: OnPaste(e); return 0;
    case WM_CLEAR: OnClear(e); return 0;
    case WM_GETDLGCODE: return DLGC_WANTCHARS | DLGC_HASSETSEL | DLGC_WANTARROWS;
    default:
        if (uMsg >= EM_GETSEL && uMsg <= EM_CHARFROMPOS) return OnEditMessage(e, uMsg, wParam, lParam);
        return DefWindowProc(hWnd, uMsg, wParam, lParam);
    }
}
