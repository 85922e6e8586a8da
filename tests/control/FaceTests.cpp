// The painted face: text rectangle and alignment, borders by kind, the disabled and flat looks,
// design mode, checked by the draw-call log, by pixels, and against golden images.
#include "Golden.h"
#include "Harness.h"
#include "base/colors.h"
#include "control/QuillonCtrl.h"
#include "gdi/wingdi.h"
#include "user/winuser.h"

namespace {

class Face : public ControlTest {
protected:
    // The control's area of the composed screen, after a paint that finds it unfocused (the first
    // paint leaves the new edit showing until the next one).
    HBITMAP Shot(CControlSite* q)
    {
        Inside(q)->InvalidateControl();
        CRect rc;
        ::GetWindowRect(q->Window(), &rc);
        return m_host.Capture(&rc);
    }
    // The calls one face paint issues into a memory surface of the control's size.
    std::vector<std::string> PaintLog(CControlSite* q, const CRect& bounds = CRect(0, 0, 120, 24))
    {
        HDC dc = CreateCompatibleDC(nullptr);
        HBITMAP bm = CreateBitmap(bounds.right, bounds.bottom, 1, 32, nullptr);
        HGDIOBJ old = SelectObject(dc, bm);
        GdiSetDrawLog(TRUE);
        CDC cdc;
        cdc.Attach(dc);
        Inside(q)->DrawControlFace(&cdc, bounds);
        cdc.Detach();
        std::vector<std::string> log = GdiGetDrawLog();
        GdiSetDrawLog(FALSE);
        SelectObject(dc, old);
        DeleteObject(bm);
        DeleteDC(dc);
        return log;
    }
    static std::vector<std::string> Only(const std::vector<std::string>& log, const std::string& prefix)
    {
        std::vector<std::string> out;
        for (const auto& l : log)
            if (l.rfind(prefix, 0) == 0) out.push_back(l);
        return out;
    }
};

} // namespace

TEST_F(Face, LoweredBorderSegmentsInOrder)
{
    CControlSite* q = Create();
    m_host.Pump();
    auto lines = Only(PaintLog(q), "Polyline");
    const std::vector<std::string> kLowered = {
        "Polyline 0,23 0,0 119,0 #A0A0A0", "Polyline 0,23 119,23 119,-1 #FFFFFF",
        "Polyline 1,22 118,22 118,0 #E3E3E3", "Polyline 1,22 1,1 118,1 #000000"};
    ExpectSequence(kLowered, lines);
    Put(q, u"BorderType", COleVariant(LONG(0)));
    Put(q, u"BorderColor", COleVariant(LONG(0x0000FF)));
    ExpectSequence({"Polyline 0,0 119,0 119,23 0,23 0,0 #FF0000"}, Only(PaintLog(q), "Polyline"));
    Put(q, u"BorderType", COleVariant(LONG(1)));
    ExpectSequence({}, Only(PaintLog(q), "Polyline"));
}

TEST_F(Face, TextRectangleAlignmentAndOverflow)
{
    CControlSite* q = Create();
    Put(q, u"Text", COleVariant(u"abc"));
    m_host.Pump();
    auto text = Only(PaintLog(q, CRect(0, 0, 100, 20)), "DrawText");
    ASSERT_EQ(text.size(), 1u);
    EXPECT_EQ(text[0].substr(0, text[0].find('"')), "DrawText 3,3,96,18 ");
    Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
    text = Only(PaintLog(q, CRect(0, 0, 100, 20)), "DrawText");
    EXPECT_EQ(text[0].substr(0, text[0].find('"')), "DrawText 3,3,80,18 ");

    Put(q, u"DropButton", COleVariant(SHORT(0), VT_BOOL));
    Put(q, u"Text", COleVariant(CString(u'W', 40)));
    Put(q, u"Alignment", COleVariant(LONG(1)));
    text = Only(PaintLog(q, CRect(0, 0, 100, 20)), "DrawText");
    EXPECT_EQ(text[0].find("DrawText 3,"), std::string::npos) << "right-aligned overflow widens to the left: " << text[0];
    EXPECT_NE(text[0].find(",3,96,18 "), std::string::npos) << text[0];
}

