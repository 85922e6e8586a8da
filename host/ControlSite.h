// CControlSite: a container's site of one control: ambient properties, invalidation, property
// notifications and the event sink, with typed helpers to reach the control by name.
#pragma once
#include <algorithm>
#include <functional>
#include <vector>
#include "com/ocidl.h"
#include "com/proppage.h"
#include "host/ControlInfo.h"

class CHost;

class CControlSite final : public IOleClientSite,
                           public IPropertyNotifySink,
                           public IDispatch,
                           public IOleControlSite,
                           public IOleInPlaceSite {
public:
    // An event as the sink heard it: arguments in declaration order, by-reference ones writable.
    using EventHandler = std::function<void(const EventInfo& event, VARIANT* args, UINT count)>;

    CControlSite(CHost& host, IUnknown* pControl, const RECT& rc);
    ~CControlSite();
    CControlSite(const CControlSite&) = delete;
    CControlSite& operator=(const CControlSite&) = delete;

    // IUnknown: the site lives as long as its form; COM references do not free it.
    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override { return 2; }
    ULONG Release() override { return 1; }

    // IOleClientSite
    HRESULT GetAmbientProperty(DISPID dispid, VARIANT* pvar) override;
    HRESULT OnInvalidate(const RECT* prc, BOOL fErase) override;
    // IPropertyNotifySink
    HRESULT OnChanged(DISPID dispID) override;
    HRESULT OnRequestEdit(DISPID) override { return S_OK; }
    // IOleControlSite: the host's own property frame, when it has one.
    HRESULT ShowPropertyFrame() override;
    // IOleInPlaceSite: the form's window; a modal dialog of the control disables the host's modeless ones.
    HRESULT GetWindow(HWND* phwnd) override;
    HRESULT EnableModeless(BOOL fEnable) override;
    // IDispatch: the event sink
    HRESULT GetTypeInfoCount(UINT* p) override { *p = 0; return S_OK; }
    HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT GetIDsOfNames(REFIID, LPCOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* p, VARIANT*, EXCEPINFO*, UINT*) override;

    IDispatch* Control() const { return m_pDispatch; }
    // The control's own window once it is active in the form, else 0 (design mode).
    HWND Window() const;
    // The form window the control is active in, else 0.
    HWND FormWindow() const { return m_hWndForm; }
    HRESULT InPlaceActivate(HWND hwndParent);
    HRESULT InPlaceDeactivate();
    // Offers a key message to the control ahead of the loop's own handling; true when it took it.
    bool PreTranslate(MSG& msg);
    // Paints a control without a window into the form's DC at its place.
    void DrawInto(HDC hdc);
    // The control's members and events as its type information declares them.
    const CControlInfo& Info() const { return m_info; }
    const RECT& Rect() const { return m_rc; }

    HRESULT InitNew();
    HRESULT Load(const CString& bagText);
    CString Save(BOOL fClearDirty = TRUE);
    std::vector<BYTE> SaveStream(BOOL fClearDirty = TRUE);
    HRESULT LoadStream(const std::vector<BYTE>& bytes);
    bool IsDirty();

    // By name, as a script does. Failures come back as the HRESULT of the dispatch call.
    HRESULT Get(const CString& name, VARIANT* result);
    HRESULT Put(const CString& name, const VARIANT& value);
    HRESULT Call(const CString& name, std::vector<VARIANT> args, VARIANT* result);
    HRESULT InvokeById(DISPID id, WORD flags, std::vector<VARIANT> args, VARIANT* result);

    void SetEventHandler(EventHandler handler) { m_onEvent = std::move(handler); }
    int InvalidateCount() const { return m_nInvalidates; }

private:
    CHost& m_host;
    IDispatch* m_pDispatch = nullptr;
    CControlInfo m_info;
    CComPtr<IConnectionPoint> m_pEventPoint;
    DWORD m_dwEventCookie = 0;
    RECT m_rc;
    HWND m_hWndForm = nullptr;
    EventHandler m_onEvent;
    int m_nInvalidates = 0;
};
