// The common Open and Save As dialogs as commdlg.h names them, answered by the host.
#pragma once
#include <functional>
#include "base/cstring.h"

#define OFN_OVERWRITEPROMPT 0x00000002
#define OFN_HIDEREADONLY 0x00000004

// Stand-in: only the fields the dialogs read or fill; lpstrFile holds the initial name on entry and
// the chosen path on return.
struct OPENFILENAME {
    DWORD lStructSize;
    HWND hwndOwner;
    LPCTSTR lpstrFilter;
    LPTSTR lpstrFile;
    DWORD nMaxFile;     // characters of lpstrFile, the terminator included
    DWORD Flags;
    LPCTSTR lpstrDefExt; // added to a chosen name that has no extension
};
typedef OPENFILENAME* LPOPENFILENAME;

// TRUE when a file was chosen; FALSE when the dialog was cancelled or the path does not fit.
BOOL GetOpenFileName(LPOPENFILENAME lpofn);
BOOL GetSaveFileName(LPOPENFILENAME lpofn);

// Stand-in: no window is shown. The hook stands for the person: it gets TRUE for an Open dialog and
// FALSE for a Save As one, and the initial file name, and returns the chosen path or false to cancel.
// Without a hook every dialog is cancelled.
using FileDialogHook = std::function<bool(BOOL bOpenFileDialog, const CString& initialName, CString& path)>;
void SetFileDialogHook(FileDialogHook hook);
