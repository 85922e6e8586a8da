// CFileDialog: MFC's common Open and Save As dialog, answered by the host.
#pragma once
#include <functional>
#include "base/cstring.h"

class CWnd;

#ifndef IDOK
#define IDOK 1
#define IDCANCEL 2
#endif
#define OFN_OVERWRITEPROMPT 0x00000002
#define OFN_HIDEREADONLY 0x00000004

// Stand-in: no window is shown. DoModal asks the host's answer: the hook gets TRUE for an Open
// dialog and FALSE for a Save As one, and the initial file name, and returns the chosen path or
// false to cancel. Without a hook every dialog is cancelled.
using AfxFileDialogHook = std::function<bool(BOOL bOpenFileDialog, const CString& initialName, CString& path)>;
void AfxSetFileDialogHook(AfxFileDialogHook hook);

class CFileDialog {
public:
    explicit CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt = nullptr, LPCTSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR lpszFilter = nullptr,
                         CWnd* pParentWnd = nullptr, DWORD dwSize = 0, BOOL bVistaStyle = TRUE);
    // IDOK when a file was chosen, IDCANCEL otherwise.
    INT_PTR DoModal();
    // The chosen path; the default extension is added to a name that has none.
    CString GetPathName() const { return m_strPath; }

private:
    BOOL m_bOpenFileDialog;
    CString m_strDefExt, m_strFileName, m_strPath;
};
