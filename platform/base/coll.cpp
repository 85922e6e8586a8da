// CObArray insertion and removal.
#include "coll.h"
#include <stdexcept>

void CObArray::InsertAt(int i, CObject* p, int nCount)
{
    if (i < 0 || i > GetSize() || nCount < 0) throw std::out_of_range("CObArray::InsertAt");
    m_data.insert(m_data.begin() + i, nCount, p);
}

void CObArray::RemoveAt(int i, int nCount)
{
    if (i < 0 || nCount < 0 || i + nCount > GetSize()) throw std::out_of_range("CObArray::RemoveAt");
    m_data.erase(m_data.begin() + i, m_data.begin() + i + nCount);
}
