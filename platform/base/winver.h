// Version information as winver.h and version.dll name it: a module's VERSIONINFO resource, read
// from the module's file as the binary VS_VERSIONINFO block and queried by path within it.
#pragma once
#include <cstddef>
#include "module.h"
#include "winerror.h"

#define VS_VERSION_INFO 1

#define VS_FFI_SIGNATURE 0xFEEF04BDL
#define VS_FFI_STRUCVERSION 0x00010000L
#define VS_FFI_FILEFLAGSMASK 0x0000003FL
#define VS_FF_DEBUG 0x00000001L
#define VOS__WINDOWS32 0x00000004L
#define VOS_NT_WINDOWS32 0x00040004L
#define VFT_UNKNOWN 0x00000000L
#define VFT_APP 0x00000001L
#define VFT_DLL 0x00000002L
#define VFT2_UNKNOWN 0x00000000L

struct VS_FIXEDFILEINFO {
    DWORD dwSignature;         // VS_FFI_SIGNATURE
    DWORD dwStrucVersion;
    DWORD dwFileVersionMS;     // the first two parts of the version, high word first
    DWORD dwFileVersionLS;
    DWORD dwProductVersionMS;
    DWORD dwProductVersionLS;
    DWORD dwFileFlagsMask;
    DWORD dwFileFlags;
    DWORD dwFileOS;
    DWORD dwFileType;
    DWORD dwFileSubtype;
    DWORD dwFileDateMS;
    DWORD dwFileDateLS;
};

// Stand-in: there is no resource compiler. A module hands over its VERSIONINFO resource as the
// script states it, and the platform lays it out as the compiler would: VS_VERSIONINFO with the
// fixed info, one StringFileInfo table named by the language and code page ("040904B0"), and a
// VarFileInfo\Translation naming that same pair.
struct VERSIONSTRING {
    LPCTSTR lpszKey;
    LPCTSTR lpszValue;         // may be empty: the entry is there with no text
};
struct VERSIONINFOTEMPLATE {
    WORD wFileVersion[4];      // FILEVERSION 2,0,0,4
    WORD wProductVersion[4];
    DWORD dwFileFlagsMask;
    DWORD dwFileFlags;
    DWORD dwFileOS;
    DWORD dwFileType;
    DWORD dwFileSubtype;
    WORD wLanguage;            // 0x0409
    WORD wCodePage;            // 0x04B0, UTF-16
    const VERSIONSTRING* pStrings;
    size_t nStrings;
};

// Stand-in: a module enters its version resource (id VS_VERSION_INFO) under its own handle as it
// loads, and takes it out as it unloads; on the real platform it is part of the module's image.
void RegisterVersionResource(HMODULE hModule, WORD nID, const VERSIONINFOTEMPLATE& versionInfo);
void UnregisterVersionResource(HMODULE hModule);

// The size in bytes of the version block of the module at that path, 0 when there is none:
// ERROR_FILE_NOT_FOUND when no such file exists, ERROR_RESOURCE_TYPE_NOT_FOUND when the file is no
// module or a module without a version resource. *lpdwHandle is set to 0. A module not loaded yet is
// loaded for the look and unloaded after. Stand-in: loading it runs its initialisers (the real
// call maps the file as data), and the size is the block's own, without the real call's spare room.
DWORD GetFileVersionInfoSize(LPCTSTR lptstrFilename, DWORD* lpdwHandle);
// Copies the version block into lpData; dwHandle is not used. Failures as GetFileVersionInfoSize.
// Stand-in: a buffer smaller than the block fails with ERROR_INSUFFICIENT_BUFFER, where the real
// call would cut the block short.
BOOL GetFileVersionInfo(LPCTSTR lptstrFilename, DWORD dwHandle, DWORD dwLen, void* lpData);
// A value in a block that GetFileVersionInfo filled: "\" the VS_FIXEDFILEINFO (*puLen its size in
// bytes), "\VarFileInfo\Translation" the array of language and code page pairs (in bytes), and
// "\StringFileInfo\040904B0\Name" the text (*puLen in characters, the terminator counted). Keys
// are compared without regard to case. *lplpBuffer points into pBlock. FALSE when the path names
// nothing in the block; a block that holds only other blocks answers TRUE with a length of 0.
BOOL VerQueryValue(const void* pBlock, LPCTSTR lpSubBlock, void** lplpBuffer, UINT* puLen);
