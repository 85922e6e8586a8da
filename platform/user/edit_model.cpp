// The single-line edit control's rules on plain text: selection, typing, Backspace, Delete, words.
#include "edit_model.h"
#include <algorithm>

namespace user {

namespace {

bool IsSpace(char16_t ch) { return ch == u' ' || ch == u'\t'; }

} // namespace

void EditModel::SetSel(int nStart, int nEnd)
{
    int len = Length();
    if (nStart == -1) {
        nAnchor = nCaret;
        return;
    }
    if (nStart < 0 || nStart > len) nStart = len;
    if (nEnd < 0 || nEnd > len) nEnd = len;
    nAnchor = nStart;
    nCaret = nEnd;
}

void EditModel::MoveTo(int nPos, bool bExtend)
{
    nCaret = std::clamp(nPos, 0, Length());
    if (!bExtend) nAnchor = nCaret;
}

size_t EditModel::Room(size_t nWanted) const
{
    long free = (long)nLimit - (Length() - (SelEnd() - SelStart()));
    return free <= 0 ? 0 : std::min(nWanted, (size_t)free);
}

bool EditModel::ReplaceSel(const std::u16string& s)
{
    int a = SelStart(), b = SelEnd();
    if (a == b && s.empty()) return false;
    text.replace(a, b - a, s);
    nAnchor = nCaret = a + (int)s.size();
    return true;
}

bool EditModel::Backspace()
{
    if (HasSel()) return ReplaceSel(u"");
    if (nCaret == 0) return false;
    text.erase(nCaret - 1, 1);
    nAnchor = --nCaret;
    return true;
}

bool EditModel::DeleteForward()
{
    if (HasSel()) return ReplaceSel(u"");
    if (nCaret >= Length()) return false;
    text.erase(nCaret, 1);
    nAnchor = nCaret;
    return true;
}

// A word is a run of non-blanks together with the blanks that follow it.
int EditModel::WordStart(int nPos) const
{
    int i = std::clamp(nPos, 0, Length());
    while (i > 0 && IsSpace(text[i - 1])) --i;
    while (i > 0 && !IsSpace(text[i - 1])) --i;
    return i;
}

int EditModel::WordEnd(int nPos) const
{
    int i = std::clamp(nPos, 0, Length());
    while (i < Length() && !IsSpace(text[i])) ++i;
    while (i < Length() && IsSpace(text[i])) ++i;
    return i;
}

void EditModel::SelectWordAt(int nPos)
{
    nPos = std::clamp(nPos, 0, Length());
    if (nPos < Length() && IsSpace(text[nPos])) {
        // On blanks: the blanks alone.
        int a = nPos, b = nPos;
        while (a > 0 && IsSpace(text[a - 1])) --a;
        while (b < Length() && IsSpace(text[b])) ++b;
        nAnchor = a;
        nCaret = b;
        return;
    }
    int start = nPos;
    while (start > 0 && !IsSpace(text[start - 1])) --start;
    nAnchor = start;
    nCaret = WordEnd(nPos);
}

} // namespace user
