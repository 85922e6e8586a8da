// CFileDialog: the common dialog's structure filled from the constructor's arguments.
#include "filedlg.h"
#include <algorithm>

namespace {
// The longest path the platform has, so that no chosen path is refused for want of room.
constexpr DWORD kMaxPath = 32768;
} // namespace

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName, DWORD dwFlags, LPCTSTR, CWnd*,
                         DWORD, BOOL)
    : m_bOpenFileDialog(bOpenFileDialog), m_dwFlags(dwFlags), m_strDefExt(lpszDefExt), m_strFileName(lpszFileName)
{
}

INT_PTR CFileDialog::DoModal()
{
    std::vector<TCHAR> file(kMaxPath, u'\0');
    std::copy_n(m_strFileName.GetString(), std::min<DWORD>(m_strFileName.GetLength(), kMaxPath - 1), file.data());
    OPENFILENAME ofn{sizeof(OPENFILENAME), nullptr, nullptr, file.data(), kMaxPath, m_dwFlags,
                     m_strDefExt.IsEmpty() ? nullptr : m_strDefExt.GetString()};
    if (!(m_bOpenFileDialog ? ::GetOpenFileName(&ofn) : ::GetSaveFileName(&ofn))) return IDCANCEL;
    m_strPath = CString(file.data());
    return IDOK;
}
