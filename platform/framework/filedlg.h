// CFileDialog: MFC's common Open and Save As dialog, over GetOpenFileName and GetSaveFileName.
#pragma once
#include <vector>
#include "user/commdlg.h"

class CWnd;

#ifndef IDOK
#define IDOK 1
#define IDCANCEL 2
#endif

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
    DWORD m_dwFlags;
    CString m_strDefExt, m_strFileName, m_strPath;
};
