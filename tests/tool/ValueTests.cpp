// Script values to VARIANTs and back, by-reference event arguments, HRESULT texts.
#include <cmath>
#include "ScriptBinding.h"
#include "ScriptObjects.h"
#include "ScriptValues.h"
#include "ToolHarness.h"
#include "com/typeinfo.h"

namespace {
class ValueTest : public ScriptTest {
protected:
    duk_context* Ctx() { return m_pScript->Context(); }

    // The VARIANT of a script expression.
    COleVariant FromScript(const char* expression, bool* pOk = nullptr)
    {
        COleVariant v;
        EXPECT_EQ(duk_peval_string(Ctx(), expression), 0) << expression;
        bool ok = ToVariant(Ctx(), -1, v);
        duk_pop(Ctx());
        if (pOk) *pOk = ok;
        else EXPECT_TRUE(ok) << expression;
        return v;
    }

    // typeof and String() of the script value a VARIANT becomes.
    std::string ToScript(const VARIANT& v)
    {
        duk_eval_string(Ctx(), "(function (x) { return typeof x + ' ' + String(x); })");
        PushVariant(Ctx(), v);
        EXPECT_EQ(duk_pcall(Ctx(), 1), 0);
        std::string text = duk_safe_to_string(Ctx(), -1);
        duk_pop(Ctx());
        return text;
    }

    // Calls a script function with the arguments; the error's text when it throws, else "".
    std::string CallHandler(const char* function, VARIANT* args, unsigned count)
    {
        EXPECT_EQ(duk_peval_string(Ctx(), function), 0) << function;
        int top = duk_get_top(Ctx());
        if (CallWithEventArgs(Ctx(), args, count)) {
            EXPECT_EQ(duk_get_top(Ctx()), top - 1) << "the function is popped";
            return "";
        }
        EXPECT_EQ(duk_get_top(Ctx()), top) << "the error replaces the function";
        std::string text = duk_safe_to_string(Ctx(), -1);
        duk_pop(Ctx());
        return text;
    }
};

VARIANT ByRefShort(SHORT* p)
{
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BYREF | VT_I2;
    v.piVal = p;
    return v;
}
} // namespace

// Colours above 0x7FFFFFFF must reach a VT_UI4 property unchanged; fractions must stay fractions.
TEST_F(ValueTest, NumbersBecomeTheNarrowestVariantThatHoldsThem)
{
    struct Case { const char* expr; VARTYPE vt; double value; };
    const Case cases[] = {
        {"0", VT_I4, 0}, {"-1", VT_I4, -1}, {"2147483647", VT_I4, 2147483647.0},
        {"-2147483648", VT_I4, -2147483648.0}, {"2147483648", VT_UI4, 2147483648.0},
        {"0x80000005", VT_UI4, 2147483653.0}, {"4294967295", VT_UI4, 4294967295.0},
        {"4294967296", VT_R8, 4294967296.0}, {"-2147483649", VT_R8, -2147483649.0}, {"1.5", VT_R8, 1.5},
        {"-0.25", VT_R8, -0.25},
    };
    for (const Case& c : cases) {
        COleVariant v = FromScript(c.expr);
        EXPECT_EQ(v.vt, c.vt) << c.expr;
        double got = v.vt == VT_I4 ? v.lVal : v.vt == VT_UI4 ? static_cast<double>(v.ulVal) : v.dblVal;
        EXPECT_EQ(got, c.value) << c.expr;
    }
    COleVariant nan = FromScript("NaN");
    EXPECT_EQ(nan.vt, VT_R8);
    EXPECT_TRUE(std::isnan(nan.dblVal));
}

TEST_F(ValueTest, OtherScriptValues)
{
    COleVariant t = FromScript("true"), f = FromScript("false");
    EXPECT_EQ(t.vt, VT_BOOL);
    EXPECT_EQ(t.boolVal, VARIANT_TRUE);
    EXPECT_EQ(f.boolVal, VARIANT_FALSE);
    EXPECT_EQ(FromScript("null").vt, VT_NULL);
    EXPECT_EQ(FromScript("undefined").vt, VT_EMPTY);
    COleVariant s = FromScript("'Grüße €, ' + 'ok'");
    ASSERT_EQ(s.vt, VT_BSTR);
    EXPECT_EQ(BstrToString(s.bstrVal).str(), u"Grüße €, ok");
    EXPECT_EQ(BstrToString(FromScript("''").bstrVal).GetLength(), 0);

    bool ok = true;
    FromScript("({value: 1})", &ok);
    EXPECT_FALSE(ok) << "a plain object has no VARIANT form";
    FromScript("(function () {})", &ok);
    EXPECT_FALSE(ok) << "nor has a function";
}

TEST_F(ValueTest, ControlObjectsPassAsTheirDispatchInterface)
{
    ASSERT_TRUE(RunWithControl("")) << Error();
    COleVariant v = FromScript("q");
    ASSERT_EQ(v.vt, VT_DISPATCH);
    ASSERT_EQ(duk_peval_string(Ctx(), "q"), 0);
    CControlSite* q = ControlOf(Ctx(), -1);
    duk_pop(Ctx());
    ASSERT_NE(q, nullptr);
    EXPECT_EQ(v.pdispVal, q->Control());
}

