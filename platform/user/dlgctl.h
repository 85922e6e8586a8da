// Win32 USER dialog boxes: dialog templates, the dialog manager (DefDlgProc, IsDialogMessage, the
// modal loop), dialog base units, and the standard controls that dialogs hold: BUTTON (push,
// default push, automatic check box), STATIC (text, icon) and COMBOBOX (the CBS_DROPDOWN kind, with
// CBS_SORT) and its drop-down list; and the module's resources that dialogs are made from.
#pragma once
#include <functional>
#include "userconst.h"


#define WC_DIALOG u"#32770"
#define WC_BUTTON u"Button"
#define WC_STATIC u"Static"
#define WC_COMBOBOX u"ComboBox"
#define WC_COMBOLBOX u"ComboLBox"

// Dialog styles.
#define DS_SETFONT 0x40L
#define DS_MODALFRAME 0x80L
#define DS_SETFOREGROUND 0x200L
#define DS_3DLOOK 0x0004L
#define DS_FIXEDSYS 0x0008L
#define DS_CONTROL 0x0400L
#define DS_CENTER 0x0800L
#define DS_SHELLFONT (DS_SETFONT | DS_FIXEDSYS)

// Command ids of the standard buttons.
#ifndef IDOK
#define IDOK 1
#define IDCANCEL 2
#endif
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
#define IDC_STATIC (-1)

// Dialog messages.
#define WM_INITDIALOG 0x0110
#define WM_NEXTDLGCTL 0x0028
#define WM_NOTIFY 0x004E
#define DM_GETDEFID (WM_USER + 0)
#define DM_SETDEFID (WM_USER + 1)
#define DC_HASDEFID 0x534B
#define DLGC_DEFPUSHBUTTON 0x0010
#define DLGC_UNDEFPUSHBUTTON 0x0020
#define DLGC_RADIOBUTTON 0x0040
#define DLGC_STATIC 0x0100
#define DLGC_BUTTON 0x2000
#define WS_EX_CONTROLPARENT 0x00010000L

// Button styles, messages and notifications.
#define BS_PUSHBUTTON 0x00000000L
#define BS_DEFPUSHBUTTON 0x00000001L
#define BS_CHECKBOX 0x00000002L
#define BS_AUTOCHECKBOX 0x00000003L
#define BS_TYPEMASK 0x0000000FL
#define BS_LEFTTEXT 0x00000020L
#define BM_GETCHECK 0x00F0
#define BM_SETCHECK 0x00F1
#define BM_GETSTATE 0x00F2
#define BM_SETSTATE 0x00F3
#define BM_SETSTYLE 0x00F4
#define BM_CLICK 0x00F5
#define BST_UNCHECKED 0x0000
#define BST_CHECKED 0x0001
#define BST_PUSHED 0x0004
#define BST_FOCUS 0x0008
#define BN_CLICKED 0

// Static styles and messages.
#define SS_LEFT 0x00000000L
#define SS_CENTER 0x00000001L
#define SS_RIGHT 0x00000002L
#define SS_ICON 0x00000003L
#define SS_TYPEMASK 0x0000001FL
#define SS_NOPREFIX 0x00000080L
#define STM_SETICON 0x0170
#define STM_GETICON 0x0171

// Combo box styles, messages and notifications.
#define CBS_SIMPLE 0x0001L
#define CBS_DROPDOWN 0x0002L
#define CBS_AUTOHSCROLL 0x0040L
#define CBS_SORT 0x0100L
#define CBS_HASSTRINGS 0x0200L
#define CB_ERR (-1)
#define CB_GETEDITSEL 0x0140
#define CB_LIMITTEXT 0x0141
#define CB_SETEDITSEL 0x0142
#define CB_ADDSTRING 0x0143
#define CB_DELETESTRING 0x0144
#define CB_GETCOUNT 0x0146
#define CB_GETCURSEL 0x0147
#define CB_GETLBTEXT 0x0148
#define CB_GETLBTEXTLEN 0x0149
#define CB_INSERTSTRING 0x014A
#define CB_RESETCONTENT 0x014B
#define CB_FINDSTRING 0x014C
#define CB_SELECTSTRING 0x014D
#define CB_SETCURSEL 0x014E
#define CB_SHOWDROPDOWN 0x014F
#define CB_GETDROPPEDCONTROLRECT 0x0152
#define CB_GETITEMHEIGHT 0x0154
#define CB_GETDROPPEDSTATE 0x0157
#define CB_FINDSTRINGEXACT 0x0158
#define CBN_SELCHANGE 1
#define CBN_DBLCLK 2
#define CBN_SETFOCUS 3
#define CBN_KILLFOCUS 4
#define CBN_EDITCHANGE 5
#define CBN_EDITUPDATE 6
#define CBN_DROPDOWN 7
#define CBN_CLOSEUP 8
#define CBN_SELENDOK 9
#define CBN_SELENDCANCEL 10

typedef INT_PTR (*DLGPROC)(HWND, UINT, WPARAM, LPARAM);

// Stand-in: a dialog resource as the loader hands it over, already parsed: the fields of
// DLGTEMPLATE with its title and font, and each item with its class name and text, instead of the
// packed binary form. Units are dialog units. An SS_ICON static names its icon by its text,
// MAKEINTRESOURCE of the icon's resource id.
struct DLGITEMTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    short x, y, cx, cy;
    int id;
    LPCTSTR lpszClass;
    LPCTSTR lpszText;
};

struct DLGTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    short x, y, cx, cy;
    LPCTSTR lpszTitle;
    WORD wPointSize;           // with DS_SETFONT
    LPCTSTR lpszFont;
    const DLGITEMTEMPLATE* pItems;
    WORD cdit;
};
typedef const DLGTEMPLATE* LPCDLGTEMPLATE;

