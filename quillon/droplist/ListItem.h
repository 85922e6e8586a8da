// CListItem: one item of the control's list, an immutable text.
#pragma once
#include "base/coll.h"
#include "base/cstring.h"

class CListItem : public CObject {
public:
    explicit CListItem(const CString& text) : m_strItem(text) {}
    ~CListItem() override = default;
    const CString& GetText() const { return m_strItem; }

private:
    CString m_strItem;
};
