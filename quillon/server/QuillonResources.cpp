// The module's resources: the About box (dialog 1), the General, More and About pages (dialogs 200,
// 201, 202) with the pages' combo box lines, the strings, the icons and toolbox bitmap, and the
// version resource, handed to the platform's resource tables when the module loads.
#include "server/QuillonResources.h"
#include <iterator>
#include <vector>
#include "base/winver.h"
#include "gdi/standin.h"
#include "framework/dc.h"
#include "gdi/wingdi.h"
#include "server/resource.h"
#include "user/winuser.h"

namespace {

constexpr DWORD kPage = WS_CHILD | DS_CONTROL | DS_SETFONT;
constexpr DWORD kLabel = SS_LEFT | SS_NOPREFIX;
constexpr DWORD kField = WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL;
constexpr DWORD kList = WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_SORT;
constexpr DWORD kCheck = WS_TABSTOP | BS_AUTOCHECKBOX;
constexpr const char16_t* kFont = u"MS Shell Dlg";

// Fields in tab order, each after its label.
const DLGITEMTEMPLATE kGeneralItems[] = {
    {kLabel, 0, 6, 5, 48, 8, IDC_STATIC, WC_STATIC, u"Text : "},
    {kField, 0, 57, 3, 192, 12, IDC_TEXT, WC_EDIT, u""},
    {kLabel, 0, 6, 23, 50, 8, IDC_STATIC, WC_STATIC, u"Border Type :"},
    {kList, 0, 57, 21, 66, 65, IDC_BORDERTYPE, WC_COMBOBOX, u""},
    {kLabel, 0, 132, 23, 55, 8, IDC_STATIC, WC_STATIC, u"Arrow Type :"},
    {kList, 0, 189, 21, 63, 60, IDC_ARROWTYPE, WC_COMBOBOX, u""},
    {kLabel, 0, 6, 38, 50, 8, IDC_STATIC, WC_STATIC, u"Display Style :"},
    {kList, 0, 57, 36, 66, 54, IDC_DISPLAYSTYLE, WC_COMBOBOX, u""},
    {kLabel, 0, 127, 38, 61, 8, IDC_STATIC, WC_STATIC, u"Button Fill Type :"},
    // Not sorted: sorted, "10 - Ellipse" would come before "2 - Vertical".
    {WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN, 0, 189, 36, 63, 87, IDC_BUTTONFILLTYPE, WC_COMBOBOX, u""},
    {kLabel, 0, 6, 53, 50, 8, IDC_STATIC, WC_STATIC, u"Button Style :"},
    {kList, 0, 57, 51, 66, 60, IDC_BUTTONSTYLE, WC_COMBOBOX, u""},
    {kLabel, 0, 132, 53, 55, 8, IDC_STATIC, WC_STATIC, u"Alignment :"},
    {kList, 0, 189, 51, 63, 60, IDC_ALIGNMENT, WC_COMBOBOX, u""},
    {kCheck, 0, 6, 70, 53, 10, IDC_SPINBUTTON, WC_BUTTON, u"Spin Button"},
    {kLabel, 0, 84, 71, 70, 8, IDC_STATIC, WC_STATIC, u"Spin Button Width :"},
    {kField, 0, 156, 69, 30, 12, IDC_SPINWIDTH, WC_EDIT, u""},
    {kCheck, 0, 6, 84, 54, 10, IDC_DROPBUTTON, WC_BUTTON, u"Drop Button"},
    {kLabel, 0, 84, 86, 70, 8, IDC_STATIC, WC_STATIC, u"Drop Button Width :"},
    {kField, 0, 156, 84, 30, 12, IDC_DROPWIDTH, WC_EDIT, u""},
    {kCheck, 0, 6, 99, 65, 10, IDC_REVERSEBORDER, WC_BUTTON, u"Reverse Border"},
    {kLabel, 0, 6, 116, 48, 8, IDC_STATIC, WC_STATIC, u"Initial Delay :"},
    {kField, 0, 56, 114, 30, 12, IDC_INITIALDELAY, WC_EDIT, u""},
    {kLabel, 0, 100, 116, 54, 8, IDC_STATIC, WC_STATIC, u"Repeat Rate :"},
    {kField, 0, 156, 114, 30, 12, IDC_REPEATRATE, WC_EDIT, u""},
    {kLabel, 0, 6, 131, 48, 8, IDC_STATIC, WC_STATIC, u"Button Bevel :"},
    {kField, 0, 56, 129, 30, 12, IDC_BUTTONBEVEL, WC_EDIT, u""},
    {kLabel, 0, 90, 131, 64, 8, IDC_STATIC, WC_STATIC, u"Picture X Offset :"},
    {kField, 0, 156, 129, 30, 12, IDC_PICXOFFSET, WC_EDIT, u""},
    {kLabel, 0, 197, 131, 12, 8, IDC_STATIC, WC_STATIC, u"Y :"},
    {kField, 0, 211, 129, 30, 12, IDC_PICYOFFSET, WC_EDIT, u""},
};

const DLGITEMTEMPLATE kMoreItems[] = {
    {kLabel, 0, 6, 5, 52, 8, IDC_STATIC, WC_STATIC, u"Edit Mask :"},
    {kField, 0, 60, 3, 186, 12, IDC_EDITMASK, WC_EDIT, u""},
    {kLabel, 0, 6, 23, 52, 8, IDC_STATIC, WC_STATIC, u"Case Type :"},
    {kList, 0, 60, 21, 66, 45, IDC_CASETYPE, WC_COMBOBOX, u""},
    {kCheck, 0, 6, 42, 70, 8, IDC_USEMASKCHARS, WC_BUTTON, u"Use Mask Chars"},
    {kCheck, 0, 96, 42, 69, 10, IDC_SELECTONFOCUS, WC_BUTTON, u"Select On Focus"},
    {kCheck, 0, 186, 42, 40, 8, IDC_ENABLED, WC_BUTTON, u"Enabled"},
    {kCheck, 0, 6, 57, 57, 10, IDC_MASKBITMAP, WC_BUTTON, u"Mask Bitmap"},
    {kCheck, 0, 96, 57, 64, 10, IDC_EMBOSSBITMAP, WC_BUTTON, u"Emboss Bitmap"},
    {kLabel, 0, 6, 83, 54, 8, IDC_STATIC, WC_STATIC, u"Auto Complete :"},
    {kList, 0, 60, 81, 66, 69, IDC_AUTOCOMPLETE, WC_COMBOBOX, u""},
    {kLabel, 0, 132, 83, 46, 8, IDC_STATIC, WC_STATIC, u"Scroll Style :"},
    {kList, 0, 180, 81, 66, 54, IDC_SCROLLSTYLE, WC_COMBOBOX, u""},
    {kLabel, 0, 6, 101, 54, 8, IDC_STATIC, WC_STATIC, u"Auto Find Size :"},
    {kField, 0, 60, 99, 27, 12, IDC_AUTOFINDSIZE, WC_EDIT, u""},
    {kLabel, 0, 132, 101, 46, 8, IDC_STATIC, WC_STATIC, u"List Offset :"},
    {kField, 0, 180, 99, 27, 12, IDC_LISTOFFSET, WC_EDIT, u""},
    {kCheck, 0, 6, 117, 54, 10, IDC_MATCHCASE, WC_BUTTON, u"Match Case"},
    {kCheck, 0, 96, 117, 37, 10, IDC_SORTED, WC_BUTTON, u"Sorted"},
    {kLabel, 0, 134, 24, 60, 8, IDC_STATIC, WC_STATIC, u"Password Char :"},
    {kField, 0, 196, 22, 35, 12, IDC_PASSWORDCHAR, WC_EDIT, u""},
};

// The maker's lines are ours to word.
constexpr const char16_t* kMakerLine = u"Made by the Quillon developers";
constexpr const char16_t* kContact1 = u"Questions and fixes: the Quillon project's issue tracker.";
constexpr const char16_t* kContact2 = u"Built from source with CMake; see the README.";

const DLGITEMTEMPLATE kAboutPageItems[] = {
    {SS_ICON, 0, 10, 35, 20, 20, IDC_STATIC, WC_STATIC, MAKEINTRESOURCE(IDI_ABOUTDLL)},
    {kLabel, 0, 45, 20, 141, 9, IDC_STATIC, WC_STATIC, u"Quillon OCX 2.0 Masked Edit Control "},
    {kLabel, 0, 45, 35, 159, 10, IDC_STATIC, WC_STATIC, kMakerLine},
    {SS_ICON, 0, 10, 10, 20, 20, IDC_STATIC, WC_STATIC, MAKEINTRESOURCE(IDI_MAKER)},
    {kLabel, 0, 10, 66, 230, 8, IDC_STATIC, WC_STATIC, kContact1},
    {kLabel, 0, 10, 78, 230, 8, IDC_STATIC, WC_STATIC, kContact2},
};

const DLGITEMTEMPLATE kAboutBoxItems[] = {
    {SS_ICON, 0, 10, 10, 20, 20, IDC_STATIC, WC_STATIC, MAKEINTRESOURCE(IDI_ABOUTDLL)},
    {kLabel, 0, 40, 10, 170, 8, IDC_STATIC, WC_STATIC, u"Quillon Masked Edit Control, Version 2.0"},
    {kLabel, 0, 40, 25, 170, 8, IDC_STATIC, WC_STATIC, kMakerLine},
    {WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 221, 7, 32, 14, IDOK, WC_BUTTON, u"OK"},
    {SS_ICON, 0, 9, 54, 20, 20, IDC_STATIC, WC_STATIC, MAKEINTRESOURCE(IDI_MAKER)},
    {kLabel, 0, 40, 54, 210, 8, IDC_STATIC, WC_STATIC, kContact1},
    {kLabel, 0, 40, 66, 210, 8, IDC_STATIC, WC_STATIC, kContact2},
};

template <size_t N>
constexpr WORD Count(const DLGITEMTEMPLATE (&)[N]) { return static_cast<WORD>(N); }

const DLGTEMPLATE kGeneral = {kPage, 0, 0, 0, 260, 146, u"General", 8, kFont, kGeneralItems, Count(kGeneralItems)};
const DLGTEMPLATE kMore = {kPage, 0, 0, 0, 250, 131, u"More", 8, kFont, kMoreItems, Count(kMoreItems)};
const DLGTEMPLATE kAboutPage = {kPage, 0, 0, 0, 250, 110, u"About", 8, kFont, kAboutPageItems, Count(kAboutPageItems)};
const DLGTEMPLATE kAboutBox = {DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT, 0, 0, 0, 260, 95,
                               u"About Quillon Control", 8, kFont, kAboutBoxItems, Count(kAboutBoxItems)};

// The lines of the combo boxes, each starting with its value, in the order given.
const DLGINITENTRY kGeneralInit[] = {
    {IDC_BORDERTYPE, CB_ADDSTRING, u"0 - Regular"}, {IDC_BORDERTYPE, CB_ADDSTRING, u"1 - None"},
    {IDC_BORDERTYPE, CB_ADDSTRING, u"2 - Raised"}, {IDC_BORDERTYPE, CB_ADDSTRING, u"3 - Lowered"},
    {IDC_ARROWTYPE, CB_ADDSTRING, u"0 - Small Arrow"}, {IDC_ARROWTYPE, CB_ADDSTRING, u"1 - Large Arrow"},
    {IDC_ARROWTYPE, CB_ADDSTRING, u"2 - Line Type 1"}, {IDC_ARROWTYPE, CB_ADDSTRING, u"3 - Line Type 2"},
    {IDC_DISPLAYSTYLE, CB_ADDSTRING, u"0 - Regular"}, {IDC_DISPLAYSTYLE, CB_ADDSTRING, u"1 - Flat"},
    {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"0 - Solid"}, {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"1 - Horizontal"},
    {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"2 - Vertical"}, {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"3 - Diagonal"},
    {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"4 - Reverse Diagonal"}, {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"5 - Horizontal Bump"},
    {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"6 - Vertical Bump"}, {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"7 - Diamond"},
    {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"8 - Pyramid"}, {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"9 - Circle"},
    {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"10 - Ellipse"}, {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"11 - Horizontal Edge"},
    {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"12 - Vertical Edge"}, {IDC_BUTTONFILLTYPE, CB_ADDSTRING, u"13 - Vertical Edge 2"},
    {IDC_BUTTONSTYLE, CB_ADDSTRING, u"0 - Regular"}, {IDC_BUTTONSTYLE, CB_ADDSTRING, u"1 - Modern"},
    {IDC_ALIGNMENT, CB_ADDSTRING, u"0 - Left Justify"}, {IDC_ALIGNMENT, CB_ADDSTRING, u"1 - Right Justify"},
    {IDC_ALIGNMENT, CB_ADDSTRING, u"2 - Center"},
};

const DLGINITENTRY kMoreInit[] = {
    {IDC_CASETYPE, CB_ADDSTRING, u"0 - None"}, {IDC_CASETYPE, CB_ADDSTRING, u"1 - Upper"},
    {IDC_CASETYPE, CB_ADDSTRING, u"2 - Lower"},
    {IDC_AUTOCOMPLETE, CB_ADDSTRING, u"0 - None"}, {IDC_AUTOCOMPLETE, CB_ADDSTRING, u"1 - Append"},
    {IDC_AUTOCOMPLETE, CB_ADDSTRING, u"2 - Suggest"}, {IDC_AUTOCOMPLETE, CB_ADDSTRING, u"3 - Both"},
    {IDC_SCROLLSTYLE, CB_ADDSTRING, u"0 - Regular"}, {IDC_SCROLLSTYLE, CB_ADDSTRING, u"1 - Thin"},
    {IDC_SCROLLSTYLE, CB_ADDSTRING, u"2 - Modern (XP)"},
};

// Images ----------------------------------------------------------------------------------------

// The 16 colours the images use.
constexpr COLORREF kBlack = RGB(0, 0, 0), kWhite = RGB(255, 255, 255), kGray = RGB(128, 128, 128),
                   kSilver = RGB(192, 192, 192), kNavy = RGB(0, 0, 128), kBlue = RGB(0, 0, 255),
                   kMaroon = RGB(128, 0, 0), kOlive = RGB(128, 128, 0), kYellow = RGB(255, 255, 0);

void Fill(CDC* pDC, int l, int t, int r, int b, COLORREF c)
{
    RECT rc{l, t, r, b};
    pDC->FillSolidRect(&rc, c);
}

void Poly(CDC* pDC, const POINT* pts, int n, COLORREF c)
{
    CBrush brush;
    CPen pen;
    brush.CreateSolidBrush(c);
    pen.CreatePen(PS_SOLID, 1, c);
    CSelectObject selBrush(pDC, &brush), selPen(pDC, &pen);
    pDC->Polygon(pts, n);
}

// The control's own look in small: a sunken field holding a mask's digits, with spin buttons.
void PaintControlImage(CDC* hdc, int size)
{
    int s = size / 16;   // 1 for 16 pixels, 2 for 32
    Fill(hdc, 0, 3 * s, size, 13 * s, kGray);
    Fill(hdc, s, 4 * s, size - s, 12 * s, kWhite);
    for (int i = 0; i < 3; ++i) Fill(hdc, (2 + 3 * i) * s, 6 * s, (4 + 3 * i) * s, 10 * s, kNavy);
    Fill(hdc, 11 * s, 4 * s, size - s, 12 * s, kSilver);
    POINT up[] = {{12 * s, 7 * s}, {14 * s, 5 * s}, {16 * s - 1, 7 * s}};
    POINT down[] = {{12 * s, 9 * s}, {14 * s, 11 * s}, {16 * s - 1, 9 * s}};
    Poly(hdc, up, 3, kBlack);
    Poly(hdc, down, 3, kBlack);
}

// The maker's mark: a quill across a yellow disc.
void PaintMakerImage(CDC* hdc, int size)
{
    {
        CBrush brush;
        CPen pen;
        brush.CreateSolidBrush(kYellow);
        pen.CreatePen(PS_SOLID, 1, kOlive);
        CSelectObject selBrush(hdc, &brush), selPen(hdc, &pen);
        hdc->Ellipse(1, 1, size - 1, size - 1);
    }
    POINT feather[] = {{size - 4, 3}, {size / 2 + 2, size / 2 + 4}, {size / 2 - 4, size / 2 + 2}};
    Poly(hdc, feather, 3, kWhite);
    POINT shaft[] = {{size - 4, 3}, {6, size - 6}, {7, size - 5}};
    Poly(hdc, shaft, 3, kMaroon);
    Fill(hdc, 4, size - 5, 7, size - 3, kBlue);
}

using Painter = void (*)(CDC*, int);

HBITMAP PaintBitmap(int cx, int cy, Painter paint, COLORREF clrBack)
{
    HBITMAP bm = CreateBitmap(cx, cy, 1, 32, nullptr);
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    CSelectObject selected(&dc, bm);
    Fill(&dc, 0, 0, cx, cy, clrBack);
    paint(&dc, cx);
    return bm;
}

// An icon whose transparent parts are where the painter left the key colour.
HICON PaintIcon(int size, Painter paint)
{
    constexpr COLORREF kKey = RGB(255, 0, 255);
    HBITMAP colour = PaintBitmap(size, size, paint, kKey);
    std::vector<BYTE> maskBits(size * ((size + 15) / 16) * 2, 0);
    DWORD* px = GdiBitmapPixels(colour);
    int stride = ((size + 15) / 16) * 2;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            if ((px[y * size + x] & 0xFFFFFF) == 0xFF00FF) {
                maskBits[y * stride + x / 8] |= static_cast<BYTE>(0x80 >> (x % 8));
                px[y * size + x] = 0;   // transparent parts add nothing to the screen
            }
    HBITMAP mask = CreateBitmap(size, size, 1, 1, maskBits.data());
    ICONINFO ii{TRUE, 0, 0, mask, colour};
    HICON icon = CreateIconIndirect(&ii);
    DeleteObject(mask);
    DeleteObject(colour);
    return icon;
}

// Version ------------------------------------------------------------------------------------

// OLESelfRegister, present with no value, tells installers that the module registers itself.
const VERSIONSTRING kVersionStrings[] = {
    {u"CompanyName", u"The Quillon developers"},
    {u"FileDescription", u"Quillon Masked Edit ActiveX Control"},
    {u"FileVersion", u"2, 0, 0, 4"},
    {u"InternalName", u"QUILLON"},
    {u"LegalCopyright", u"Copyright (C) The Quillon developers"},
    {u"OLESelfRegister", u""},
    {u"OriginalFilename", u"QUILLON.OCX"},
    {u"ProductName", u"Quillon ActiveX Control"},
    {u"ProductVersion", u"2, 0, 0, 4"},
};

// US English, Unicode.
const VERSIONINFOTEMPLATE kVersionInfo = {
    {2, 0, 0, 4}, {2, 0, 0, 4}, VS_FFI_FILEFLAGSMASK, 0, VOS__WINDOWS32, VFT_DLL, VFT2_UNKNOWN,
    0x0409, 0x04B0, kVersionStrings, std::size(kVersionStrings),
};

} // namespace