TEST_F(Face, PasswordEchoAndDesignModeMask)
{
    CControlSite* q = Create();
    Put(q, u"Text", COleVariant(u"secret"));
    Put(q, u"PasswordChar", COleVariant(u"*"));
    EXPECT_NE(Only(PaintLog(q), "DrawText")[0].find("\"******\""), std::string::npos);
    Put(q, u"PasswordChar", COleVariant(u""));
    Put(q, u"Text", COleVariant(u""));
    Put(q, u"EditMask", COleVariant(u"(###)"));
    EXPECT_TRUE(Only(PaintLog(q), "DrawText").empty()) << "an empty run-mode face draws no text";
    m_host.m_bUserMode = FALSE;
    EXPECT_NE(Only(PaintLog(q), "DrawText")[0].find("\"(###)\""), std::string::npos) << "design mode shows the mask";
}

TEST_F(Face, FlatFaceShowsBorderOnlyWhenActive)
{
    CControlSite* q = Create();
    Put(q, u"DisplayStyle", COleVariant(LONG(1)));
    m_host.Pump();
    EXPECT_TRUE(Only(PaintLog(q), "Polyline").empty());
    m_host.Focus(*q);
    EXPECT_EQ(Only(PaintLog(q), "Polyline").size(), 4u) << "focused: the border returns";
    EXPECT_TRUE(Only(PaintLog(q), "DrawText").empty()) << "the edit shows the text";
    Put(q, u"Enabled", COleVariant(SHORT(0), VT_BOOL));
    auto fills = Only(PaintLog(q), "FillRect");
    ASSERT_FALSE(fills.empty());
    EXPECT_EQ(fills[0], "FillRect 1,1,119,23 #F0F0F0") << "disabled flat face in DropBackColor";
}

TEST_F(Face, RunModePaintsThroughABufferAndSkipsAFailedOne)
{
    CControlSite* q = Create();
    Put(q, u"Text", COleVariant(u"Quillon"));
    m_host.Pump();
    CRect rc;
    ::GetWindowRect(q->Window(), &rc);
    EXPECT_EQ(m_host.Pixel(rc.left + 60, rc.top + 22), RGB(0xE3, 0xE3, 0xE3)) << "the inner light edge";
    EXPECT_EQ(m_host.Pixel(rc.left + 1, rc.top + 5), RGB(0, 0, 0)) << "the inner dark edge";
    GdiSetFailBitmapCreation(TRUE);
    Put(q, u"BackColor", COleVariant(LONG(0x0000FF)));
    m_host.Pump();
    GdiSetFailBitmapCreation(FALSE);
    EXPECT_NE(m_host.Pixel(rc.left + 60, rc.top + 12), RGB(0xFF, 0, 0)) << "nothing painted without a buffer";
    Inside(q)->InvalidateControl();
    EXPECT_EQ(m_host.Pixel(rc.left + 100, rc.top + 12), RGB(0xFF, 0, 0)) << "the next paint tries again";
}

TEST_F(Face, SystemColoursFollowAtTheNextPaint)
{
    CControlSite* q = Create();
    m_host.Pump();
    CRect rc;
    ::GetWindowRect(q->Window(), &rc);
    EXPECT_EQ(m_host.Pixel(rc.left + 60, rc.top + 12), RGB(0xFF, 0xFF, 0xFF));
    m_host.SysColor(COLOR_WINDOW, RGB(0xFF, 0xFF, 0xE0));
    EXPECT_EQ(m_host.Pixel(rc.left + 60, rc.top + 12), RGB(0xFF, 0xFF, 0xE0));
    ResetSysColors();
}

TEST_F(Face, GoldenFacesByBorderKind)
{
    const char* names[] = {"face_regular", "face_none", "face_raised", "face_lowered"};
    for (LONG border = 0; border < 4; ++border) {
        CControlSite* q = Create();
        Put(q, u"BorderType", COleVariant(border));
        Put(q, u"BorderColor", COleVariant(LONG(0x804000)));
        Put(q, u"Text", COleVariant(u"(555) 123-4567"));
        m_host.Pump();
        HBITMAP shot = Shot(q);
        ExpectMatchesGolden(shot, names[border]);
        DeleteObject(shot);
    }
}

