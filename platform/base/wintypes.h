// Win32 basic types, handles, result codes and the _T text macro, as windows.h names them.
#pragma once
#include <cstdint>

typedef int BOOL;
typedef unsigned char BYTE;
typedef unsigned short WORD;
typedef uint32_t DWORD;
typedef int16_t SHORT;
typedef uint16_t USHORT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef unsigned int UINT;
typedef int INT;
typedef int32_t HRESULT;
typedef int64_t LONGLONG;
typedef intptr_t LPARAM;
typedef uintptr_t WPARAM;
typedef intptr_t LRESULT;
typedef intptr_t INT_PTR;
typedef DWORD COLORREF;
typedef DWORD OLE_COLOR;
typedef int32_t DISPID;
typedef uint16_t VARTYPE;
typedef int16_t VARIANT_BOOL;
typedef double DATE;

// Text is UTF-16, as on Windows: _T("...") makes a char16_t literal.
typedef char16_t WCHAR;
typedef char16_t TCHAR;
typedef char16_t OLECHAR;
typedef const char16_t* LPCTSTR;
typedef char16_t* LPTSTR;
typedef const char16_t* LPCOLESTR;
typedef char16_t* LPOLESTR;
typedef const char16_t* LPCWSTR;
#define _T(x) u##x
#define L_(x) u##x

// Handles are distinct opaque pointer types, so they cannot be mixed up.
#define DECLARE_HANDLE(name) struct name##__ { int unused; }; typedef struct name##__* name
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HPALETTE);
DECLARE_HANDLE(HMETAFILE);
DECLARE_HANDLE(HCURSOR);
DECLARE_HANDLE(HINSTANCE);
typedef void* HANDLE;
typedef void* HGDIOBJ;
typedef uint32_t OLE_HANDLE;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_NOTIMPL ((HRESULT)0x80004001)
#define E_NOINTERFACE ((HRESULT)0x80004002)
#define E_POINTER ((HRESULT)0x80004003)
#define E_FAIL ((HRESULT)0x80004005)
#define E_UNEXPECTED ((HRESULT)0x8000FFFF)
#define E_OUTOFMEMORY ((HRESULT)0x8007000E)
#define E_INVALIDARG ((HRESULT)0x80070057)
#define E_ACCESSDENIED ((HRESULT)0x80070005)
#define CLASS_E_CLASSNOTAVAILABLE ((HRESULT)0x80040111)
#define CLASS_E_NOAGGREGATION ((HRESULT)0x80040110)
#define REGDB_E_CLASSNOTREG ((HRESULT)0x80040154)
#define CO_E_CLASSSTRING ((HRESULT)0x800401F3)
#define CO_E_DLLNOTFOUND ((HRESULT)0x800401F8)
#define CO_E_ERRORINDLL ((HRESULT)0x800401F9)
#define SUCCEEDED(hr) (((HRESULT)(hr)) >= 0)
#define FAILED(hr) (((HRESULT)(hr)) < 0)

#define RGB(r, g, b) ((COLORREF)(((BYTE)(r)) | ((WORD)((BYTE)(g)) << 8) | (((DWORD)(BYTE)(b)) << 16)))
#define GetRValue(rgb) ((BYTE)(rgb))
#define GetGValue(rgb) ((BYTE)(((WORD)(rgb)) >> 8))
#define GetBValue(rgb) ((BYTE)((rgb) >> 16))

#define LOWORD(l) ((WORD)(((uintptr_t)(l)) & 0xffff))
#define HIWORD(l) ((WORD)((((uintptr_t)(l)) >> 16) & 0xffff))
#define MAKELONG(a, b) ((LONG)(((WORD)(((uintptr_t)(a)) & 0xffff)) | ((DWORD)((WORD)(((uintptr_t)(b)) & 0xffff))) << 16))