HWND CreateDialogIndirectParam(HINSTANCE hInstance, LPCDLGTEMPLATE lpTemplate, HWND hWndParent,
                               DLGPROC lpDialogFunc, LPARAM dwInitParam);
// Runs the dialog modally: the owner is disabled, the dialog shown, and its messages pass through
// IsDialogMessage until EndDialog. Returns the EndDialog result, or -1 when the dialog cannot be made.
INT_PTR DialogBoxIndirectParam(HINSTANCE hInstance, LPCDLGTEMPLATE hDialogTemplate, HWND hWndParent,
                               DLGPROC lpDialogFunc, LPARAM dwInitParam);
BOOL EndDialog(HWND hDlg, INT_PTR nResult);
LRESULT DefDlgProc(HWND hDlg, UINT Msg, WPARAM wParam, LPARAM lParam);
BOOL IsDialogMessage(HWND hDlg, MSG* lpMsg);
HWND GetNextDlgTabItem(HWND hDlg, HWND hCtl, BOOL bPrevious);
BOOL MapDialogRect(HWND hDlg, RECT* lpRect);
// The base units of the system font (low word x, high word y).
LONG GetDialogBaseUnits();

BOOL SetDlgItemText(HWND hDlg, int nIDDlgItem, LPCTSTR lpString);
UINT GetDlgItemText(HWND hDlg, int nIDDlgItem, LPTSTR lpString, int cchMax);
BOOL SetDlgItemInt(HWND hDlg, int nIDDlgItem, UINT uValue, BOOL bSigned);
UINT GetDlgItemInt(HWND hDlg, int nIDDlgItem, BOOL* lpTranslated, BOOL bSigned);
BOOL CheckDlgButton(HWND hDlg, int nIDButton, UINT uCheck);
UINT IsDlgButtonChecked(HWND hDlg, int nIDButton);
LRESULT SendDlgItemMessage(HWND hDlg, int nIDDlgItem, UINT Msg, WPARAM wParam, LPARAM lParam);

// The dialog base units arithmetic, as plain functions. x: the average width of the 52 letters
// A-Z and a-z, rounded; y: the font's height. Dialog units to pixels: x * base.x / 4 and
// y * base.y / 8, each rounded to nearest as MulDiv does.
struct DLGBASEUNITS {
    int cx, cy;
};
DLGBASEUNITS DialogBaseUnitsFromFont(int nLettersExtent, int nHeight);
RECT DialogRectToPixels(const RECT& rcDialog, DLGBASEUNITS units);
// The base units of a font, measured through GDI.
DLGBASEUNITS DialogBaseUnitsOf(HFONT hFont);

// Stand-in: there is no non-client area, so a dialog with WS_CAPTION draws its frame and caption
// inside its window; its controls sit below the caption, offset by these many pixels.
#define DLG_FRAME_CX 3
#define DLG_CAPTION_CY 22
// Stand-in: the size in pixels of the client area of a dialog made from the template, as a frame
// needs it before it makes the dialog (a property page's size).
SIZE GetDialogTemplateSize(LPCDLGTEMPLATE lpTemplate);
// Stand-in: the offset of a dialog's client area within its window.
POINT GetDialogClientOffset(HWND hDlg);

// Stand-in: whoever stands for the person at the screen. The hook runs once a modal dialog is up
// and painted, inside its modal loop; it may drive the dialog (messages, simulated input, the
// clock). When it returns and the dialog is still open with nothing left to deliver, nobody is
// there to answer it, and it ends as by Escape (IDCANCEL), so that no caller waits for ever.
using ModalDialogHook = std::function<void(HWND hDlg)>;
void SetModalDialogHook(ModalDialogHook hook);
// Stand-in: runs an existing dialog window modally, as DialogBoxIndirectParam does after creating
// it (frameworks that create the window themselves use this). Returns the EndDialog result.
INT_PTR RunModalDialog(HWND hDlg, HWND hWndOwner);
// Stand-in: the modal dialogs open now, innermost last.
int GetModalDialogDepth();

// Resources. Stand-in: there is no resource compiler; a module hands its dialogs, their
// initialisation data (combo box lines), icons and strings to these tables at load, and the Load
// and Find functions look them up by id. Modules are not told apart (hInstance is not looked at).
struct DLGINITENTRY {
    int nIDC;                  // the control
    UINT message;              // CB_ADDSTRING
    LPCTSTR lpszData;
};
void RegisterDialogResource(WORD nID, LPCDLGTEMPLATE pTemplate, const DLGINITENTRY* pInit, size_t nInit);
// Withdraws a dialog, as its module unloads: the template and its data live in the module.
void RevokeDialogResource(WORD nID);
LPCDLGTEMPLATE FindDialogResource(WORD nID);
// The initialisation data of a dialog; the count in *pnCount.
const DLGINITENTRY* FindDlgInitResource(WORD nID, size_t* pnCount);
// An icon resource, made by the module when it loads; it lives as long as the process.
void RegisterIconResource(WORD nID, HICON hIcon);
HICON LoadIcon(HINSTANCE hInstance, LPCTSTR lpIconName);
// A bitmap resource, likewise made at load and kept for the life of the process.
void RegisterBitmapResource(WORD nID, HBITMAP hBitmap);
HBITMAP LoadBitmap(HINSTANCE hInstance, LPCTSTR lpBitmapName);
void RegisterStringResource(UINT uID, LPCTSTR lpszText);
int LoadString(HINSTANCE hInstance, UINT uID, LPTSTR lpBuffer, int cchBufferMax);