TEST_F(Face, GoldenFacesWithButtons)
{
    struct Look { const char* name; LONG style; LONG fill; LONG arrow; bool pressSpin; bool disabled; };
    const Look looks[] = {
        {"buttons_regular", 0, 0, 0, false, false},  {"buttons_modern_gradient", 1, 1, 1, false, false},
        {"buttons_regular_diamond", 0, 7, 2, false, false}, {"buttons_modern_vertedge", 1, 12, 3, false, false},
        {"buttons_disabled", 0, 0, 0, false, true},
    };
    for (const auto& look : looks) {
        CControlSite* q = Create();
        Put(q, u"SpinButton", COleVariant(SHORT(1), VT_BOOL));
        Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
        Put(q, u"ButtonStyle", COleVariant(look.style));
        Put(q, u"ButtonFillType", COleVariant(look.fill));
        Put(q, u"ArrowType", COleVariant(look.arrow));
        Put(q, u"DropBackColorTo", COleVariant(LONG(0xC08040)));
        Put(q, u"SpinBackColorTo", COleVariant(LONG(0x4080C0)));
        Put(q, u"Text", COleVariant(u"12.50"));
        if (look.disabled) Put(q, u"Enabled", COleVariant(SHORT(0), VT_BOOL));
        m_host.Pump();
        HBITMAP shot = Shot(q);
        ExpectMatchesGolden(shot, look.name);
        DeleteObject(shot);
    }
}

TEST_F(Face, GoldenPresets)
{
    const char* names[] = {"preset_default", "preset_flat", "preset_xpblue", "preset_xpolive", "preset_vistablue"};
    for (LONG style = 1; style <= 5; ++style) {
        CControlSite* q = Create();
        Put(q, u"SpinButton", COleVariant(SHORT(1), VT_BOOL));
        Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
        Put(q, u"ControlStyle", COleVariant(style));
        Put(q, u"Text", COleVariant(u"Preset"));
        m_host.Pump();
        HBITMAP shot = Shot(q);
        ExpectMatchesGolden(shot, names[style - 1]);
        DeleteObject(shot);
    }
}

TEST_F(Face, GoldenPictureOnTheDropButton)
{
    // A 9 by 7 arrow-like bitmap: blue on the mask colour, so that the mask shows through.
    HBITMAP bm = CreateBitmap(9, 7, 1, 32, nullptr);
    DWORD* px = GdiBitmapPixels(bm);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x) px[y * 9 + x] = (x >= y && x < 9 - y) ? 0x0000C0 : 0xFF00FF;
    CPictureHolder pic;
    ASSERT_TRUE(pic.CreateFromBitmap(bm, nullptr, TRUE));
    const char* names[] = {"picture_plain", "picture_masked", "picture_embossed"};
    for (int kind = 0; kind < 3; ++kind) {
        CControlSite* q = Create();
        Put(q, u"DropButton", COleVariant(SHORT(1), VT_BOOL));
        Put(q, u"DropWidth", COleVariant(LONG(20)));
        COleVariant disp(static_cast<IDispatch*>(nullptr));
        disp.pdispVal = pic.GetPictureDispatch();
        Put(q, u"DropPicture", disp);
        Put(q, u"MaskColor", COleVariant(LONG(0xFF00FF)));
        Put(q, u"MaskBitmap", COleVariant(SHORT(kind == 1), VT_BOOL));
        Put(q, u"EmbossBitmap", COleVariant(SHORT(kind == 2), VT_BOOL));
        if (kind == 2) Put(q, u"Enabled", COleVariant(SHORT(0), VT_BOOL));
        m_host.Pump();
        HBITMAP shot = Shot(q);
        ExpectMatchesGolden(shot, names[kind]);
        DeleteObject(shot);
    }
}
