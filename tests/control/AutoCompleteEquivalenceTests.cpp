// Auto-complete's indexed searches against plain scans of the item array, on seeded random item sets.
#include <random>
#include "Harness.h"
#include "control/QuillonCtrl.h"
#include "droplist/CaseBlindSort.h"
#include "user/winuser.h"

namespace {

// The items' own sort, over any vector whose elements have a text: the index is under test here,
// not the sort.
template <class T, class TextOf> void QuickSort(std::vector<T>& v, TextOf text)
{
    if (v.size() >= 2)
        CaseBlindQuickSort(0, static_cast<int>(v.size()) - 1, [&](int i) { return text(v[i]); },
                           [&](int i, int j) { std::swap(v[i], v[j]); });
}

// The item array and both passes as plain scans: every item copied and compared, in array order.
struct PlainScans {
    std::vector<CString> items;
    bool bSorted = false, bMatchCase = false, bDirty = true;

    void Add(const CString& s) { items.push_back(s), bDirty = true; }
    void Remove(int i) { items.erase(items.begin() + i), bDirty = true; }
    bool Same(const CString& a, const CString& b) const { return (bMatchCase ? a.Compare(b) : a.CompareNoCase(b)) == 0; }

    void EnsureSorted()
    {
        if (!bSorted || !bDirty) return;
        QuickSort(items, [](const CString& s) { return s; });
        bDirty = false;
    }
    // The candidates' item indices in the order the list shows them.
    std::vector<SHORT> Suggest(const CString& strEdit)
    {
        EnsureSorted();
        const int len = strEdit.GetLength();
        std::vector<std::pair<CString, SHORT>> found;
        for (size_t i = 0; i < items.size(); ++i) {
            const CString strItem = items[i];
            if (strItem.GetLength() > len && Same(strItem.Left(len), strEdit)) found.emplace_back(strItem, SHORT(i));
        }
        if (bSorted) QuickSort(found, [](const auto& c) { return c.first; });
        std::vector<SHORT> sources;
        for (const auto& c : found) sources.push_back(c.second);
        return sources;
    }
    // The first item that completes the text up to the caret, or -1, and the text it leaves.
    std::pair<int, CString> Append(const CString& strText, int nCaret)
    {
        EnsureSorted();
        for (size_t i = 0; i < items.size(); ++i) {
            const CString strItem = items[i];
            if (strItem.GetLength() < nCaret) continue;
            const CString strTyped = strText.Left(nCaret);
            if (Same(strItem.Left(nCaret), strTyped)) return {static_cast<int>(i), strTyped + strItem.Mid(nCaret)};
        }
        return {-1, strText};
    }
};

// Letters that fold in interesting ways: ASCII and Latin-1 pairs, Greek, the Kelvin sign (which
// lowers to 'k'), and a space.
constexpr char16_t kLetters[] = u"aAbBäÄωΩkK\u212A ";
constexpr int kLetterCount = static_cast<int>(std::size(kLetters)) - 1;
const char16_t* const kFixedItems[] = {u"", u"a", u"ab", u"apple", u"Apple", u"APPLE", u"apple pie",
                                       u"Ärger", u"ärger", u"Ωmega", u"ωmega", u"kelvin", u"\u212Aelvin"};
constexpr int kSets = 16, kCasesPerSet = 26, kMaxSetSize = 1200, kMaxTail = 3, kMaxWordLength = 6;

class AutoCompleteEquivalence : public ControlTest, public ::testing::WithParamInterface<int> {
protected:
    std::mt19937 m_random{static_cast<unsigned>(GetParam())};
    PlainScans m_plain;
    CControlSite* m_q = nullptr;
    CQuillonCtrl* m_c = nullptr;

    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }
    char16_t Letter() { return kLetters[Below(kLetterCount)]; }

