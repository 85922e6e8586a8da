// The memory stream and its typed read and write helpers.
#include "stream.h"
#include <algorithm>
#include <cstring>

namespace {

class CMemoryStream final : public IStream {
public:
    explicit CMemoryStream(std::vector<BYTE> bytes) : m_bytes(std::move(bytes)) {}
    HRESULT QueryInterface(REFIID riid, void** ppv) override
    {
        if (riid == IID_IUnknown || riid == IID_IStream) { *ppv = static_cast<IStream*>(this); AddRef(); return S_OK; }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return m_ref.AddRefImpl(); }
    ULONG Release() override { return m_ref.ReleaseImpl(this); }

    HRESULT Read(void* pv, ULONG cb, ULONG* pcbRead) override
    {
        ULONG n = static_cast<ULONG>(std::min<size_t>(cb, m_bytes.size() - m_pos));
        if (n) std::memcpy(pv, m_bytes.data() + m_pos, n);
        m_pos += n;
        if (pcbRead) *pcbRead = n;
        return n == cb ? S_OK : S_FALSE;
    }
    HRESULT Write(const void* pv, ULONG cb, ULONG* pcbWritten) override
    {
        if (m_pos + cb > m_bytes.size()) m_bytes.resize(m_pos + cb);
        if (cb) std::memcpy(m_bytes.data() + m_pos, pv, cb);
        m_pos += cb;
        if (pcbWritten) *pcbWritten = cb;
        return S_OK;
    }
    HRESULT Seek(LONGLONG move, DWORD origin, uint64_t* pNew) override
    {
        LONGLONG base = origin == STREAM_SEEK_SET ? 0 : origin == STREAM_SEEK_CUR ? LONGLONG(m_pos) : LONGLONG(m_bytes.size());
        if (base + move < 0) return E_INVALIDARG;
        m_pos = static_cast<size_t>(base + move);
        if (pNew) *pNew = m_pos;
        return S_OK;
    }
    const std::vector<BYTE>& Bytes() const { return m_bytes; }

private:
    CComRefCount<CMemoryStream> m_ref;
    std::vector<BYTE> m_bytes;
    size_t m_pos = 0;
};

} // namespace

HRESULT CreateStreamOnHGlobal(std::vector<BYTE> initial, IStream** ppstm)
{
    if (!ppstm) return E_POINTER;
    *ppstm = new CMemoryStream(std::move(initial));
    return S_OK;
}

std::vector<BYTE> GetStreamBytes(IStream* pStm)
{
    auto* mem = dynamic_cast<CMemoryStream*>(pStm);
    return mem ? mem->Bytes() : std::vector<BYTE>();
}

HRESULT StreamWrite(IStream* pStm, const void* pv, ULONG cb) { return pStm->Write(pv, cb, nullptr); }

HRESULT StreamRead(IStream* pStm, void* pv, ULONG cb)
{
    ULONG got = 0;
    HRESULT hr = pStm->Read(pv, cb, &got);
    return FAILED(hr) ? hr : (got == cb ? S_OK : S_FALSE);
}

HRESULT StreamWriteString(IStream* pStm, const CString& s)
{
    uint32_t n = s.GetLength();
    HRESULT hr = StreamWrite(pStm, &n, sizeof n);
    return SUCCEEDED(hr) ? StreamWrite(pStm, s.GetString(), n * sizeof(char16_t)) : hr;
}

HRESULT StreamReadString(IStream* pStm, CString& s)
{
    uint32_t n = 0;
    HRESULT hr = StreamRead(pStm, &n, sizeof n);
    if (hr != S_OK) return hr;
    uint64_t here = 0, end = 0;
    pStm->Seek(0, STREAM_SEEK_CUR, &here);
    pStm->Seek(0, STREAM_SEEK_END, &end);
    pStm->Seek(static_cast<LONGLONG>(here), STREAM_SEEK_SET, nullptr);
    if (n > (end - here) / sizeof(char16_t)) return S_FALSE; // longer than what is left: the stream is damaged
    std::u16string text(n, u'\0');
    hr = StreamRead(pStm, text.data(), n * sizeof(char16_t));
    if (hr == S_OK) s = CString(std::move(text));
    return hr;
}
