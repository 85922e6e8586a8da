// Registration of a module's classes, as MFC's afxctl.h names it: the entries a container reads to
// find a control or a property page and the module that serves it.
#pragma once
#include "com/unknwn.h"

#define afxRegInsertable 0x0001
#define afxRegApartmentThreading 0x0002

// The module whose registration is under way: the one whose COleControlModule was built.
HINSTANCE AfxGetInstanceHandle();

// Under HKEY_CLASSES_ROOT: CLSID\{clsid} with the type name (string idTypeName of the module), its
// ProgID, InprocServer32 (the module's path, ThreadingModel "Apartment" with afxRegApartmentThreading),
// ToolboxBitmap32 ("path, idBitmap"), MiscStatus ("0", and the status under its sub-key "1"),
// Control, TypeLib and Version; and the ProgID's own key with the type name and CLSID.
BOOL AfxOleRegisterControlClass(HINSTANCE hInstance, REFCLSID clsid, LPCTSTR pszProgID, UINT idTypeName,
                                UINT idBitmap, int nRegFlags, DWORD dwMiscStatus, REFGUID tlid, WORD wVerMajor,
                                WORD wVerMinor);
// CLSID\{clsid} with the type name and InprocServer32; a page has no ProgID.
BOOL AfxOleRegisterPropertyPageClass(HINSTANCE hInstance, REFCLSID clsid, UINT idTypeName, int nRegFlags);
// Removes CLSID\{clsid} and, when one is given, the ProgID's key, each with everything below it.
BOOL AfxOleUnregisterClass(REFCLSID clsid, LPCTSTR pszProgID);

// Registers the type library in the module's file (or in pszFileName) when it is the library tlid;
// the help folder is the file's own unless pszHelpDir is given.
BOOL AfxOleRegisterTypeLib(HINSTANCE hInstance, REFGUID tlid, LPCTSTR pszFileName = nullptr, LPCTSTR pszHelpDir = nullptr);
BOOL AfxOleUnregisterTypeLib(REFGUID tlid, WORD wVerMajor = 0, WORD wVerMinor = 0, LCID lcid = 0);
