// GetOpenFileName and GetSaveFileName: the host's answer in place of the common dialog.
#include "commdlg.h"
#include <algorithm>

namespace {
FileDialogHook& Hook()
{
    static FileDialogHook hook;
    return hook;
}

// The last path component holds no dot.
bool HasNoExtension(const CString& path)
{
    int slash = -1;
    for (int i = 0; i < path.GetLength(); ++i) if (path[i] == u'/' || path[i] == u'\\') slash = i;
    return path.Find(u'.', slash + 1) < 0;
}

BOOL Ask(BOOL bOpen, LPOPENFILENAME ofn)
{
    if (!ofn || !ofn->lpstrFile || ofn->nMaxFile == 0) return FALSE;
    CString path;
    if (!Hook() || !Hook()(bOpen, CString(ofn->lpstrFile), path) || path.IsEmpty()) return FALSE;
    if (ofn->lpstrDefExt && *ofn->lpstrDefExt && HasNoExtension(path)) path += CString(u".") + ofn->lpstrDefExt;
    if (static_cast<DWORD>(path.GetLength()) >= ofn->nMaxFile) return FALSE;
    std::copy_n(path.GetString(), path.GetLength() + 1, ofn->lpstrFile);
    return TRUE;
}
} // namespace

void SetFileDialogHook(FileDialogHook hook) { Hook() = std::move(hook); }
BOOL GetOpenFileName(LPOPENFILENAME lpofn) { return Ask(TRUE, lpofn); }
BOOL GetSaveFileName(LPOPENFILENAME lpofn) { return Ask(FALSE, lpofn); }
