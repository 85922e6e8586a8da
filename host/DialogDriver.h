// CDialogDriver: what a person does with a modal dialog or property frame, done through the window
// system for a host's handler: pick a tab, read and change fields as typing and clicking would, and
// press buttons.
#pragma once
#include <string>
#include <vector>
#include "base/cstring.h"
#include "user/winuser.h"

class CDialogDriver {
public:
    explicit CDialogDriver(HWND hDlg) : m_hDlg(hDlg) {}

    HWND Window() const { return m_hDlg; }
    CString Caption() const;
    // A frame's tab by its title; false when there is no such tab (or no frame).
    bool SelectPage(const CString& title);
    std::vector<CString> PageTitles() const;
    // The field with the id on the frame's current page, else on the dialog; null when there is none.
    HWND Field(int id) const;

    CString Text(HWND field) const;
    // As typed: the old text selected and replaced, so that the field hears the change.
    void SetText(HWND field, const CString& text);
    bool Checked(HWND field) const;
    // A click when the box is not already as asked.
    void SetChecked(HWND field, bool checked);
    int Index(HWND field) const;
    // As picked from the list: the line becomes the selection and the owner hears CBN_SELCHANGE.
    void SetIndex(HWND field, int index);
    std::vector<CString> Lines(HWND field) const;

    // "OK", "Cancel" or "Apply"; false for another name.
    bool Press(const CString& name);
    // Clicks the button with the id; false when there is none.
    bool Press(int id);
    bool IsOpen() const { return ::IsWindow(m_hDlg) && ::IsWindowVisible(m_hDlg); }

private:
    bool IsFrame() const;
    HWND m_hDlg;
};
