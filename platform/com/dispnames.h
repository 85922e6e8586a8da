// GetIDsOfNames over a fixed table of member names, found without regard to case.
#pragma once
#include "base/cstring.h"
#include "unknwn.h"

// Each row needs a name and an id; unknown names get DISPID_UNKNOWN and the call fails.
template <class Row, size_t N>
HRESULT IdsOfNames(const Row (&table)[N], LPCOLESTR* names, UINT count, DISPID* ids)
{
    HRESULT hr = S_OK;
    for (UINT i = 0; i < count; ++i) {
        ids[i] = DISPID_UNKNOWN;
        for (const auto& row : table)
            if (CString(names[i]).CompareNoCase(row.name) == 0) ids[i] = row.id;
        if (ids[i] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
}
