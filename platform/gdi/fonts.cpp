// Fonts (CreateFontIndirect, CreateFont): face names resolved through fontconfig, faces rasterised by FreeType
// in monochrome mode, as classic GDI draws non-antialiased text; metrics as GetTextMetrics reports them.
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_SYNTHESIS_H
#include FT_TRUETYPE_TABLES_H
#include <cmath>
#include <map>
#include <tuple>
#include "base/cstring.h"
#include "gdi/fonts_p.h"

namespace gdi {

namespace {

FT_Library Library()
{
    static FT_Library s_lib = [] {
        FT_Library lib = nullptr;
        FT_Init_FreeType(&lib);
        return lib;
    }();
    return s_lib;
}

struct Match {
    std::string strFile;
    int nIndex = 0;
    int nWeight = FC_WEIGHT_REGULAR;
    int nSlant = FC_SLANT_ROMAN;
};

// The fonts the project's setup installs (fonts-dejavu-core, fonts-liberation2). Stand-in: a face
// resolves within these alone, whatever else the machine has, so that text has the same pixels on
// every machine; fontconfig's own order and aliases (Arial to Liberation Sans) still decide.
bool IsPinnedFont(const std::string& strFile)
{
    static const char* const kDirs[] = {"/usr/share/fonts/truetype/dejavu/", "/usr/share/fonts/truetype/liberation2/"};
    static const char* const kDejaVuCore[] = {"DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSansMono.ttf",
                                              "DejaVuSansMono-Bold.ttf", "DejaVuSerif.ttf", "DejaVuSerif-Bold.ttf"};
    if (strFile.rfind(kDirs[1], 0) == 0) return true;
    if (strFile.rfind(kDirs[0], 0) != 0) return false;
    std::string name = strFile.substr(std::string(kDirs[0]).size());
    for (const char* core : kDejaVuCore)
        if (name == core) return true;
    return false;
}

bool ReadMatch(FcPattern* font, Match* pm)
{
    FcChar8* file = nullptr;
    if (FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch) return false;
    pm->strFile = reinterpret_cast<const char*>(file);
    FcPatternGetInteger(font, FC_INDEX, 0, &pm->nIndex);
    FcPatternGetInteger(font, FC_WEIGHT, 0, &pm->nWeight);
    FcPatternGetInteger(font, FC_SLANT, 0, &pm->nSlant);
    return true;
}

// Face name -> font file: the first of fontconfig's choices for that family, weight and slant that
// is a pinned font; fontconfig's best match when none is.
bool Resolve(const std::string& strFace, bool bBold, bool bItalic, Match* pm)
{
    FcPattern* pat = FcPatternCreate();
    FcPatternAddString(pat, FC_FAMILY, reinterpret_cast<const FcChar8*>(strFace.empty() ? "sans-serif" : strFace.c_str()));
    FcPatternAddInteger(pat, FC_WEIGHT, bBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pat, FC_SLANT, bItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pat, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pat, FcMatchPattern);
    FcDefaultSubstitute(pat);
    FcResult res;
    bool bOk = false;
    if (FcFontSet* sorted = FcFontSort(nullptr, pat, FcFalse, nullptr, &res)) {
        for (int i = 0; i < sorted->nfont && !bOk; ++i) {
            Match m;
            if (ReadMatch(sorted->fonts[i], &m) && IsPinnedFont(m.strFile)) {
                FcPattern* rendered = FcFontRenderPrepare(nullptr, pat, sorted->fonts[i]);
                bOk = rendered && ReadMatch(rendered, pm);
                if (rendered) FcPatternDestroy(rendered);
            }
        }
        FcFontSetDestroy(sorted);
    }
    if (!bOk) {
        FcPattern* found = FcFontMatch(nullptr, pat, &res);
        bOk = found && ReadMatch(found, pm);
        if (found) FcPatternDestroy(found);
    }
    FcPatternDestroy(pat);
    return bOk;
}

std::string FaceName(const LOGFONTW& lf)
{
    int n = 0;
    while (n < LF_FACESIZE && lf.lfFaceName[n])
        ++n;
    return ToUtf8(std::u16string(lf.lfFaceName, static_cast<size_t>(n)));
}

long Scale(long nUnits, long nPixels, long nUnitsPerEm) { return (nUnits * nPixels + nUnitsPerEm / 2) / nUnitsPerEm; }

}  // namespace

Font::~Font()
{
    if (m_face)
        FT_Done_Face(static_cast<FT_Face>(m_face));
}

constexpr size_t kMaxCachedFonts = 64;
constexpr long kMaxPixelsPerEm = 32767;       // the largest height a font handle takes
constexpr long kMaxCachedGlyphPixels = 256;   // per em: larger glyphs are drawn within the clip only

std::shared_ptr<Font> Font::Realize(const LOGFONTW& lf)
{
    // Fonts are realised once per face, size and style and then shared by every handle that asks for them.
    using Key = std::tuple<std::string, LONG, bool, bool, bool, bool>;
    static auto* s_pCache = new std::map<Key, std::shared_ptr<Font>>;
    bool bBold = lf.lfWeight >= FW_SEMIBOLD, bItalic = lf.lfItalic != 0;
    Key key{FaceName(lf), lf.lfHeight, bBold, bItalic, lf.lfUnderline != 0, lf.lfStrikeOut != 0};
    auto it = s_pCache->find(key);
    if (it != s_pCache->end())
        return it->second;
    Match m;
    std::shared_ptr<Font> p(new Font);
    if (!Resolve(std::get<0>(key), bBold, bItalic, &m) ||
        !p->Open(m.strFile, m.nIndex, lf, m.nWeight >= FC_WEIGHT_DEMIBOLD, m.nSlant != FC_SLANT_ROMAN))
        p = nullptr;
    // Fonts that no handle holds any more are let go once the cache grows, so that a host making
    // fonts of ever new sizes does not keep every one of them and its glyphs.
    if (s_pCache->size() >= kMaxCachedFonts)
        std::erase_if(*s_pCache, [](const auto& entry) { return entry.second.use_count() <= 1; });
    (*s_pCache)[key] = p;
    return p;
}

bool Font::Open(const std::string& strFile, int nIndex, const LOGFONTW& lf, bool bFileBold, bool bFileItalic)
{
    FT_Face face = nullptr;
    if (FT_New_Face(Library(), strFile.c_str(), nIndex, &face) != 0)
        return false;
    m_face = face;
    m_strFile = strFile;
    m_bSynthBold = lf.lfWeight >= FW_SEMIBOLD && !bFileBold;
    m_bSynthItalic = lf.lfItalic && !bFileItalic;
    m_bUnderline = lf.lfUnderline != 0;
    m_bStrikeOut = lf.lfStrikeOut != 0;
    const TT_OS2* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    long upem = face->units_per_EM ? face->units_per_EM : 2048;
    long winAscent = os2 ? os2->usWinAscent : face->ascender;
    long winDescent = os2 ? os2->usWinDescent : -face->descender;
    // Negative heights give the character (em) height, positive ones the cell height, 0 a default size.
    long ppem = lf.lfHeight < 0 ? -lf.lfHeight
              : lf.lfHeight > 0 ? std::max<long>(1, (lf.lfHeight * upem + (winAscent + winDescent) / 2) / (winAscent + winDescent))
                                : 16;
    ppem = std::min<long>(ppem, kMaxPixelsPerEm);
    m_bCacheGlyphs = ppem <= kMaxCachedGlyphPixels;
    m_asciiAdvance.fill(-1);
    FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(ppem));
    m_tm.tmAscent = Scale(winAscent, ppem, upem);
    m_tm.tmDescent = Scale(winDescent, ppem, upem);
    m_tm.tmHeight = m_tm.tmAscent + m_tm.tmDescent;
    m_tm.tmInternalLeading = std::max<LONG>(0, m_tm.tmHeight - ppem);
    long lineGap = face->height - (face->ascender - face->descender);
    long ext = lineGap - ((winAscent + winDescent) - (face->ascender - face->descender));
    m_tm.tmExternalLeading = ext > 0 ? Scale(ext, ppem, upem) : 0;
    m_tm.tmAveCharWidth = os2 && os2->xAvgCharWidth ? Scale(os2->xAvgCharWidth, ppem, upem) : Advance(U'x');
    m_tm.tmMaxCharWidth = Scale(face->bbox.xMax - face->bbox.xMin, ppem, upem);
    m_tm.tmWeight = lf.lfWeight ? lf.lfWeight : FW_NORMAL;
    m_tm.tmDigitizedAspectX = m_tm.tmDigitizedAspectY = 96;
    m_tm.tmFirstChar = 0x20;
    m_tm.tmLastChar = 0xFFFC;
    m_tm.tmDefaultChar = 0x1F;
    m_tm.tmBreakChar = 0x20;
    m_tm.tmItalic = lf.lfItalic ? 1 : 0;
    m_tm.tmUnderlined = lf.lfUnderline ? 1 : 0;
    m_tm.tmStruckOut = lf.lfStrikeOut ? 1 : 0;
    m_tm.tmPitchAndFamily = VARIABLE_PITCH | 0x04 /* TMPF_TRUETYPE */ | FF_SWISS;
    m_tm.tmCharSet = ANSI_CHARSET;
    if (m_bSynthBold)
        m_tm.tmAveCharWidth += 1, m_tm.tmMaxCharWidth += 1;
    m_nUnderlinePos = std::max<int>(1, static_cast<int>(Scale(-face->underline_position, ppem, upem)));
    m_nUnderlineSize = std::max<int>(1, static_cast<int>(Scale(face->underline_thickness, ppem, upem)));
    if (os2 && os2->yStrikeoutSize > 0) {
        m_nStrikeOutPos = static_cast<int>(Scale(os2->yStrikeoutPosition, ppem, upem));
        m_nStrikeOutSize = std::max<int>(1, static_cast<int>(Scale(os2->yStrikeoutSize, ppem, upem)));
    } else {
        m_nStrikeOutPos = static_cast<int>(m_tm.tmAscent / 3);
    }
    return true;
}

