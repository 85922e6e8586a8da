// Pictures from files through the host, their placing sizes, and a bitmap picture kept through save and load.
#include <fstream>
#include "PictureKit.h"

namespace {

const Legend kColours{{'.', 0x563412}, {'R', 0x0000ff}, {'G', 0x00ff00}, {'B', 0xff0000}, {'W', 0xffffff}};

// The picture's kind, and for a bitmap its pixels.
struct Seen {
    SHORT nType = -1;
    std::vector<COLORREF> pixels;
};

Seen Look(IDispatch* pDisp)
{
    Seen seen;
    IPicture* pPict = nullptr;
    if (!pDisp || FAILED(pDisp->QueryInterface(IID_IPicture, reinterpret_cast<void**>(&pPict)))) return seen;
    OLE_HANDLE handle = 0;
    pPict->get_Type(&seen.nType);
    pPict->get_Handle(&handle);
    if (seen.nType == PICTYPE_BITMAP) seen.pixels = BitmapPixels(reinterpret_cast<HBITMAP>(static_cast<uintptr_t>(handle)));
    pPict->Release();
    return seen;
}

std::vector<COLORREF> PixelsOf(const Grid& rows)
{
    std::vector<COLORREF> px;
    for (const std::string& row : rows)
        for (char ch : row) px.push_back(kColours.at(ch));
    return px;
}

const Grid kArrow{"..R....", ".RGR...", "RBWBR.."};

} // namespace

// BMP, ICO and PNG by their extension, in any case; the placing size is a bitmap's own with a minimum
// of 5, and 32 for any icon.
TEST_F(PictureTest, HostLoadsPicturesFromFilesAndTheControlSizesThem)
{
    TempFolder folder;
    CHost host;
    WriteBmp(folder.File("arrow.BMP"), kArrow, kColours);
    Grid icon(16, std::string(16, 'R'));
    icon[0] = std::string(16, '.');
    WriteIco(folder.File("drop.ico"), icon, kColours);
    {
        CBitmap png;
        png.Attach(MakeBitmap({"RGBRGB", "WWWWWW", "BBBBBB", "GGGGGG", "RRRRRR", "......"}, kColours));
        ASSERT_TRUE(SaveBitmapPng(png, folder.File("six.png").c_str()));
    }

    std::string reason;
    IPictureDisp* bmp = host.LoadPicture(folder.File("arrow.BMP").c_str(), &reason);
    ASSERT_NE(bmp, nullptr) << reason;
    Seen seen = Look(bmp);
    EXPECT_EQ(seen.nType, PICTYPE_BITMAP);
    EXPECT_EQ(seen.pixels, PixelsOf(kArrow));
    m_ctrl->m_picDrop.SetPictureDispatch(bmp);
    bmp->Release();
    m_ctrl->UpdatePictureSize();
    EXPECT_EQ(m_ctrl->m_nPicWidth, 7);
    EXPECT_EQ(m_ctrl->m_nPicHeight, 5);

    IPictureDisp* ico = host.LoadPicture(folder.File("drop.ico").c_str(), &reason);
    ASSERT_NE(ico, nullptr) << reason;
    EXPECT_EQ(Look(ico).nType, PICTYPE_ICON);
    m_ctrl->m_picDrop.SetPictureDispatch(ico);
    ico->Release();
    m_ctrl->UpdatePictureSize();
    EXPECT_EQ(m_ctrl->m_nPicWidth, 32);
    EXPECT_EQ(m_ctrl->m_nPicHeight, 32);
    // Drawn at its own 16 by 16 from the top-left; its transparent top row leaves the target.
    Canvas canvas(40, 40, 0x563412);
    m_ctrl->m_picDrop.Render(canvas.DC(), CRect(2, 3, 34, 35), CRect(2, 3, 34, 35));
    ExpectGrid({"...", "...", ".RR"}, canvas.Read(1, 2, 3, 3, kColours));
    ExpectGrid({".RR", "..."}, canvas.Read(1, 18, 3, 2, kColours));
    ExpectGrid({"RR."}, canvas.Read(16, 10, 3, 1, kColours));

    IPictureDisp* png = host.LoadPicture(folder.File("six.png").c_str(), &reason);
    ASSERT_NE(png, nullptr) << reason;
    seen = Look(png);
    EXPECT_EQ(seen.nType, PICTYPE_BITMAP);
    EXPECT_EQ(seen.pixels, PixelsOf({"RGBRGB", "WWWWWW", "BBBBBB", "GGGGGG", "RRRRRR", "......"}));
    png->Release();
}

// A missing file, an unknown kind and a broken file give no picture, a reason naming the file,
// and leave nothing behind.
TEST_F(PictureTest, HostRefusesWhatIsNotAPicture)
{
    TempFolder folder;
    CHost host;
    std::ofstream(folder.File("broken.bmp"), std::ios::binary) << "BM not really a bitmap";
    std::ofstream(folder.File("broken.ico"), std::ios::binary) << std::string("\0\0\1\0\1\0", 6);
    WriteBmp(folder.File("real.gif"), kArrow, kColours);
    for (const char* name : {"missing.bmp", "broken.bmp", "broken.ico", "real.gif", "no-extension"}) {
        std::string reason;
        EXPECT_EQ(host.LoadPicture(folder.File(name).c_str(), &reason), nullptr) << name;
        EXPECT_NE(reason.find(name), std::string::npos) << "reason: " << reason;
    }
    EXPECT_EQ(host.LoadPicture(nullptr), nullptr);
}

// A bitmap picture put through the dispatch interface is saved with the control and comes back
// with the same pixels.
TEST_F(HostTest, BitmapPictureSurvivesSaveAndLoad)
{
    TempFolder folder;
    WriteBmp(folder.File("arrow.bmp"), kArrow, kColours);
    CControlSite* q = Create();
    std::string reason;
    IPictureDisp* pic = m_host.LoadPicture(folder.File("arrow.bmp").c_str(), &reason);
    ASSERT_NE(pic, nullptr) << reason;
    EXPECT_EQ(q->Put(u"DropPicture", COleVariant(pic)), S_OK);
    pic->Release();
    EXPECT_EQ(q->Put(u"MaskBitmap", COleVariant(LONG(1), VT_BOOL)), S_OK);

    CControlSite* again = Load(q->Save());
    COleVariant v;
    ASSERT_EQ(again->Get(u"DropPicture", &v), S_OK);
    ASSERT_EQ(v.vt, VT_DISPATCH);
    Seen seen = Look(v.pdispVal);
    EXPECT_EQ(seen.nType, PICTYPE_BITMAP);
    EXPECT_EQ(seen.pixels, PixelsOf(kArrow));
    EXPECT_EQ(GetNumber(again->Control(), u"MaskBitmap"), 1);

    // Emptied, it saves as the default and loads back as no picture.
    EXPECT_EQ(q->Put(u"DropPicture", COleVariant(static_cast<IDispatch*>(nullptr))), S_OK);
    CControlSite* empty = Load(q->Save());
    COleVariant e;
    ASSERT_EQ(empty->Get(u"DropPicture", &e), S_OK);
    EXPECT_NE(Look(e.vt == VT_DISPATCH ? e.pdispVal : nullptr).nType, PICTYPE_BITMAP);
}
