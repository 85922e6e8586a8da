// Internal state of an EDIT window, shared by its message handling and its view.
#pragma once
#include <vector>
#include "edit_model.h"
#include "editctl.h"
#include "wndobj.h"

namespace user {

struct EditState : ClassData {
    EditModel m;
    HWND hwnd = nullptr;
    HFONT hFont = nullptr;
    WCHAR chPassword = 0;
    int nLeftMargin = 0;
    int nRightMargin = 0;
    int nScroll = 0;             // pixels of text scrolled out on the left
    bool bDragging = false;
    bool bModified = false;
    // The shown text's x of every boundary from its start, kept across changes: a change redoes
    // only what follows the first character that differs, so that a caret move or a one-character
    // change does not measure the whole text again.
    struct Widths {
        std::u16string text;
        HFONT hFont = nullptr;
        std::vector<int> xs{0};
    } widths;
};

EditState* EditOf(HWND hwnd);
void RegisterSystemClasses();

// The view: measurement in the window's font, scrolling, the caret and painting.
int EditTextX(EditState* e, int nPos);                 // client x of the boundary before nPos
int EditPosFromX(EditState* e, int x);                 // the nearest boundary to client x
int EditTextHeight(EditState* e);
bool EditFits(EditState* e, const std::u16string& text);   // within the width, without ES_AUTOHSCROLL
void EditScrollToCaret(EditState* e);
void EditPlaceCaret(EditState* e);
void EditPaint(EditState* e);

} // namespace user
