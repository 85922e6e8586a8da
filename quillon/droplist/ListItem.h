// CListItem: one item of the control's list, an immutable text.
#pragma once
#include <utility>
#include "base/coll.h"
#include "base/cstring.h"

class CListItem : public CObject {
public:
    explicit CListItem(CString text) : m_strItem(std::move(text)) {}
    ~CListItem() override = default;
    const CString& GetText() const { return m_strItem; }

private:
    CString m_strItem;
};
