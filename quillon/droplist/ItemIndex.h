// CItemIndex: the item texts in sorted orders, case-blind and exact, so that an auto-complete search
// is a binary search for the range of items that start with the typed text and one pass over that
// range, instead of a copy and a comparison of every item at every key. The results are those of
// the plain scans of the array: the same items, in array order, with the same first match.
#pragma once
#include <string_view>
#include <vector>
#include "base/coll.h"
#include "base/cstring.h"

class CItemIndex {
public:
    explicit CItemIndex(const CObArray& items) : m_items(items) {}

    // The array changed: the next search builds the index anew.
    void Invalidate() { m_blind.bBuilt = m_exact.bBuilt = m_bFolded = false; }

    // Appends to out, ascending, the index of every item longer than strText whose first
    // strText.GetLength() units equal strText, compared exactly or case-blind. The text is a
    // window's text and holds no NUL.
    void FindExtending(const CString& strText, BOOL bMatchCase, std::vector<SHORT>& out);
    // The lowest index of an item whose first strPrefix.GetLength() units equal strPrefix, or -1.
    int FindFirstStarting(const CString& strPrefix, BOOL bMatchCase);
    // True when the items listed have strictly ascending texts as CompareNoCase orders them, so that
    // sorting them would move nothing.
    bool IsCaseBlindAscending(const std::vector<SHORT>& list);

    // What the index holds now, in bytes.
    size_t BytesHeld() const;

private:
    // Item indices sorted by key, and for each item the sorted position of the first item with an
    // equal key: a range of sorted positions holds an item exactly when it holds that position.
    // blockMin holds the lowest item index of each block of kBlock sorted positions, so that the
    // lowest index of a range reads whole blocks at once.
    struct Order {
        static constexpr int kBlock = 64;
        bool bBuilt = false;
        std::vector<SHORT> sorted;
        std::vector<SHORT> group;
        std::vector<SHORT> blockMin;
    };
    struct Range {
        int lo, hi;
    };

    void FoldTexts();
    const Order& Blind();
    const Order& Exact();
    template <class Key> void BuildOrder(Order& order, Key key);
    static void BuildBlockMinima(Order& order);
    static int LowestIndex(const Order& order, Range r);
    template <class Key> Range Find(const Order& order, Key key, std::u16string_view prefix) const;
    Range FindRange(const CString& strText, BOOL bMatchCase, std::u16string& prefix);
    std::u16string_view BlindKey(int i) const { return {m_folded.data() + m_start[i], Length(i)}; }
    std::u16string_view ExactKey(int i) const;
    size_t Length(int i) const { return static_cast<size_t>(m_start[i + 1] - m_start[i]); }

    const CObArray& m_items;
    bool m_bFolded = false;
    bool m_bHasNul = false;          // CompareNoCase stops at a NUL; the sorted orders do not
    std::u16string m_folded;         // every item folded as CompareNoCase folds, one after another
    std::vector<int> m_start;        // where each item starts in m_folded, and the end
    Order m_blind, m_exact;
};
