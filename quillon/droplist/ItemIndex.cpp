// CItemIndex: sorted orders of the item texts and the prefix look-ups of auto-complete.
#include "droplist/ItemIndex.h"
#include <algorithm>
#include <numeric>
#include "droplist/ListItem.h"

namespace {

// Negative when key sorts before every key that starts with prefix, zero when it starts with it.
int ComparePrefix(std::u16string_view key, std::u16string_view prefix)
{
    return key.substr(0, prefix.size()).compare(prefix);
}

std::u16string Folded(const CString& s)
{
    std::u16string out = s.str();
    for (char16_t& ch : out) ch = ToLowerUnit(ch);
    return out;
}

} // namespace

std::u16string_view CItemIndex::ExactKey(int i) const
{
    return static_cast<const CListItem*>(m_items[i])->GetText().str();
}

void CItemIndex::FoldTexts()
{
    if (m_bFolded) return;
    const int n = m_items.GetSize();
    m_folded.clear();
    m_start.assign(n + 1, 0);
    m_bHasNul = false;
    for (int i = 0; i < n; ++i) {
        m_start[i] = static_cast<int>(m_folded.size());
        for (char16_t ch : ExactKey(i)) {
            m_bHasNul |= ch == 0;
            m_folded.push_back(ToLowerUnit(ch));
        }
    }
    m_start[n] = static_cast<int>(m_folded.size());
    m_bFolded = true;
}

template <class Key> void CItemIndex::BuildOrder(Order& order, Key key)
{
    const int n = m_items.GetSize();
    order.sorted.resize(n);
    std::iota(order.sorted.begin(), order.sorted.end(), SHORT(0));
    std::sort(order.sorted.begin(), order.sorted.end(), [&](SHORT a, SHORT b) {
        int c = key(a).compare(key(b));
        return c != 0 ? c < 0 : a < b;
    });
    order.group.resize(n);
    for (int p = 0; p < n; ++p) {
        SHORT i = order.sorted[p];
        bool bSameAsPrevious = p > 0 && key(i) == key(order.sorted[p - 1]);
        // Positions stay below the array's limit of 32760.
        order.group[i] = bSameAsPrevious ? order.group[order.sorted[p - 1]] : static_cast<SHORT>(p);
    }
    BuildBlockMinima(order);
    order.bBuilt = true;
}

void CItemIndex::BuildBlockMinima(Order& order)
{
    const int n = static_cast<int>(order.sorted.size());
    order.blockMin.clear();
    for (int p = 0; p < n; p += Order::kBlock)
        order.blockMin.push_back(*std::min_element(order.sorted.begin() + p, order.sorted.begin() + std::min(p + Order::kBlock, n)));
}

// The lowest item index at the sorted positions of a non-empty range: the ragged ends one by one,
// the whole blocks between them by their minima.
int CItemIndex::LowestIndex(const Order& order, Range r)
{
    const auto at = [&](int p) { return order.sorted.begin() + p; };
    const int firstWhole = (r.lo + Order::kBlock - 1) / Order::kBlock, endWhole = r.hi / Order::kBlock;
    if (firstWhole >= endWhole) return *std::min_element(at(r.lo), at(r.hi));
    int lowest = *std::min_element(order.blockMin.begin() + firstWhole, order.blockMin.begin() + endWhole);
    if (r.lo < firstWhole * Order::kBlock) lowest = std::min<int>(lowest, *std::min_element(at(r.lo), at(firstWhole * Order::kBlock)));
    if (endWhole * Order::kBlock < r.hi) lowest = std::min<int>(lowest, *std::min_element(at(endWhole * Order::kBlock), at(r.hi)));
    return lowest;
}

const CItemIndex::Order& CItemIndex::Blind()
{
    FoldTexts();
    if (!m_blind.bBuilt) BuildOrder(m_blind, [this](int i) { return BlindKey(i); });
    return m_blind;
}

