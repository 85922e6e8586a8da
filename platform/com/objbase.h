// Class objects: CoCreateInstance, CoGetClassObject, CLSIDFromProgID over in-process servers and the registry.
#pragma once
#include <string>
#include "unknwn.h"

#define CLSCTX_INPROC_SERVER 0x1
// What a server's self-registration reports when the type library or a class cannot be registered.
#define SELFREG_E_TYPELIB ((HRESULT)0x80040200)
#define SELFREG_E_CLASS ((HRESULT)0x80040201)

// An export of a module, found by its unadorned name.
#define STDAPI extern "C" HRESULT

typedef HRESULT (*LPFNGETCLASSOBJECT)(REFCLSID rclsid, REFIID riid, void** ppv);

// Stand-in for CoRegisterClassObject: a server linked into the process (the system's own, the DOM
// and the category manager, are there from the start) is asked by CoGetClassObject before the
// registry. Registering the same entry twice has no further effect.
void CoRegisterInprocServer(LPFNGETCLASSOBJECT pfnGetClassObject);
void CoRevokeInprocServer(LPFNGETCLASSOBJECT pfnGetClassObject);

// A GUID as "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}": the characters written with the terminator, or 0
// when the buffer is shorter than 39.
int StringFromGUID2(REFGUID rguid, LPOLESTR lpsz, int cchMax);
// StringFromGUID2's text as a string.
std::u16string GuidString(REFGUID rguid);
// The reverse; CO_E_CLASSSTRING for text of another form.
HRESULT CLSIDFromString(LPCOLESTR lpsz, CLSID* pclsid);

// The class of HKEY_CLASSES_ROOT\ProgID\CLSID; CO_E_CLASSSTRING when no such ProgID is registered.
HRESULT CLSIDFromProgID(LPCOLESTR lpszProgID, CLSID* lpclsid);
// The process's own servers first, then the module HKEY_CLASSES_ROOT\CLSID\{clsid}\InprocServer32
// names, loaded and kept loaded: REGDB_E_CLASSNOTREG when the class has no such key,
// CO_E_DLLNOTFOUND when the file cannot be loaded, CO_E_ERRORINDLL when it exports no DllGetClassObject.
HRESULT CoGetClassObject(REFCLSID rclsid, DWORD dwClsContext, void* pvReserved, REFIID riid, void** ppv);
HRESULT CoCreateInstance(REFCLSID rclsid, IUnknown* pUnkOuter, DWORD dwClsContext, REFIID riid, void** ppv);

// The thread's COM initialisation, counted: S_OK for the first call, S_FALSE for the nested ones.
// Stand-in: CoCreateInstance does not insist on it; CoGetInitializeCount tells the depth.
HRESULT CoInitialize(void* pvReserved);
void CoUninitialize();
int CoGetInitializeCount();