const Glyph& Font::GetGlyph(char32_t ch)
{
    std::unique_ptr<Glyph>* pp;
    if (ch < 128) {
        pp = &m_ascii[ch];
    } else {
        pp = &m_others[ch];
    }
    if (!*pp) {
        *pp = std::make_unique<Glyph>();
        Render(ch, pp->get());
    }
    return **pp;
}

bool Font::LoadOutline(char32_t ch)
{
    FT_Face face = static_cast<FT_Face>(m_face);
    FT_UInt idx = FT_Get_Char_Index(face, ch);  // 0 draws the face's missing-glyph box
    if (FT_Load_Glyph(face, idx, FT_LOAD_DEFAULT | FT_LOAD_TARGET_MONO) != 0)
        return false;
    FT_GlyphSlot slot = face->glyph;
    if (m_bSynthBold && slot->format == FT_GLYPH_FORMAT_OUTLINE)
        FT_Outline_EmboldenXY(&slot->outline, 64, 0);  // one pixel wider, as GDI's simulated bold
    if (m_bSynthItalic)
        FT_GlyphSlot_Oblique(slot);
    return true;
}

int Font::LoadAdvance(char32_t ch)
{
    if (!LoadOutline(ch))
        return 0;
    return static_cast<int>((static_cast<FT_Face>(m_face)->glyph->advance.x + 32) >> 6) + (m_bSynthBold ? 1 : 0);
}