    // Short words over few letters, so that prefixes, duplicates and case twins are common.
    CString RandomItem()
    {
        if (Below(4) == 0) return kFixedItems[Below(static_cast<int>(std::size(kFixedItems)))];
        if (Below(6) == 0 && !m_plain.items.empty()) return m_plain.items[Below(static_cast<int>(m_plain.items.size()))];
        CString s;
        for (int n = Below(kMaxWordLength + 1); n > 0; --n) s += Letter();
        return s;
    }
    // Often nothing, so that the typed letter alone matches many items; else a prefix of an item with
    // its case changed here and there, then a few random letters.
    CString RandomText()
    {
        CString s;
        if (Below(3) == 0) return s;
        if (!m_plain.items.empty()) {
            const CString& item = m_plain.items[Below(static_cast<int>(m_plain.items.size()))];
            s = item.Left(Below(item.GetLength() + 1));
            for (int i = 0; i < s.GetLength(); ++i)
                if (Below(4) == 0) s.SetAt(i, Below(2) ? ToUpperUnit(s[i]) : ToLowerUnit(s[i]));
        }
        for (int n = Below(2) * Below(kMaxTail + 1); n > 0; --n) s += Letter();
        return s;
    }
    void AddItem(const CString& s)
    {
        m_c->AddItem(s);
        m_plain.Add(s);
    }
    void RemoveItem(int i)
    {
        m_c->RemoveItem(static_cast<SHORT>(i));
        m_plain.Remove(i);
    }
    void SetOptions(bool bSorted, bool bMatchCase)
    {
        Put(m_q, u"Sorted", COleVariant(SHORT(bSorted), VT_BOOL));
        Put(m_q, u"MatchCase", COleVariant(SHORT(bMatchCase), VT_BOOL));
        m_plain.bSorted = bSorted;
        m_plain.bMatchCase = bMatchCase;
    }
    HWND Edit() { return reinterpret_cast<HWND>(static_cast<uintptr_t>(Call(m_q, u"EditHwnd").lVal)); }
    std::vector<CString> ControlItems()
    {
        std::vector<CString> out;
        for (int i = 0; i < m_c->m_items.GetSize(); ++i) out.push_back(m_c->ItemAt(i));
        return out;
    }

    // Puts the text into the edit with the caret at nCaret, types one letter there and compares
    // what both passes did with the plain scans.
    void TypeAndCompare(const CString& before, int nCaret)
    {
        const char16_t ch = Letter();
        const CString typed = before.Left(nCaret) + ch + before.Mid(nCaret);
        ::SetWindowText(Edit(), before);
        ::SendMessage(Edit(), EM_SETSEL, nCaret, nCaret);
        SCOPED_TRACE("typed '" + ToUtf8(CString(ch)) + "' into \"" + ToUtf8(before) + "\" at " + std::to_string(nCaret));
        m_host.Type(CString(ch));

        const std::vector<SHORT> candidates = m_plain.Suggest(typed);
        const auto [found, completed] = m_plain.Append(typed, nCaret + 1);
        EXPECT_EQ(ControlItems(), m_plain.items) << "array order after the search's sort";
        EXPECT_EQ(m_c->m_dropList.m_autoItems, candidates);
        EXPECT_EQ(bool(m_c->m_dropList.m_bShown), !candidates.empty());
        EXPECT_EQ(CWnd::FromHandle(Edit())->GetWindowText(), completed);
        EXPECT_EQ(GetText(m_q, u"Text"), completed);
        EXPECT_EQ(m_c->AutoAppend(nCaret + 1), found) << "the completed text completes to the same item";
    }
};

} // namespace

// Each set: random items, Sorted and MatchCase from the seed, typing anywhere in the text; a third of
// the way an item removed, two thirds of the way items added and the options flipped.
TEST_P(AutoCompleteEquivalence, IndexedSearchesMatchPlainScans)
{
    m_q = Create();
    m_c = Inside(m_q);
    Put(m_q, u"AutoComplete", COleVariant(SHORT(AutoBoth)));
    Put(m_q, u"AutoFindSize", COleVariant(SHORT(1)));
    SetOptions(GetParam() & 1, GetParam() & 2);
    for (int n = 1 + Below(kMaxSetSize); n > 0; --n) AddItem(RandomItem());
    m_host.Pump();
    m_host.Focus(*m_q);
    for (int k = 0; k < kCasesPerSet; ++k) {
        if (k == kCasesPerSet / 3) RemoveItem(Below(static_cast<int>(m_plain.items.size())));
        if (k == kCasesPerSet * 2 / 3) {
            for (int n = 1 + Below(kMaxTail); n > 0; --n) AddItem(RandomItem());
            SetOptions(!m_plain.bSorted, Below(2));
        }
        const CString before = RandomText();
        TypeAndCompare(before, Below(2) ? before.GetLength() : Below(before.GetLength() + 1));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, AutoCompleteEquivalence, ::testing::Range(1, 1 + kSets));
