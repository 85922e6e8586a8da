// The picture on a real drop button, as a person sees it on the composed screen of a host.
#include "PictureKit.h"

namespace {

constexpr COLORREF kMark = 0x55aa00, kMask = 0xff0000;

// The smallest rectangle of the control's screen area that holds every pixel of one colour.
CRect Bounds(CHost& host, const RECT& area, COLORREF clr)
{
    HBITMAP hbm = host.Capture(&area);
    std::vector<COLORREF> px = BitmapPixels(hbm);
    DeleteObject(hbm);
    const int cx = area.right - area.left;
    CRect found(INT_MAX, INT_MAX, INT_MIN, INT_MIN);
    for (size_t i = 0; i < px.size(); ++i) {
        if (px[i] != clr) continue;
        LONG x = area.left + static_cast<LONG>(i % cx), y = area.top + static_cast<LONG>(i / cx);
        found.SetRect(std::min(found.left, x), std::min(found.top, y), std::max(found.right, x + 1), std::max(found.bottom, y + 1));
    }
    return found.left == INT_MAX ? CRect() : found;
}

} // namespace

// A masked picture sits on the drop button with its mask colour gone, and moves one pixel right and
// down while the button is held.
TEST_F(HostTest, MaskedPictureOnTheDropButtonFollowsThePress)
{
    TempFolder folder;
    WriteBmp(folder.File("mark.bmp"), {"QQQQQQ", "QMMMMQ", "QMMMMQ", "QMMMMQ", "QQQQQQ"}, {{'Q', kMark}, {'M', kMask}});
    CControlSite* q = Create();
    std::string reason;
    IPictureDisp* pic = m_host.LoadPicture(folder.File("mark.bmp").c_str(), &reason);
    ASSERT_NE(pic, nullptr) << reason;
    EXPECT_EQ(q->Put(u"DropPicture", COleVariant(pic)), S_OK);
    pic->Release();
    PutNumber(q->Control(), u"DropButton", 1);
    PutNumber(q->Control(), u"MaskBitmap", 1);
    m_host.Pump();

    const RECT area{110, 110, 230, 134}; // the control's place on the form, in screen coordinates
    CRect mark = Bounds(m_host, area, kMark);
    EXPECT_EQ(mark.Width(), 6);
    EXPECT_EQ(mark.Height(), 5);
    EXPECT_TRUE(Bounds(m_host, area, kMask).IsRectEmpty()) << "the mask colour shows";
    EXPECT_NE(m_host.Pixel(mark.left + 2, mark.top + 2), kMark);

    m_host.Press(mark.left + 3, mark.top + 2);
    m_host.Pump();
    EXPECT_EQ(Bounds(m_host, area, kMark), CRect(mark.left + 1, mark.top + 1, mark.right + 1, mark.bottom + 1));
    m_host.Release(mark.left + 3, mark.top + 2);
    m_host.Pump();
    EXPECT_EQ(Bounds(m_host, area, kMark), mark);
}
