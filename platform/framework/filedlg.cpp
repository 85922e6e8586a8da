// CFileDialog: the host's answer in place of the common dialog.
#include "filedlg.h"

namespace {
AfxFileDialogHook& Hook()
{
    static AfxFileDialogHook hook;
    return hook;
}

// The last path component holds no dot.
bool HasNoExtension(const CString& path)
{
    int slash = -1;
    for (int i = 0; i < path.GetLength(); ++i) if (path[i] == u'/' || path[i] == u'\\') slash = i;
    return path.Find(u'.', slash + 1) < 0;
}
} // namespace

void AfxSetFileDialogHook(AfxFileDialogHook hook) { Hook() = std::move(hook); }

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName, DWORD, LPCTSTR, CWnd*,
                         DWORD, BOOL)
    : m_bOpenFileDialog(bOpenFileDialog), m_strDefExt(lpszDefExt), m_strFileName(lpszFileName)
{
}

INT_PTR CFileDialog::DoModal()
{
    CString path;
    if (!Hook() || !Hook()(m_bOpenFileDialog, m_strFileName, path) || path.IsEmpty()) return IDCANCEL;
    if (!m_strDefExt.IsEmpty() && HasNoExtension(path)) path += CString(u".") + m_strDefExt;
    m_strPath = path;
    return IDOK;
}
