// CHost: the container: ambient properties, forms, control sites and persistence by ProgID.
#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>
#include "host/ControlSite.h"
#include "user/winuser.h"

// Invalidates the window and every window under it.
void InvalidateWindowTree(HWND hwnd);

class CForm {
public:
    CForm(CHost& host, const RECT& rc);
    ~CForm();
    CForm(const CForm&) = delete;
    CForm& operator=(const CForm&) = delete;
    // Makes a control through its class factory and resets it (a new control on the form).
    CControlSite* Create(const CString& progID, const RECT& rc, HRESULT* phr = nullptr);
    // Makes a control and loads it from a property bag's text ("" is an empty bag).
    CControlSite* Load(const CString& progID, const CString& bagText, const RECT& rc, HRESULT* phr = nullptr);
    const RECT& Rect() const { return m_rc; }
    const std::vector<std::unique_ptr<CControlSite>>& Sites() const { return m_sites; }
    // Deactivates and activates every control again, as after a change of mode.
    void Reactivate();
    HWND Window() const { return m_hWnd; }
    // The form's paint: its background, and the controls that have no window of their own.
    void Paint(HDC hdc);

private:
    CControlSite* Make(const CString& progID, const RECT& rc, HRESULT* phr);
    CControlSite* Activate(CControlSite* site, HRESULT hr, HRESULT* phr);
    CHost& m_host;
    RECT m_rc;
    HWND m_hWnd = nullptr;
    std::vector<std::unique_ptr<CControlSite>> m_sites;
};

class CHost {
public:
    CHost();
    ~CHost();

    CForm* NewForm(const RECT& rc);

    // The virtual screen and the container's message loop.
    // False, with the screen unchanged, for a size the platform cannot have (see SetVirtualScreen).
    bool Screen(int width, int height, int monitors = 1);
    // Delivers everything pending, each key message offered to its control's PreTranslateMessage first.
    void Pump();
    void Advance(DWORD ms);
    CControlSite* SiteOfWindow(HWND hWnd);
    // The form whose own window this is, or null.
    CForm* FormOfWindow(HWND hWnd);

    // Simulated input: each call is delivered at once through the message loop.
    void Focus(CControlSite& site);
    void Type(const CString& text);
    void Key(UINT vk, bool shift = false, bool ctrl = false);
    void Press(int x, int y, int button = VK_LBUTTON);
    void Release(int x, int y, int button = VK_LBUTTON);
    void Move(int x, int y);
    void Click(int x, int y);
    void DblClick(int x, int y);
    void Wheel(int x, int y, int delta);
    // Ends the input call under way after the current message, as when a handler of the host's
    // raised an error: the rest of that call's input is not delivered. The next call starts afresh.
    void EndCall() { m_bCallEnded = true; }

    // The screen as a person sees it: every visible window's surface in z-order, with the caret.
    COLORREF Pixel(int x, int y);
    // False, with the reason in *pReason when given, for an empty area, an image too large to
    // make, or a file that cannot be written.
    bool Snapshot(const char* path, const RECT* area = nullptr, std::string* pReason = nullptr);
    // The composed screen, or the area of it, as a bitmap the caller deletes.
    HBITMAP Capture(const RECT* area = nullptr);
    // Holds an area of the screen as it looks now, drawn over every window in later pixels, captures
    // and snapshots until Thaw: a still of a look that cannot stay on screen, such as a popup that
    // closes when the focus moves on. False when the area is empty or cannot be captured.
    bool Freeze(const RECT& area);
    void Thaw();
    // A system colour change, as the theme changes it: every window repaints.
    void SysColor(int index, COLORREF rgb);
    // Every window paints again, and the paints are delivered.
    void RepaintAll();
    // A picture object from a BMP, ICO or PNG file, chosen by the extension, with a reference for the
    // caller; nullptr on failure, with the reason in *pReason when given.
    IPictureDisp* LoadPicture(const char* path, std::string* pReason = nullptr);

    // Changes the ambient UserMode as a container switching between design and run mode does: every
    // control is deactivated and activated again, so that it comes up afresh in the new mode.
    void SetUserMode(BOOL bUserMode);
    // The smallest rectangle that holds every form, on the screen.
    RECT FormsArea() const;

    // Ambient properties, answered to every site at each request.
    BOOL m_bUserMode = TRUE;
    OLE_COLOR m_clrAmbientFore = 0x80000008;
    OLE_COLOR m_clrAmbientBack = 0x80000005;
    IFont* AmbientFont() const { return m_pAmbientFont; }

    // Data-binding notifications (BoundPropertyChanged) of any control.
    std::function<void(CControlSite&, DISPID)> m_onPropertyChanged;
    // The ambient locale.
    LCID m_lcid = 1033;
    // The site shows the control's pages in a frame of the host's own (IOleControlSite::ShowPropertyFrame).
    BOOL m_bShowPropertyFrame = FALSE;
    // A control's modal dialog opens (FALSE) and has closed (TRUE), as IOleInPlaceFrame::EnableModeless hears it.
    std::function<void(CControlSite&, BOOL)> m_onEnableModeless;
    // A modal dialog or property frame is up and painted; the handler stands for the person in front
    // of it. Without one, or when it leaves the dialog open, the dialog is cancelled.
    std::function<void(HWND hDlg)> m_onDialog;
    // MessageBeep, as the host hears it.
    std::function<void(UINT)> m_onBeep;
    // The answer to a control's file dialog: "open" or "save" and the initial name; the chosen
    // path, or false to cancel. Without it every dialog is cancelled.
    std::function<bool(const char* kind, const CString& initialName, CString& path)> m_onFileDialog;

private:
    void DispatchPaint(const MSG& msg);
    void Button(int x, int y, bool down, int button);
    bool DropsInput(const MSG& msg) const;
    HBITMAP ComposeScreen(const RECT* area = nullptr);
    void ComposeStills(HDC screen);
    struct Still {
        HBITMAP bitmap;
        RECT at;
    };
    std::vector<std::unique_ptr<CForm>> m_forms;
    std::vector<Still> m_stills;
    IFont* m_pAmbientFont = nullptr;
    bool m_bCallEnded = false;
};
