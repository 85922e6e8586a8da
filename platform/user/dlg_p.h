// Internal state of dialog windows, shared by the dialog manager and the dialog controls.
#pragma once
#include "gdi/selectguard.h"
#include "dlgctl.h"
#include "drawapi.h"
#include "editctl.h"
#include "sysapi.h"
#include "gdi/wingdi.h"
#include "wndobj.h"

namespace user {

struct DialogState : ClassData {
    DLGPROC proc = nullptr;
    LPARAM lInit = 0;
    HFONT hFont = nullptr;
    bool bOwnFont = false;
    DLGBASEUNITS units{0, 0};
    POINT ptClient{0, 0};          // the client area's offset in the window (caption and frame)
    HWND hwndFocus = nullptr;      // the control that had the focus, given it back on activation
    bool bEnded = false;
    INT_PTR nResult = 0;
};

DialogState* DialogOf(HWND hwnd);
void RegisterDialogClasses();
void RegisterSystemClasses();      // the EDIT class and the dialog classes
// A push button's look as default or not (BS_DEFPUSHBUTTON), as DM_SETDEFID moves it.
void SetButtonDefault(HWND hwndButton, bool bDefault);

// Classic 3-D drawing shared by the controls.
void FillSys(HDC hdc, const RECT& rc, int nColor);
void DrawSunkenBox(HDC hdc, const RECT& rc);     // the two-pixel sunken edge of a field
HFONT FontOf(HWND hwnd);                          // WM_GETFONT, or the default GUI font

LRESULT CALLBACK ButtonWndProc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK StaticWndProc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK ComboWndProc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK ComboListWndProc(HWND, UINT, WPARAM, LPARAM);

} // namespace user
