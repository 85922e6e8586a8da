// Internal: realised fonts (a FreeType face at one pixel size) with their metrics and a cache of mono glyphs.
#pragma once
#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>
#include "gdi/raster_p.h"

namespace gdi {

// One glyph rendered in monochrome: bits are one byte per pixel (0 or 1), rows top-down.
struct Glyph {
    int nAdvance = 0;  // pixels to the next pen position
    int nLeft = 0;     // from the pen position to the bitmap's left edge
    int nTop = 0;      // from the baseline up to the bitmap's top row
    int cx = 0, cy = 0;
    std::vector<uint8_t> bits;
};

class Font {
public:
    ~Font();
    static std::shared_ptr<Font> Realize(const LOGFONTW& lf);

    // The pen's advance over the character: measuring needs no bitmap.
    int Advance(char32_t ch);
    // Small glyphs are rasterised once and kept; a font too large for that draws each glyph
    // afresh, and only the part of it within the clip (DrawClipped).
    bool CachesGlyphs() const { return m_bCacheGlyphs; }
    const Glyph& GetGlyph(char32_t ch);
    // Draws the character with its pen position at (x, yBase), rasterising only what lies within clip.
    void DrawClipped(const Target& t, char32_t ch, int x, int yBase, const RECT& clip, uint32_t px);
    const TEXTMETRICW& Metrics() const { return m_tm; }
    const std::string& File() const { return m_strFile; }
    bool Underline() const { return m_bUnderline; }
    bool StrikeOut() const { return m_bStrikeOut; }
    int UnderlinePos() const { return m_nUnderlinePos; }      // rows below the baseline
    int UnderlineSize() const { return m_nUnderlineSize; }
    int StrikeOutPos() const { return m_nStrikeOutPos; }      // rows above the baseline
    int StrikeOutSize() const { return m_nStrikeOutSize; }

private:
    Font() = default;
    bool Open(const std::string& strFile, int nIndex, const LOGFONTW& lf, bool bFileBold, bool bFileItalic);
    void Render(char32_t ch, Glyph* pg);
    bool LoadOutline(char32_t ch);  // into the face's glyph slot, with synthetic bold and italic applied
    int LoadAdvance(char32_t ch);

    void* m_face = nullptr;  // FT_Face, kept opaque here so FreeType stays out of the other files
    std::string m_strFile;
    TEXTMETRICW m_tm{};
    bool m_bSynthBold = false, m_bSynthItalic = false, m_bUnderline = false, m_bStrikeOut = false;
    int m_nUnderlinePos = 1, m_nUnderlineSize = 1, m_nStrikeOutPos = 3, m_nStrikeOutSize = 1;
    bool m_bCacheGlyphs = true;
    std::array<int, 128> m_asciiAdvance;
    std::unordered_map<char32_t, int> m_otherAdvance;
    std::array<std::unique_ptr<Glyph>, 128> m_ascii;
    std::unordered_map<char32_t, std::unique_ptr<Glyph>> m_others;
};

// The realised font selected into a DC (SYSTEM_FONT by default); NULL only if no face could be opened.
Font* DcFont(const Dc* pdc);

// Decodes UTF-16 into code points (an unpaired surrogate stands for itself).
void DecodeUtf16(const char16_t* p, int n, std::vector<char32_t>* pOut);

// Width in pixels of a run of code points.
int MeasureRun(Font* pf, const char32_t* p, size_t n);

// Draws a run with its top-left cell corner at surface (x, y), within rcClip (surface coordinates);
// pdx, if given, holds each character's advance.
void DrawRun(const Target& t, Font* pf, int x, int y, const char32_t* p, size_t n, uint32_t px, const RECT& rcClip,
             const INT* pdx = nullptr);

}  // namespace gdi
