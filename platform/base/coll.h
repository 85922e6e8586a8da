// CObject and CObArray: the MFC root class and its array of object pointers, and the exceptions
// the framework throws when memory runs out.
#pragma once
#include <cstddef>
#include <vector>
#include "wintypes.h"

class CObject {
public:
    virtual ~CObject() = default;
    // A failed allocation throws CMemoryException*, as the framework's new handler does.
    static void* operator new(std::size_t nSize);
    static void operator delete(void* p) noexcept;
};

// MFC's exceptions are thrown as pointers; the catcher frees one with Delete().
class CException : public CObject {
public:
    explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}
    void Delete()
    {
        if (m_bAutoDelete) delete this;
    }

private:
    BOOL m_bAutoDelete;
};

class CMemoryException : public CException {
public:
    using CException::CException;
};

// Throws the one static CMemoryException, which needs no memory of its own.
[[noreturn]] void AfxThrowMemoryException();
// Stand-in: after nSucceeding more allocations of objects (CObject's new) or of array room, the next
// one fails with CMemoryException, so that tests can reach the out-of-memory paths; -1 fails none.
void AfxFailAllocationAfter(int nSucceeding);

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
