// Internal: the GDI object kinds behind the handles and the process-wide handle table.
#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include "gdi/wingdi.h"

namespace gdi {

// Icons are USER objects on the real platform, so GetObjectType knows nothing of them; here they share the
// table so that leaks of them are counted too.
constexpr int kObjIcon = 0x100;

class Font;  // realised font (fonts_p.h)

struct Object {
    int m_nType = 0;
    bool m_bStock = false;   // stock and system-colour objects: never deleted, never counted
    int m_nSelected = 0;     // how many DC states hold it selected
    virtual ~Object() = default;
    virtual std::string Describe() const;
};

// A surface: 32-bit pixels 0x00RRGGBB, or one-bit pixels stored as 0 or 0x00FFFFFF, row-major, top-down.
struct Bitmap : Object {
    int m_cx = 0;
    int m_cy = 0;
    int m_nBits = 32;
    std::vector<uint32_t> m_px;
    HDC m_hdcOwner = nullptr;  // the memory DC it is selected into, if any
    uint32_t* Row(int y) { return m_px.data() + static_cast<size_t>(y) * m_cx; }
    const uint32_t* Row(int y) const { return m_px.data() + static_cast<size_t>(y) * m_cx; }
    bool IsMono() const { return m_nBits == 1; }
    LONG WidthBytes() const { return ((m_cx * m_nBits + 15) / 16) * 2; }  // DDB rows are WORD-aligned
    std::string Describe() const override;
};

struct Pen : Object {
    UINT m_nStyle = PS_SOLID;
    int m_nWidth = 0;
    COLORREF m_clr = 0;
    bool IsNull() const { return m_nStyle == PS_NULL; }
    std::string Describe() const override;
};

struct Brush : Object {
    UINT m_nStyle = BS_SOLID;
    COLORREF m_clr = 0;
    int m_nSysColor = -1;           // GetSysColorBrush: follows the system colour as it changes
    int m_cxPat = 0, m_cyPat = 0;   // BS_PATTERN: a copy of the bitmap
    bool m_bMonoPat = false;        // one-bit pattern: 0 draws in the text colour, 1 in the background colour
    std::vector<uint32_t> m_pat;
    COLORREF Color() const;         // solid colour now (system colours resolved)
    std::string Describe() const override;
};

struct FontObj : Object {
    LOGFONTW m_lf{};
    std::shared_ptr<Font> m_pFont;  // realised on first use
    std::string Describe() const override;
};

struct Region : Object {
    RECT m_rc{};
};

struct Icon : Object {
    int m_cx = 0, m_cy = 0;
    std::vector<uint8_t> m_mask;    // AND mask, one byte per pixel: 1 keeps the target
    std::vector<uint32_t> m_color;  // XOR image, 0x00RRGGBB
    std::string Describe() const override;
};

struct DcState {
    HPEN m_hPen = nullptr;
    HBRUSH m_hBrush = nullptr;
    HFONT m_hFont = nullptr;
    HBITMAP m_hBitmap = nullptr;
    COLORREF m_clrText = 0;
    COLORREF m_clrBk = 0xFFFFFF;
    int m_nBkMode = OPAQUE;
    int m_nStretchMode = BLACKONWHITE;
    POINT m_ptViewportOrg{0, 0};
    POINT m_ptWindowOrg{0, 0};
    POINT m_ptBrushOrg{0, 0};
    POINT m_ptCur{0, 0};
    bool m_bClip = false;
    RECT m_rcClip{};  // device coordinates of the DC (before the surface origin)
};

struct Dc : Object {
    DcState m_st;
    std::vector<DcState> m_saved;
    HBITMAP m_hSurface = nullptr;  // surface DCs: the window system's surface
    POINT m_ptOrigin{0, 0};
    RECT m_rcBaseClip{};
    bool IsSurface() const { return m_hSurface != nullptr; }
    std::string Describe() const override;
};

// The handle table. Handles carry a generation so that a stale handle is refused, not mistaken.
class Table {
public:
    HGDIOBJ Add(std::unique_ptr<Object> p);
    Object* Get(HGDIOBJ h) const;
    template <class T>
    T* GetAs(HGDIOBJ h, int nType) const
    {
        Object* p = Get(h);
        return p && p->m_nType == nType ? static_cast<T*>(p) : nullptr;
    }
    void Remove(HGDIOBJ h);
    void Forget(HGDIOBJ h);    // the object becomes permanent, as a stock one
    int LiveCount() const { return m_nLive; }
    std::string DescribeLive() const;

private:
    struct Slot {
        std::unique_ptr<Object> p;
        uint32_t nGen = 0;
    };
    std::vector<Slot> m_slots;
    std::vector<uint32_t> m_free;
    int m_nLive = 0;
};

Table& Objects();

inline Bitmap* GetBitmap(HGDIOBJ h) { return Objects().GetAs<Bitmap>(h, OBJ_BITMAP); }
inline Pen* GetPen(HGDIOBJ h) { return Objects().GetAs<Pen>(h, OBJ_PEN); }
inline Brush* GetBrush(HGDIOBJ h) { return Objects().GetAs<Brush>(h, OBJ_BRUSH); }
inline FontObj* GetFontObj(HGDIOBJ h) { return Objects().GetAs<FontObj>(h, OBJ_FONT); }
inline Icon* GetIcon(HGDIOBJ h) { return Objects().GetAs<Icon>(h, kObjIcon); }
Dc* GetDc(HDC h);  // memory or surface DC

// Makes a bitmap object (not yet in the table); NULL for sizes that cannot be allocated.
std::unique_ptr<Bitmap> NewBitmap(int cx, int cy, int nBits);
// The 1x1 one-bit bitmap that a new memory DC holds.
HBITMAP DefaultBitmap();

// COLORREF 0x00BBGGRR <-> pixel 0x00RRGGBB.
inline uint32_t ToPixel(COLORREF c) { return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF); }
inline COLORREF ToColorref(uint32_t px) { return ToPixel(px); }
// The nearest of black and white, for drawing a colour on a one-bit surface.
// The real GDI matches against the surface's two-entry colour table; this threshold is the stand-in's.
inline uint32_t ToMono(uint32_t px)
{
    unsigned s = ((px >> 16) & 0xFF) + ((px >> 8) & 0xFF) + (px & 0xFF);
    return s >= 383 ? 0xFFFFFFu : 0u;
}

}  // namespace gdi
