// CString, geometry and colour translation where the control depends on their exact behaviour.
#include <gtest/gtest.h>
#include "base/colors.h"
#include "base/cstring.h"
#include "base/rect.h"

TEST(CString, SubstringsClampLikeMfc)
{
    CString s(_T("(555) 123"));
    EXPECT_EQ(s.Left(4), _T("(555"));
    EXPECT_EQ(s.Left(99), s);
    EXPECT_EQ(s.Left(-1), _T(""));
    EXPECT_EQ(s.Mid(6), _T("123"));
    EXPECT_EQ(s.Mid(6, 2), _T("12"));
    EXPECT_EQ(s.Mid(20), _T(""));
    EXPECT_EQ(s.Right(3), _T("123"));
}

TEST(CString, CaseMappingCoversAllLetters)
{
    CString s(_T("ab\u00e9\u03c9\u0436z1-"));
    s.MakeUpper();
    EXPECT_EQ(s, _T("AB\u00c9\u03a9\u0416Z1-"));
    s.MakeLower();
    EXPECT_EQ(s, _T("ab\u00e9\u03c9\u0436z1-"));
    CString pair(_T("\U0001F600a"));
    pair.MakeUpper();
    EXPECT_EQ(pair, _T("\U0001F600A")) << "surrogates stay as they are";
}

TEST(CString, CompareNoCaseMapsEachUnitToLower)
{
    EXPECT_EQ(CString(_T("Apple")).CompareNoCase(_T("aPPLE")), 0);
    EXPECT_EQ(CString(_T("\u00c9t\u00e9")).CompareNoCase(_T("\u00e9T\u00c9")), 0);
    EXPECT_LT(CString(_T("app")).CompareNoCase(_T("APPLE")), 0);
    // '_' (0x5F) sorts after 'Z' but before 'z': lower-case mapping puts it before letters
    EXPECT_LT(CString(_T("_")).CompareNoCase(_T("a")), 0);
    EXPECT_GT(CString(_T("_")).Compare(_T("A")), 0);
}

TEST(CString, FormatNumbers)
{
    CString s;
    s.Format(_T("%d|%5d|%-4d|%05d|%X|%08x|%s|%c|%%"), -12, 42, 7, -3, 0xBEEFu, 255u, _T("hi"), char16_t(u'Q'));
    EXPECT_EQ(s, _T("-12|   42|7   |-0003|BEEF|000000ff|hi|Q|%"));
}

TEST(CString, Utf8RoundTrip)
{
    std::u16string text = u"a\u00e9\u20ac\U0001F600";
    EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
    EXPECT_EQ(ToUtf8(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(Rect, HalfOpen)
{
    CRect r(0, 0, 10, 5);
    EXPECT_TRUE(r.PtInRect(CPoint(0, 0)));
    EXPECT_TRUE(r.PtInRect(CPoint(9, 4)));
    EXPECT_FALSE(r.PtInRect(CPoint(10, 4)));
    EXPECT_FALSE(r.PtInRect(CPoint(9, 5)));
    CRect i;
    EXPECT_FALSE(i.IntersectRect(r, CRect(10, 0, 20, 5)));
    EXPECT_TRUE(i.IntersectRect(r, CRect(5, 2, 20, 8)));
    EXPECT_EQ(i, CRect(5, 2, 10, 5));
}

TEST(Colors, TranslateSystemAndPlainColours)
{
    ResetSysColors();
    COLORREF c = 1;
    EXPECT_EQ(OleTranslateColor(0x8000000F, nullptr, &c), S_OK);
    EXPECT_EQ(c, RGB(0xF0, 0xF0, 0xF0));
    EXPECT_EQ(OleTranslateColor(0x80000010, nullptr, &c), S_OK);
    EXPECT_EQ(c, RGB(0xA0, 0xA0, 0xA0));
    EXPECT_EQ(OleTranslateColor(0xFF0000, nullptr, &c), S_OK);
    EXPECT_EQ(c, 0xFF0000u) << "0x00BBGGRR is blue";
    EXPECT_EQ(OleTranslateColor(0x80000040, nullptr, &c), E_INVALIDARG);
    EXPECT_EQ(OleTranslateColor(0x40000000, nullptr, &c), E_INVALIDARG);

    INT index = COLOR_BTNFACE;
    COLORREF grey = RGB(0xC0, 0xC0, 0xC0);
    ASSERT_TRUE(SetSysColors(1, &index, &grey));
    OleTranslateColor(0x8000000F, nullptr, &c);
    EXPECT_EQ(c, grey) << "system colours follow run-time changes";
    ResetSysColors();
}
