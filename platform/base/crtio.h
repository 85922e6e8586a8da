// CRT file streams as the control opens them: _wfopen_s with the text and Unicode modes of the
// Microsoft runtime, and fputws over UTF-16 strings.
#pragma once
#include <cstdio>
#include <string>
#include "wintypes.h"

typedef int errno_t;

// Opens a stream. Modes: "r", "w" or "a", then "t" (text, the default) or "b", optionally followed
// by ",ccs=UNICODE" (UTF-16 little-endian, with the byte-order mark FF FE written when a file is
// created for writing). A Unicode text stream turns every line feed into carriage return and line
// feed on its way out. Returns 0 and the stream, or the errno of the failure and a null stream.
// Stand-in: a Unicode or text stream is a glibc cookie stream; ccs=UTF-8 and ANSI text
// translation are not provided (asserted), and reading a Unicode stream is not provided either.
errno_t _wfopen_s(FILE** pFile, const WCHAR* filename, const WCHAR* mode);

// Writes a UTF-16 string to a stream opened by _wfopen_s; returns EOF when the write fails.
// Stand-in: an overload of the C library's wchar_t function for UTF-16 text.
int fputws(const WCHAR* str, FILE* stream);

// The file name as the file system takes it here (UTF-8).
std::string FileSystemName(const WCHAR* filename);
