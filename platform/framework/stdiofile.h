// CStdioFile and CFileException: MFC's buffered stream file, over a stream the caller opened.
#pragma once
#include <cstdio>
#include "base/cstring.h"

// The exception MFC throws by pointer for a failed file operation; the catcher calls Delete.
class CFileException {
public:
    enum { none = 0, genericException = 1, diskFull = 13 };
    explicit CFileException(int cause = none, LONG lOsError = -1) : m_cause(cause), m_lOsError(lOsError) {}
    void Delete() { delete this; }
    int m_cause;
    LONG m_lOsError;
};

class CStdioFile {
public:
    CStdioFile() = default;
    // Takes over an open stream (as from _wfopen_s); the stream is closed by Close or Abort.
    explicit CStdioFile(FILE* pOpenStream);
    ~CStdioFile();
    CStdioFile(const CStdioFile&) = delete;
    CStdioFile& operator=(const CStdioFile&) = delete;

    // Writes the whole string; throws a CFileException* when the stream reports a failure.
    // Stand-in: the stream is flushed after each string, so that a failure shows here and not
    // only at Close.
    void WriteString(LPCTSTR lpsz);
    // Closes the stream; throws a CFileException* when closing fails (buffered data lost).
    void Close();
    // Closes the stream and ignores any failure.
    void Abort();

    FILE* m_pStream = nullptr;
};