TEST_F(ValueTest, VariantsAsScriptValues)
{
    COleVariant i2(SHORT(-5)), i4(LONG(70000)), r8(2.5), text(u"a\u00e9b"), empty, null;
    null.vt = VT_NULL;
    EXPECT_EQ(ToScript(i2), "number -5");
    EXPECT_EQ(ToScript(i4), "number 70000");
    EXPECT_EQ(ToScript(r8), "number 2.5");
    EXPECT_EQ(ToScript(text), "string a\xC3\xA9" "b"); // UTF-8 at the script's edge
    EXPECT_EQ(ToScript(empty), "undefined undefined");
    EXPECT_EQ(ToScript(null), "object null");

    VARIANT v;
    VariantInit(&v);
    v.vt = VT_UI4;
    v.ulVal = 0x80000005;
    EXPECT_EQ(ToScript(v), "number 2147483653");
    v.vt = VT_R4;
    v.fltVal = 0.5f;
    EXPECT_EQ(ToScript(v), "number 0.5");
    v.vt = VT_CY;
    v.cyVal.int64 = 82500; // currency is scaled by 10,000: a font size of 8.25
    EXPECT_EQ(ToScript(v), "number 8.25");
    v.vt = VT_BOOL;
    v.boolVal = VARIANT_TRUE;
    EXPECT_EQ(ToScript(v), "boolean true");
    v.vt = VT_DISPATCH;
    v.pdispVal = nullptr;
    EXPECT_EQ(ToScript(v), "object null");
}

// The control reads a by-reference short back after the handler: KeyPress with KeyAscii changed.
TEST_F(ValueTest, ByReferenceArgumentsAreWrittenBack)
{
    SHORT keyAscii = 97;
    VARIANT args[] = {ByRefShort(&keyAscii)};
    EXPECT_EQ(CallHandler("(function (k) { seen = k.value; k.value = 65; })", args, 1), "");
    EXPECT_EQ(keyAscii, 65);
    ASSERT_TRUE(Run("print(seen)"));
    ExpectLines({"97"}, TakeLines());

    // Beside an ordinary argument, and left alone by a handler that does not touch it.
    SHORT keyCode = 46;
    VARIANT keyArgs[] = {ByRefShort(&keyCode), COleVariant(SHORT(1), VT_I2)};
    EXPECT_EQ(CallHandler("(function (k, shift) { seen = [typeof k, k.value, shift].join(' '); })", keyArgs, 2), "");
    EXPECT_EQ(keyCode, 46);
    ASSERT_TRUE(Run("print(seen)"));
    ExpectLines({"object 46 1"}, TakeLines());

    // A number given as text is coerced, as automation coerces it.
    EXPECT_EQ(CallHandler("(function (k) { k.value = '13'; })", args, 1), "");
    EXPECT_EQ(keyAscii, 13);
}

TEST_F(ValueTest, ByReferenceValuesThatAreNoShortAreErrors)
{
    SHORT key = 97;
    VARIANT args[] = {ByRefShort(&key)};
    std::string error = CallHandler("(function (k) { k.value = 70000; })", args, 1);
    EXPECT_NE(error.find("by-reference argument 1 must hold a short"), std::string::npos) << error;
    EXPECT_NE(error.find("0x8002000A"), std::string::npos) << error;
    EXPECT_EQ(key, 97);
    error = CallHandler("(function (k) { k.value = 'x'; })", args, 1);
    EXPECT_NE(error.find("0x80020005"), std::string::npos) << error;
    error = CallHandler("(function (k) { k.value = 0; throw new Error('boom'); })", args, 1);
    EXPECT_EQ(error, "Error: boom");
    EXPECT_EQ(key, 97) << "nothing is written back from a handler that threw";
}

TEST(HResultText, NamesTheCodesADispatchCallGives)
{
    EXPECT_EQ(HResultText(E_NOTIMPL), "0x80004001 E_NOTIMPL (not implemented)");
    EXPECT_EQ(HResultText(DISP_E_TYPEMISMATCH), "0x80020005 DISP_E_TYPEMISMATCH (type mismatch)");
    EXPECT_EQ(HResultText(TYPE_E_LIBNOTREGISTERED), "0x8002801D TYPE_E_LIBNOTREGISTERED (type library not registered)");
    EXPECT_EQ(HResultText(CTL_E_SETNOTSUPPORTED), "0x800A017F CTL_E_SETNOTSUPPORTED (the property is read-only)");
    EXPECT_EQ(HResultText(static_cast<HRESULT>(0x800A017C)), "0x800A017C (unnamed control error 380)");
    EXPECT_EQ(HResultText(static_cast<HRESULT>(0x80041234)), "0x80041234 (unnamed interface-specific error 4660)");
    EXPECT_EQ(HResultText(static_cast<HRESULT>(0x80FF0001)), "0x80FF0001 (unnamed error, facility 255, code 1)");
}
