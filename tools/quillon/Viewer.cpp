// CViewer: the SDL window of `quillon view`: the composed screen, scaled, real input as the host's
// input, and the virtual clock driven by real time; idle while nothing happens.
#include "Viewer.h"
#include <SDL.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include "ScriptHost.h"
#include "gdi/standin.h"
#include "gdi/wingdi.h"
#include "user/winuser.h"

namespace {

constexpr int kWheelNotch = 120;
constexpr int kLongestWait = 500; // milliseconds asleep without input or a timer due

// The keys the host knows by name; characters arrive as text instead.
UINT VirtualKey(SDL_Keycode key)
{
    switch (key) {
    case SDLK_RETURN: case SDLK_KP_ENTER: return VK_RETURN;
    case SDLK_ESCAPE: return VK_ESCAPE;
    case SDLK_BACKSPACE: return VK_BACK;
    case SDLK_DELETE: return VK_DELETE;
    case SDLK_TAB: return VK_TAB;
    case SDLK_LEFT: return VK_LEFT;
    case SDLK_RIGHT: return VK_RIGHT;
    case SDLK_UP: return VK_UP;
    case SDLK_DOWN: return VK_DOWN;
    case SDLK_HOME: return VK_HOME;
    case SDLK_END: return VK_END;
    case SDLK_PAGEUP: return VK_PRIOR;
    case SDLK_PAGEDOWN: return VK_NEXT;
    case SDLK_LSHIFT: case SDLK_RSHIFT: return VK_SHIFT;
    case SDLK_LCTRL: case SDLK_RCTRL: return VK_CONTROL;
    default: return 0;
    }
}

int ButtonKey(Uint8 button)
{
    switch (button) {
    case SDL_BUTTON_LEFT: return VK_LBUTTON;
    case SDL_BUTTON_RIGHT: return VK_RBUTTON;
    case SDL_BUTTON_MIDDLE: return VK_MBUTTON;
    default: return 0;
    }
}

} // namespace

CViewer::CViewer(CScriptHost& script, const RECT& area, int nScale, std::string title)
    : m_script(script), m_area(area), m_nScale(nScale), m_strTitle(std::move(title))
{
}

CViewer::~CViewer() { Close(); }

bool CViewer::HasDisplay()
{
    auto set = [](const char* name) { const char* v = std::getenv(name); return v && *v; };
    return set("DISPLAY") || set("WAYLAND_DISPLAY");
}

bool CViewer::Open()
{
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        m_strError = std::string("cannot open a window: ") + SDL_GetError();
        return false;
    }
    const int w = (m_area.right - m_area.left) * m_nScale, h = (m_area.bottom - m_area.top) * m_nScale;
    m_pWindow = SDL_CreateWindow(m_strTitle.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, w, h, 0);
    if (!m_pWindow) {
        m_strError = std::string("cannot open a window: ") + SDL_GetError();
        SDL_Quit();
        return false;
    }
    UpdateTitle();
    SDL_StartTextInput();
    return true;
}

double CViewer::MedianKeyLatency() const
{
    if (m_keyLatencies.empty()) return 0;
    std::vector<double> sorted = m_keyLatencies;
    std::nth_element(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2), sorted.end());
    return sorted[sorted.size() / 2];
}

void CViewer::Close()
{
    if (!m_pWindow) return;
    SDL_DestroyWindow(m_pWindow);
    m_pWindow = nullptr;
    SDL_Quit();
}

void CViewer::UpdateTitle()
{
    std::string mode = m_script.Host().m_bUserMode ? "run mode" : "design mode";
    std::string title = m_strTitle + " (" + mode + "; F2 switches the mode, Ctrl+Q quits)";
    SDL_SetWindowTitle(m_pWindow, title.c_str());
}

bool CViewer::Run(const std::string& snapshotPath)
{
    if (!Open()) return false;
    m_nLastTicks = SDL_GetTicks64();
    Settle();
    Present(true);
    for (bool bOpen = true; bOpen;) {
        SDL_Event e;
        bool bInput = SDL_WaitEventTimeout(&e, IdleWait()) != 0;
        // Time moves first, so that input arrives at the moment it was made.
        unsigned long long now = SDL_GetTicks64();
        m_script.Host().Advance(static_cast<DWORD>(now - m_nLastTicks));
        m_nLastTicks = now;
        const unsigned long long start = SDL_GetPerformanceCounter();
        bool bKeys = false;
        if (bInput) {
            do {
                bKeys |= e.type == SDL_KEYDOWN || e.type == SDL_TEXTINPUT;
                bOpen = Handle(e);
            } while (bOpen && SDL_PollEvent(&e));
        }
        Settle();
        Present(false);
        if (bKeys) m_keyLatencies.push_back(static_cast<double>(SDL_GetPerformanceCounter() - start) / SDL_GetPerformanceFrequency());
    }
    if (!snapshotPath.empty() && !m_script.Host().Snapshot(snapshotPath.c_str(), &m_area)) {
        m_strError = "cannot write the snapshot '" + snapshotPath + "'";
        return false;
    }
    return true;
}