void RegisterQuillonVersion(HMODULE hModule) { RegisterVersionResource(hModule, VS_VERSION_INFO, kVersionInfo); }

void RegisterQuillonResources()
{
    static bool done = false;
    if (done) return;
    done = true;
    RegisterDialogResource(IDD_ABOUTBOX_QUILLON, &kAboutBox, nullptr, 0);
    RegisterDialogResource(IDD_PROPPAGE_QUILLON, &kGeneral, kGeneralInit, std::size(kGeneralInit));
    RegisterDialogResource(IDD_PROPPAGE_MORE, &kMore, kMoreInit, std::size(kMoreInit));
    RegisterDialogResource(IDD_PROPPAGE_ABOUT, &kAboutPage, nullptr, 0);
    RegisterIconResource(IDI_ABOUTDLL, PaintIcon(32, &PaintControlImage));
    RegisterIconResource(IDI_MAKER, PaintIcon(32, &PaintMakerImage));
    RegisterBitmapResource(IDB_QUILLON, PaintBitmap(16, 15, &PaintControlImage, kSilver));   // the toolbox picture
    RegisterStringResource(IDS_QUILLON, u"Quillon Control 2.0");
    RegisterStringResource(IDS_QUILLON_PPG, u"Quillon Property Page");
    RegisterStringResource(IDS_MORE_PPG, u"Quillon Property Page");
    RegisterStringResource(IDS_MORE_PPG_CAPTION, u"More");
    RegisterStringResource(IDS_ABOUT_PPG, u"Quillon Property Page");
    RegisterStringResource(IDS_ABOUT_PPG_CAPTION, u"About");
    RegisterStringResource(IDS_QUILLON_PPG_CAPTION, u"General");
}

void RevokeQuillonResources()
{
    for (WORD id : {IDD_ABOUTBOX_QUILLON, IDD_PROPPAGE_QUILLON, IDD_PROPPAGE_MORE, IDD_PROPPAGE_ABOUT}) RevokeDialogResource(id);
}
