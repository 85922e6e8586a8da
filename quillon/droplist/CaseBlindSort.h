// The partition exchange sort of the items and of the list's candidates: a middle pivot held by
// value, every comparison case-blind, and pointers or indices exchanged, never texts.
#pragma once
#include "base/cstring.h"

// Sorts the range nLeft..nRight, both inclusive, of what textAt(i) reads, exchange(i, j) swapping two
// places. Not stable: what compares equal ends in the order the exchanges leave, and a range that
// already strictly ascends is left as it is.
template <class TextAt, class Exchange>
void CaseBlindQuickSort(int nLeft, int nRight, const TextAt& textAt, const Exchange& exchange)
{
    const CString pivot = textAt((nLeft + nRight) / 2); // the middle, rounded down: the bounds are never negative
    int i = nLeft, j = nRight;
    do {
        while (textAt(i).CompareNoCase(pivot) < 0 && i < nRight) ++i;
        while (pivot.CompareNoCase(textAt(j)) < 0 && j > nLeft) --j;
        if (i > j) break;
        exchange(i, j);
        ++i;
        --j;
    } while (i <= j);
    if (nLeft < j) CaseBlindQuickSort(nLeft, j, textAt, exchange);
    if (i < nRight) CaseBlindQuickSort(i, nRight, textAt, exchange);
}