int Font::Advance(char32_t ch)
{
    int* p = ch < 128 ? &m_asciiAdvance[ch] : nullptr;
    if (p && *p >= 0)
        return *p;
    if (!p) {
        auto it = m_otherAdvance.find(ch);
        if (it != m_otherAdvance.end())
            return it->second;
    }
    int n = LoadAdvance(ch);
    if (p) *p = n;
    else m_otherAdvance[ch] = n;
    return n;
}

void Font::DrawClipped(const Target& t, char32_t ch, int x, int yBase, const RECT& clip, uint32_t px)
{
    FT_Face face = static_cast<FT_Face>(m_face);
    if (!LoadOutline(ch) || face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return;
    FT_Outline& outline = face->glyph->outline;
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    // The glyph's cell in whole pixels, as the monochrome renderer places its bitmap.
    long long left = x + (box.xMin >> 6), right = x + ((box.xMax + 63) >> 6);
    long long top = yBase - ((box.yMax + 63) >> 6), bottom = yBase - (box.yMin >> 6);
    RECT v{static_cast<LONG>(std::max<long long>(left, clip.left)), static_cast<LONG>(std::max<long long>(top, clip.top)),
           static_cast<LONG>(std::min<long long>(right, clip.right)), static_cast<LONG>(std::min<long long>(bottom, clip.bottom))};
    if (v.right <= v.left || v.bottom <= v.top)
        return;
    int cx = v.right - v.left, cy = v.bottom - v.top, pitch = (cx + 7) / 8;
    std::vector<unsigned char> bits(static_cast<size_t>(pitch) * cy, 0);
    FT_Bitmap bm{};
    bm.rows = static_cast<unsigned>(cy);
    bm.width = static_cast<unsigned>(cx);
    bm.pitch = pitch;
    bm.buffer = bits.data();
    bm.num_grays = 2;
    bm.pixel_mode = FT_PIXEL_MODE_MONO;
    // Whole-pixel shifts put the visible part at the bitmap's origin, its bottom-left with y up.
    FT_Outline_Translate(&outline, static_cast<FT_Pos>(x - v.left) * 64, static_cast<FT_Pos>(v.bottom - yBase) * 64);
    if (FT_Outline_Get_Bitmap(Library(), &outline, &bm) != 0)
        return;
    for (int row = 0; row < cy; ++row) {
        uint32_t* dst = t.pbm->Row(v.top + row);
        const unsigned char* src = bits.data() + static_cast<size_t>(row) * pitch;
        for (int col = 0; col < cx; ++col)
            if ((src[col >> 3] >> (7 - (col & 7))) & 1)
                dst[v.left + col] = px;
    }
}

void Font::Render(char32_t ch, Glyph* pg)
{
    if (!LoadOutline(ch))
        return;
    FT_GlyphSlot slot = static_cast<FT_Face>(m_face)->glyph;
    pg->nAdvance = static_cast<int>((slot->advance.x + 32) >> 6) + (m_bSynthBold ? 1 : 0);
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_MONO) != 0)
        return;
    const FT_Bitmap& bm = slot->bitmap;
    pg->nLeft = slot->bitmap_left;
    pg->nTop = slot->bitmap_top;
    pg->cx = static_cast<int>(bm.width);
    pg->cy = static_cast<int>(bm.rows);
    pg->bits.assign(static_cast<size_t>(pg->cx) * pg->cy, 0);
    for (int y = 0; y < pg->cy; ++y) {
        const unsigned char* row = bm.buffer + y * bm.pitch;
        for (int x = 0; x < pg->cx; ++x)
            pg->bits[static_cast<size_t>(y) * pg->cx + x] = (row[x >> 3] >> (7 - (x & 7))) & 1;
    }
}