int CViewer::IdleWait() const
{
    DWORD due = 0;
    if (!::GetNextTimerDue(&due)) return kLongestWait;
    LONG left = static_cast<LONG>(due - ::GetTickCount()); // tick counts wrap: compare by difference
    return std::clamp<LONG>(left, 1, kLongestWait);
}

POINT CViewer::ToScreen(int x, int y) const
{
    // Window pixels to screen pixels: each screen pixel covers nScale window pixels, so divide down.
    return POINT{m_area.left + x / m_nScale, m_area.top + y / m_nScale};
}

bool CViewer::Handle(const SDL_Event& e)
{
    switch (e.type) {
    case SDL_QUIT: return false;
    case SDL_WINDOWEVENT:
        if (e.window.event == SDL_WINDOWEVENT_EXPOSED) Present(true);
        return true;
    case SDL_KEYDOWN: case SDL_KEYUP: return HandleKey(e);
    case SDL_TEXTINPUT: {
        CString text = FromUtf8(e.text.text);
        for (int i = 0; i < text.GetLength(); ++i) ::SimulateChar(text[i]);
        return true;
    }
    case SDL_MOUSEMOTION: {
        POINT p = ToScreen(e.motion.x, e.motion.y);
        ::SimulateMouseMove(p.x, p.y);
        return true;
    }
    case SDL_MOUSEBUTTONDOWN: case SDL_MOUSEBUTTONUP: {
        POINT p = ToScreen(e.button.x, e.button.y);
        if (int vk = ButtonKey(e.button.button)) ::SimulateMouseButton(p.x, p.y, e.type == SDL_MOUSEBUTTONDOWN, vk);
        return true;
    }
    case SDL_MOUSEWHEEL: {
        int x = 0, y = 0;
        SDL_GetMouseState(&x, &y);
        POINT p = ToScreen(x, y);
        ::SimulateWheel(p.x, p.y, e.wheel.y * kWheelNotch);
        return true;
    }
    default: return true;
    }
}

bool CViewer::HandleKey(const SDL_Event& e)
{
    const bool bDown = e.type == SDL_KEYDOWN;
    const SDL_Keycode key = e.key.keysym.sym;
    const bool bCtrl = (e.key.keysym.mod & KMOD_CTRL) != 0;
    if (bDown && bCtrl && key == SDLK_q) return false;
    if (bDown && key == SDLK_F2) {
        ToggleDesignMode();
        return true;
    }
    if (UINT vk = VirtualKey(key)) {
        if (!bDown || !e.key.repeat || vk != VK_SHIFT) ::SimulateKey(vk, bDown);
    } else if (bCtrl && key >= SDLK_a && key <= SDLK_z) {
        // With Ctrl down no text arrives: the letter goes as its key (Ctrl+C, Ctrl+V, ...).
        ::SimulateKey(static_cast<UINT>('A' + (key - SDLK_a)), bDown);
    }
    return true;
}

void CViewer::ToggleDesignMode()
{
    m_script.Host().SetUserMode(!m_script.Host().m_bUserMode);
    UpdateTitle();
}

void CViewer::Settle()
{
    m_script.Host().Pump();
    std::string error = m_script.TakeHandlerErrorText();
    if (!error.empty()) std::fprintf(stderr, "quillon: %s\n", error.c_str());
}

void CViewer::Present(bool bForce)
{
    HBITMAP shot = m_script.Host().Capture(&m_area);
    const DWORD* px = shot ? GdiBitmapPixels(shot) : nullptr;
    const int w = m_area.right - m_area.left, h = m_area.bottom - m_area.top;
    if (!px) {
        if (shot) ::DeleteObject(shot);
        return;
    }
    const bool bSame = !bForce && m_lastFrame.size() == static_cast<size_t>(w) * h &&
                       std::equal(m_lastFrame.begin(), m_lastFrame.end(), px);
    if (!bSame) {
        m_lastFrame.assign(px, px + static_cast<size_t>(w) * h);
        SDL_Surface* frame = SDL_CreateRGBSurfaceWithFormatFrom(m_lastFrame.data(), w, h, 32, w * 4, SDL_PIXELFORMAT_RGB888);
        SDL_Surface* window = SDL_GetWindowSurface(m_pWindow);
        if (frame && window) {
            SDL_Rect to{0, 0, w * m_nScale, h * m_nScale};
            if (m_nScale == 1) SDL_BlitSurface(frame, nullptr, window, &to);
            else SDL_BlitScaled(frame, nullptr, window, &to); // nearest neighbour: whole blocks per pixel
            SDL_UpdateWindowSurface(m_pWindow);
        }
        if (frame) SDL_FreeSurface(frame);
    }
    ::DeleteObject(shot);
}