const CItemIndex::Order& CItemIndex::Exact()
{
    FoldTexts();
    if (!m_exact.bBuilt) BuildOrder(m_exact, [this](int i) { return ExactKey(i); });
    return m_exact;
}

template <class Key> CItemIndex::Range CItemIndex::Find(const Order& order, Key key, std::u16string_view prefix) const
{
    auto first = std::partition_point(order.sorted.begin(), order.sorted.end(),
                                      [&](SHORT i) { return ComparePrefix(key(i), prefix) < 0; });
    auto last = std::partition_point(first, order.sorted.end(),
                                     [&](SHORT i) { return ComparePrefix(key(i), prefix) == 0; });
    return Range{static_cast<int>(first - order.sorted.begin()), static_cast<int>(last - order.sorted.begin())};
}

CItemIndex::Range CItemIndex::FindRange(const CString& strText, BOOL bMatchCase, std::u16string& prefix)
{
    prefix = bMatchCase ? strText.str() : Folded(strText);
    if (bMatchCase) return Find(Exact(), [this](int i) { return ExactKey(i); }, prefix);
    return Find(Blind(), [this](int i) { return BlindKey(i); }, prefix);
}

void CItemIndex::FindExtending(const CString& strText, BOOL bMatchCase, std::vector<SHORT>& out)
{
    std::u16string prefix;
    const Range r = FindRange(strText, bMatchCase, prefix);
    const Order& order = bMatchCase ? m_exact : m_blind;
    const size_t L = prefix.size();
    const int n = m_items.GetSize();
    const int k = r.hi - r.lo;
    if (k == 0) return;
    if (k * 8 < n) {
        // Few matches: take them from the sorted range and put them back in array order.
        const size_t first = out.size();
        for (int p = r.lo; p < r.hi; ++p)
            if (Length(order.sorted[p]) > L) out.push_back(order.sorted[p]);
        std::sort(out.begin() + static_cast<std::ptrdiff_t>(first), out.end());
        return;
    }
    // Many: one pass over the array, which yields them in order. The matches lie scattered over the
    // array, so a branch on each would often be mispredicted: every index is written, and the count
    // moves past it only when it matches.
    const size_t first = out.size();
    out.resize(first + static_cast<size_t>(n));
    SHORT* dst = out.data() + first;
    const unsigned width = static_cast<unsigned>(k);
    size_t kept = 0;
    for (int i = 0; i < n; ++i) {
        dst[kept] = static_cast<SHORT>(i);
        const bool bInRange = static_cast<unsigned>(order.group[i] - r.lo) < width;
        kept += static_cast<size_t>(bInRange & (Length(i) > L));
    }
    out.resize(first + kept);
}

int CItemIndex::FindFirstStarting(const CString& strPrefix, BOOL bMatchCase)
{
    std::u16string prefix;
    const Range r = FindRange(strPrefix, bMatchCase, prefix);
    const Order& order = bMatchCase ? m_exact : m_blind;
    if (r.lo == r.hi) return -1;
    return LowestIndex(order, r);
}

bool CItemIndex::IsCaseBlindAscending(const std::vector<SHORT>& list)
{
    const Order& order = Blind();
    if (m_bHasNul) return false; // the sorted order then differs from CompareNoCase's: let the sort decide
    for (size_t k = 1; k < list.size(); ++k)
        if (order.group[list[k - 1]] >= order.group[list[k]]) return false;
    return true;
}

size_t CItemIndex::BytesHeld() const
{
    auto bytes = [](const auto& v) { return v.capacity() * sizeof(v[0]); };
    return m_folded.capacity() * sizeof(char16_t) + bytes(m_start) + bytes(m_blind.sorted) + bytes(m_blind.group) +
           bytes(m_blind.blockMin) + bytes(m_exact.sorted) + bytes(m_exact.group) + bytes(m_exact.blockMin);
}
