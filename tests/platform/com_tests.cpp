// Tests of the COM stand-in where hostile values reach it: the coercions and the text property bag.
#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include "com/objbase.h"
#include "com/propbag.h"

namespace {
HRESULT Change(const VARIANT& from, VARTYPE vt, COleVariant& out) { return VariantChangeType(&out, &from, 0, vt); }

COleVariant Real(double d) { return COleVariant(d); }
} // namespace

TEST(Coercion, EmptyNanAndInfinityAndTheEdgesOfTheIntegers)
{
    COleVariant out, empty;
    ASSERT_EQ(Change(empty, VT_BSTR, out), S_OK);
    EXPECT_EQ(BstrToString(out.bstrVal), CString(u"")) << "empty is the empty string";
    ASSERT_EQ(Change(empty, VT_I4, out), S_OK);
    EXPECT_EQ(out.lVal, 0);

    const double kNaN = std::numeric_limits<double>::quiet_NaN(), kInf = std::numeric_limits<double>::infinity();
    for (double d : {kNaN, kInf, -kInf}) {
        for (VARTYPE vt : {VT_I2, VT_I4, VT_UI4, VT_I8, VT_CY, VT_BOOL}) EXPECT_EQ(Change(Real(d), vt, out), DISP_E_OVERFLOW) << d << " to " << vt;
        EXPECT_EQ(Change(Real(d), VT_BSTR, out), DISP_E_TYPEMISMATCH) << d;
        EXPECT_EQ(Change(Real(d), VT_R8, out), S_OK) << d;
    }
    for (const char16_t* text : {u"nan", u"inf", u"-Infinity", u"1e999"})
        EXPECT_EQ(Change(COleVariant(text), VT_R8, out), DISP_E_TYPEMISMATCH) << ToUtf8(CString(text));

    EXPECT_EQ(Change(Real(9223372036854775808.0), VT_I8, out), DISP_E_OVERFLOW) << "2^63 has no 64-bit form";
    ASSERT_EQ(Change(Real(-9223372036854775808.0), VT_I8, out), S_OK);
    EXPECT_EQ(out.llVal, std::numeric_limits<long long>::min());
    EXPECT_EQ(Change(Real(1e300), VT_R4, out), DISP_E_OVERFLOW);
    EXPECT_EQ(Change(Real(1e300), VT_CY, out), DISP_E_OVERFLOW);
}

TEST(Coercion, StringsKeepTheirNuls)
{
    const CString withNul(u"x\0y", 3);
    COleVariant v(withNul), out;
    EXPECT_EQ(SysStringLen(v.bstrVal), 3u);
    ASSERT_EQ(Change(v, VT_BSTR, out), S_OK);
    EXPECT_EQ(BstrToString(out.bstrVal), withNul);
}

TEST(TextPropertyBag, DamagedLinesFailWithTheirNumberAndNothingIsGuessed)
{
    struct Case {
        const char16_t* text;
        const char* error; // "" when the text is whole
    };
    const Case cases[] = {
        {u"A = \"\\u0041\\\"\\\\\\n\"\nB = 5\n\nC = Nothing\n", ""},
        {u"A = \"\"\nA = \"\\uZZZZ\"\n", "line 2: a \\u escape needs four hex digits"},
        {u"A = \"\\u12zz\"", "line 1: a \\u escape needs four hex digits"},
        {u"A = \"\\u-001\"", "line 1: a \\u escape needs four hex digits"},
        {u"A = \"\\u00\"", "line 1: a \\u escape needs four hex digits"},
        {u"A = \"a\\qb\"", "line 1: unknown escape in a string"},
        {u"A = \"a\"b\"", "line 1: a double quote inside a string must be escaped"},
        {u"A = \"ab\\\"", "line 1: a string ends in a lone backslash"},
        {u"A = \"ab", "line 1: a string must stand in double quotes"},
        {u"\n\nA = {object} 0Z", "line 3: an object must be {object} and the hex of its stream"},
        {u"A=1", "line 1: a line must read Key = Value"},
    };
    for (const Case& c : cases) {
        CComPtr<IPropertyBag> bag;
        CString error;
        HRESULT hr = CreateTextPropertyBag(CString(c.text), &bag, &error);
        EXPECT_EQ(ToUtf8(error), c.error) << ToUtf8(CString(c.text));
        EXPECT_EQ(hr, *c.error ? E_INVALIDARG : S_OK) << ToUtf8(CString(c.text));
    }

    CComPtr<IPropertyBag> bag;
    ASSERT_EQ(CreateTextPropertyBag(CString(cases[0].text), &bag), S_OK);
    COleVariant a;
    ASSERT_EQ(bag->Read(u"A", &a, nullptr), S_OK);
    EXPECT_EQ(BstrToString(a.bstrVal), CString(u"A\"\\\n"));
}
