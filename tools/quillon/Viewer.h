// CViewer: `quillon view`: the host's screen in a real SDL window, real input turned into the host's
// simulated input, and the virtual clock following real time while the window is open.
#pragma once
#include <string>
#include <vector>
#include "base/rect.h"

class CScriptHost;
struct SDL_Window;
union SDL_Event;

class CViewer {
public:
    // Shows area (screen coordinates) of the script host's screen, each pixel nScale by nScale.
    CViewer(CScriptHost& script, const RECT& area, int nScale, std::string title);
    ~CViewer();
    CViewer(const CViewer&) = delete;
    CViewer& operator=(const CViewer&) = delete;

    // Opens the window and runs until it is closed or Ctrl+Q; false with Error() when no window can be
    // opened. snapshotPath, when not empty, receives the composed screen of the area at the end.
    bool Run(const std::string& snapshotPath);
    const std::string& Error() const { return m_strError; }

    // From taking a key off the queue to the window showing its effect, the median over the keys
    // seen, in seconds; 0 before any key.
    double MedianKeyLatency() const;
    size_t KeyCount() const { return m_keyLatencies.size(); }

    // True when a display is there to open a window on.
    static bool HasDisplay();

private:
    bool Open();
    void Close();
    // Hands one event to the host; false when it ends the viewer.
    bool Handle(const SDL_Event& e);
    bool HandleKey(const SDL_Event& e);
    POINT ToScreen(int x, int y) const;
    void ToggleDesignMode();
    // Delivers what is pending and prints an error a script handler raised meanwhile.
    void Settle();
    // Composes the area and copies it to the window when it changed (or when forced).
    void Present(bool bForce);
    // Milliseconds to wait for input before the next timer is due.
    int IdleWait() const;
    void UpdateTitle();

    CScriptHost& m_script;
    RECT m_area;
    int m_nScale;
    std::string m_strTitle, m_strError;
    SDL_Window* m_pWindow = nullptr;
    std::vector<DWORD> m_lastFrame;
    std::vector<double> m_keyLatencies;
    unsigned long long m_nLastTicks = 0;
};
