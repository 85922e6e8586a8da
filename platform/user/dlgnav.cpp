// The dialog manager's keyboard and modal loop: GetNextDlgTabItem, IsDialogMessage (Tab, Shift+Tab,
// Enter, Escape) and the modal loop that runs inside the host's message loop and clock.
#include <algorithm>
#include <cassert>
#include <vector>
#include "dlg_p.h"
#include "inputapi.h"
#include "msgapi.h"
#include "wndapi.h"

using namespace user;

namespace {

ModalDialogHook& Hook()
{
    static ModalDialogHook hook;
    return hook;
}

std::vector<HWND>& ModalStack()
{
    static std::vector<HWND> stack;
    return stack;
}

bool IsControlParent(HWND h) { return (GetWindowLongPtr(h, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0; }

bool IsTabStop(HWND h)
{
    DWORD style = (DWORD)GetWindowLongPtr(h, GWL_STYLE);
    return (style & WS_TABSTOP) && (style & WS_VISIBLE) && !(style & WS_DISABLED);
}

// The tab stops of a dialog in order: its children in z-order (the template's order), going into
// children that hold controls of their own (a property page inside its frame).
void CollectTabStops(HWND parent, std::vector<HWND>& out)
{
    for (HWND h = GetWindow(parent, GW_CHILD); h; h = GetWindow(h, GW_HWNDNEXT)) {
        if (!IsWindowVisible(h)) continue;
        if (IsControlParent(h) && IsWindowEnabled(h)) CollectTabStops(h, out);
        else if (IsTabStop(h)) out.push_back(h);
    }
}

// The control of the dialog a window belongs to: the window itself or the ancestor that is a direct
// child of the dialog or of a control parent inside it (the combo box of a combo's edit).
HWND ItemOf(HWND hDlg, HWND h)
{
    while (h && h != hDlg) {
        HWND parent = GetParent(h);
        if (parent == hDlg || (parent && IsControlParent(parent))) return h;
        h = parent;
    }
    return nullptr;
}

HWND FocusedItem(HWND hDlg) { return ItemOf(hDlg, GetFocus()); }

// Enter: the focused push button, else the default one; a disabled button does nothing.
void PressDefault(HWND hDlg)
{
    HWND focus = FocusedItem(hDlg);
    HWND button = nullptr;
    int id = IDOK;
    if (focus && (SendMessage(focus, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) {
        button = focus;
        id = GetDlgCtrlID(focus);
    } else if (LRESULT def = SendMessage(hDlg, DM_GETDEFID, 0, 0); HIWORD(def) == DC_HASDEFID) {
        id = LOWORD(def);
        button = GetDlgItem(hDlg, id);
    }
    if (button && !IsWindowEnabled(button)) return;
    SendMessage(hDlg, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), (LPARAM)button);
}

void PressCancel(HWND hDlg)
{
    HWND button = GetDlgItem(hDlg, IDCANCEL);
    if (button && !IsWindowEnabled(button)) return;
    SendMessage(hDlg, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), (LPARAM)button);
}

// The loop's body while a modal dialog is up: its messages go through IsDialogMessage first, the
// rest through the host's own loop.
MessagePump ModalPump(HWND hDlg, MessagePump outer)
{
    return [hDlg, outer](MSG& msg) {
        if (IsWindow(hDlg) && IsDialogMessage(hDlg, &msg)) return;
        if (outer) outer(msg);
        else {
            TranslateMessage(&msg);
            DispatchMessage(&msg);
        }
    };
}

bool Ended(HWND hDlg)
{
    DialogState* d = DialogOf(hDlg);
    return !d || d->bEnded;
}

} // namespace

HWND GetNextDlgTabItem(HWND hDlg, HWND hCtl, BOOL bPrevious)
{
    std::vector<HWND> stops;
    CollectTabStops(hDlg, stops);
    if (stops.empty()) return nullptr;
    HWND item = hCtl ? ItemOf(hDlg, hCtl) : nullptr;
    auto it = std::find(stops.begin(), stops.end(), item);
    if (it == stops.end()) return bPrevious ? stops.back() : stops.front();
    size_t i = (size_t)(it - stops.begin()), n = stops.size();
    return stops[bPrevious ? (i + n - 1) % n : (i + 1) % n];
}

BOOL IsDialogMessage(HWND hDlg, MSG* msg)
{
    // Messages of other windows, a combo box's popup list among them, are not the dialog's.
    if (!msg || !msg->hwnd || (msg->hwnd != hDlg && !IsChild(hDlg, msg->hwnd))) return FALSE;
    if (msg->message == WM_KEYDOWN) {
        LRESULT code = SendMessage(msg->hwnd, WM_GETDLGCODE, msg->wParam, (LPARAM)msg);
        switch (msg->wParam) {
        case VK_TAB:
            if (code & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) break;
            SendMessage(hDlg, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0, 0);
            return TRUE;
        case VK_RETURN:
            if (code & DLGC_WANTALLKEYS) break;
            PressDefault(hDlg);
            return TRUE;
        case VK_ESCAPE:
            if (code & DLGC_WANTALLKEYS) break;
            PressCancel(hDlg);
            return TRUE;
        default: break;
        }
    }
    TranslateMessage(msg);
    DispatchMessage(msg);
    return TRUE;
}

void SetModalDialogHook(ModalDialogHook hook) { Hook() = std::move(hook); }
int GetModalDialogDepth() { return (int)ModalStack().size(); }

INT_PTR RunModalDialog(HWND hDlg, HWND hWndOwner)
{
    assert(DialogOf(hDlg) && "RunModalDialog needs a dialog window");
    if (!DialogOf(hDlg)) return -1;
    bool ownerWasEnabled = hWndOwner && IsWindowEnabled(hWndOwner);
    if (ownerWasEnabled) EnableWindow(hWndOwner, FALSE);
    MessagePump outer = S().pump;
    S().pump = ModalPump(hDlg, outer);
    ModalStack().push_back(hDlg);
    ShowWindow(hDlg, SW_SHOW);
    PumpMessages();
    if (!Ended(hDlg) && Hook()) Hook()(hDlg);
    if (!Ended(hDlg)) PumpMessages();
    // Nobody is there to answer: the dialog ends as by Escape, and failing that it is ended.
    if (!Ended(hDlg)) PressCancel(hDlg);
    if (IsWindow(hDlg) && !Ended(hDlg)) EndDialog(hDlg, IDCANCEL);
    DialogState* d = DialogOf(hDlg);   // gone when a handler destroyed the dialog
    INT_PTR result = d ? d->nResult : -1;
    ModalStack().pop_back();
    S().pump = outer;
    if (ownerWasEnabled && IsWindow(hWndOwner)) EnableWindow(hWndOwner, TRUE);
    if (IsWindow(hDlg)) ShowWindow(hDlg, SW_HIDE);
    if (hWndOwner && IsWindow(hWndOwner) && IsWindowVisible(hWndOwner)) SetActiveWindow(hWndOwner);
    return result;
}

INT_PTR DialogBoxIndirectParam(HINSTANCE hInstance, LPCDLGTEMPLATE t, HWND hWndParent, DLGPROC proc, LPARAM lParam)
{
    HWND hDlg = CreateDialogIndirectParam(hInstance, t, hWndParent, proc, lParam);
    if (!hDlg) return -1;
    INT_PTR result = RunModalDialog(hDlg, hWndParent);
    if (IsWindow(hDlg)) DestroyWindow(hDlg);
    return result;
}
