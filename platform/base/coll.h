// CObject and CObArray: the MFC root class and its array of object pointers.
#pragma once
#include <vector>
#include "wintypes.h"

class CObject {
public:
    virtual ~CObject() = default;
};

// Holds pointers; it does not own or delete them, as in MFC.
class CObArray : public CObject {
public:
    int GetSize() const { return static_cast<int>(m_data.size()); }
    int GetCount() const { return GetSize(); }
    int GetUpperBound() const { return GetSize() - 1; }
    CObject* GetAt(int i) const { return m_data.at(i); }
    void SetAt(int i, CObject* p) { m_data.at(i) = p; }
    CObject*& ElementAt(int i) { return m_data.at(i); }
    CObject* operator[](int i) const { return GetAt(i); }
    int Add(CObject* p) { m_data.push_back(p); return GetUpperBound(); }
    void InsertAt(int i, CObject* p, int nCount = 1);
    void RemoveAt(int i, int nCount = 1);
    void RemoveAll() { m_data.clear(); }
    void SetSize(int n) { m_data.resize(n > 0 ? n : 0, nullptr); }

private:
    std::vector<CObject*> m_data;
};
