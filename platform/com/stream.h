// A memory IStream (stand-in for CreateStreamOnHGlobal) and typed helpers to read and write it.
#pragma once
#include <vector>
#include "ocidl.h"

// Creates a stream over a copy of the given bytes, positioned at the start.
HRESULT CreateStreamOnHGlobal(std::vector<BYTE> initial, IStream** ppstm);
// The whole content of a stream made by CreateStreamOnHGlobal.
std::vector<BYTE> GetStreamBytes(IStream* pStm);

// Little-endian values, as the real platform lays them out in memory.
HRESULT StreamWrite(IStream* pStm, const void* pv, ULONG cb);
HRESULT StreamRead(IStream* pStm, void* pv, ULONG cb); // S_FALSE at the end of the stream
HRESULT StreamWriteString(IStream* pStm, const CString& s);   // 32-bit length, then UTF-16 units
HRESULT StreamReadString(IStream* pStm, CString& s);
