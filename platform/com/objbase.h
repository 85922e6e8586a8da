// Class objects: CoCreateInstance, CoGetClassObject, CLSIDFromProgID over in-process servers.
#pragma once
#include <string>
#include "unknwn.h"

#define CLSCTX_INPROC_SERVER 0x1
// What a server's self-registration reports when the type library or a class cannot be registered.
#define SELFREG_E_TYPELIB ((HRESULT)0x80040200)
#define SELFREG_E_CLASS ((HRESULT)0x80040201)

typedef HRESULT (*LPFNGETCLASSOBJECT)(REFCLSID rclsid, REFIID riid, void** ppv);

// Stand-in for a server's InprocServer32 key and its loading: the server's DllGetClassObject is
// made known to COM directly. Registering the same entry twice has no further effect.
void CoRegisterInprocServer(LPFNGETCLASSOBJECT pfnGetClassObject);
// Stand-in for removing a server's registration (the DOM's server is there from the start).
void CoRevokeInprocServer(LPFNGETCLASSOBJECT pfnGetClassObject);
// Stand-in for the ProgID key of the registry, written when a class factory is made.
void CoRegisterProgID(LPCOLESTR lpszProgID, REFCLSID rclsid);

// A GUID as "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}": the characters written with the terminator, or 0
// when the buffer is shorter than 39.
int StringFromGUID2(REFGUID rguid, LPOLESTR lpsz, int cchMax);
// StringFromGUID2's text as a string.
std::u16string GuidString(REFGUID rguid);
// The reverse; CO_E_CLASSSTRING for text of another form.
HRESULT CLSIDFromString(LPCOLESTR lpsz, CLSID* pclsid);

HRESULT CLSIDFromProgID(LPCOLESTR lpszProgID, CLSID* lpclsid);
HRESULT CoGetClassObject(REFCLSID rclsid, DWORD dwClsContext, void* pvReserved, REFIID riid, void** ppv);
HRESULT CoCreateInstance(REFCLSID rclsid, IUnknown* pUnkOuter, DWORD dwClsContext, REFIID riid, void** ppv);

// The thread's COM initialisation, counted: S_OK for the first call, S_FALSE for the nested ones.
// Stand-in: CoCreateInstance does not insist on it; CoGetInitializeCount tells the depth.
HRESULT CoInitialize(void* pvReserved);
void CoUninitialize();
int CoGetInitializeCount();
