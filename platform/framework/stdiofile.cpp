// CStdioFile over a CRT stream, failures raised as CFileException.
#include "stdiofile.h"
#include <cassert>
#include <cerrno>
#include "base/crtio.h"

namespace {
[[noreturn]] void ThrowFileException(int cause) { throw new CFileException(cause, errno); }
} // namespace

CStdioFile::CStdioFile(FILE* pOpenStream) : m_pStream(pOpenStream)
{
    assert(pOpenStream && "CStdioFile: a null stream");
}

CStdioFile::~CStdioFile() { Abort(); }

void CStdioFile::WriteString(LPCTSTR lpsz)
{
    assert(m_pStream && "CStdioFile::WriteString: the file is not open");
    assert(lpsz && "CStdioFile::WriteString: a null string");
    if (fputws(lpsz, m_pStream) == EOF || std::fflush(m_pStream) != 0) ThrowFileException(CFileException::diskFull);
}

void CStdioFile::Close()
{
    int err = 0;
    if (m_pStream) err = std::fclose(m_pStream);
    m_pStream = nullptr;
    if (err != 0) ThrowFileException(CFileException::genericException);
}

void CStdioFile::Abort()
{
    if (m_pStream) std::fclose(m_pStream);
    m_pStream = nullptr;
}
