// CObject's allocation, the memory exception, and CObArray insertion and removal.
#include "coll.h"
#include <new>
#include <stdexcept>

namespace {

int g_nAllocationsBeforeFailure = -1;

// Counts one allocation; true for the one that is to fail.
bool ArrangedFailure()
{
    if (g_nAllocationsBeforeFailure < 0) return false;
    return g_nAllocationsBeforeFailure-- == 0;
}

} // namespace

void AfxFailAllocationAfter(int nSucceeding) { g_nAllocationsBeforeFailure = nSucceeding; }

void AfxThrowMemoryException()
{
    static CMemoryException simpleMemoryException(FALSE);
    throw &simpleMemoryException;
}

void* CObject::operator new(std::size_t nSize)
{
    if (ArrangedFailure()) AfxThrowMemoryException();
    try {
        return ::operator new(nSize);
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

void CObject::operator delete(void* p) noexcept { ::operator delete(p); }

void CObArray::InsertAt(int i, CObject* p, int nCount)
{
    if (i < 0 || i > GetSize() || nCount < 0) throw std::out_of_range("CObArray::InsertAt");
    if (ArrangedFailure()) AfxThrowMemoryException();
    try {
        m_data.insert(m_data.begin() + i, nCount, p);
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

void CObArray::RemoveAt(int i, int nCount)
{
    if (i < 0 || nCount < 0 || i + nCount > GetSize()) throw std::out_of_range("CObArray::RemoveAt");
    m_data.erase(m_data.begin() + i, m_data.begin() + i + nCount);
}
