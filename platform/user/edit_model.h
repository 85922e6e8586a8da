// The text and selection of a single-line edit control, apart from its window: the rules of
// typing, Backspace, Delete, caret moves and word selection on plain data.
#pragma once
#include <string>

namespace user {

struct EditModel {
    std::u16string text;
    int nAnchor = 0;             // the fixed end of the selection
    int nCaret = 0;              // the moving end, where the caret stands
    int nLimit = 32767;          // characters the user may type

    int SelStart() const { return nAnchor < nCaret ? nAnchor : nCaret; }
    int SelEnd() const { return nAnchor < nCaret ? nCaret : nAnchor; }
    bool HasSel() const { return nAnchor != nCaret; }
    int Length() const { return (int)text.size(); }

    // EM_SETSEL: a start of -1 removes the selection; a negative end means the end of the text;
    // the caret goes to the end given, so the two may come in either order.
    void SetSel(int nStart, int nEnd);
    void MoveTo(int nPos, bool bExtend);
    // Replaces the selection; false when nothing changed. The caret ends after the new text.
    bool ReplaceSel(const std::u16string& s);
    // How much of s fits under the limit in place of the selection.
    size_t Room(size_t nWanted) const;
    bool Backspace();
    bool DeleteForward();
    int WordStart(int nPos) const;
    int WordEnd(int nPos) const;
    void SelectWordAt(int nPos);
};

} // namespace user