Font* DcFont(const Dc* pdc)
{
    FontObj* pfo = GetFontObj(pdc->m_st.m_hFont);
    if (!pfo)
        return nullptr;
    if (!pfo->m_pFont)
        pfo->m_pFont = Font::Realize(pfo->m_lf);
    return pfo->m_pFont.get();
}

}  // namespace gdi

using namespace gdi;

HFONT CreateFontIndirect(const LOGFONTW* lplf)
{
    if (!lplf)
        return nullptr;
    auto p = std::make_unique<FontObj>();
    p->m_nType = OBJ_FONT;
    p->m_lf = *lplf;
    p->m_lf.lfFaceName[LF_FACESIZE - 1] = 0;
    return static_cast<HFONT>(Objects().Add(std::move(p)));
}

HFONT CreateFont(int cHeight, int cWidth, int cEscapement, int cOrientation, int cWeight, DWORD bItalic,
                 DWORD bUnderline, DWORD bStrikeOut, DWORD iCharSet, DWORD iOutPrecision, DWORD iClipPrecision,
                 DWORD iQuality, DWORD iPitchAndFamily, LPCWSTR pszFaceName)
{
    LOGFONTW lf{};
    lf.lfHeight = cHeight;
    lf.lfWidth = cWidth;  // width, escapement and orientation are kept but not applied
    lf.lfEscapement = cEscapement;
    lf.lfOrientation = cOrientation;
    lf.lfWeight = cWeight;
    lf.lfItalic = static_cast<BYTE>(bItalic != 0);
    lf.lfUnderline = static_cast<BYTE>(bUnderline != 0);
    lf.lfStrikeOut = static_cast<BYTE>(bStrikeOut != 0);
    lf.lfCharSet = static_cast<BYTE>(iCharSet);
    lf.lfOutPrecision = static_cast<BYTE>(iOutPrecision);
    lf.lfClipPrecision = static_cast<BYTE>(iClipPrecision);
    lf.lfQuality = static_cast<BYTE>(iQuality);
    lf.lfPitchAndFamily = static_cast<BYTE>(iPitchAndFamily);
    for (int i = 0; pszFaceName && pszFaceName[i] && i < LF_FACESIZE - 1; ++i)
        lf.lfFaceName[i] = pszFaceName[i];
    return CreateFontIndirect(&lf);
}

std::string GdiGetFontFile(HFONT hfont)
{
    FontObj* pfo = GetFontObj(hfont);
    if (!pfo)
        return {};
    if (!pfo->m_pFont)
        pfo->m_pFont = Font::Realize(pfo->m_lf);
    return pfo->m_pFont ? pfo->m_pFont->File() : std::string();
}

// fontconfig loses a few bytes while parsing its configuration files, once per process. LeakSanitizer calls
// this hook when present; naming the library here keeps every program that draws text clean under it.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
