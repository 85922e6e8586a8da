// Internal state of a combo box, shared by its window procedure and its drop-down list.
#pragma once
#include <string>
#include <vector>
#include "dlg_p.h"

namespace user {

struct ComboState : ClassData {
    HFONT hFont = nullptr;
    std::vector<std::u16string> lines;
    int nCur = -1;                 // the selected line, -1 for none
    bool bTypedSinceSelect = false;
    bool bSettingText = false;     // the combo writes its edit: no typing to hear
    HWND hwndEdit = nullptr;
    HWND hwndList = nullptr;       // the popup list while it is open
    bool bDropped = false;
    bool bButtonDown = false;
    int nDropHeight = 0;           // the height given at creation: field and open list together
    int nTop = 0;                  // the first line the list shows
    int nHot = -1;                 // the line under the mouse in the open list
};

ComboState* ComboOf(HWND hCombo);
int ComboItemHeight(HWND hCombo);
void PickLine(HWND hCombo, int i);
// Opens or closes the list; bSelEndOk tells whether a closing keeps the pick (CBN_SELENDOK) or not.
void ComboShowList(HWND hCombo, bool bShow, bool bSelEndOk);
int ComboListRows(HWND hCombo);
void ComboListScroll(HWND hCombo, int nLines);
void ComboListScrollTo(HWND hCombo, int nLine);
int FindLine(const ComboState* c, int nAfter, const std::u16string& s, bool bExact);
void ComboNotify(HWND hCombo, WORD code);
LRESULT CALLBACK ComboEditProc(HWND, UINT, WPARAM, LPARAM);

} // namespace user
