// What a hostile script hands the tool: arguments out of range, damaged saved text, strings with
// NULs and surrogate pairs, impossible screens, handlers that throw, input to a disabled control.
#include "ToolHarness.h"

namespace {
class Robustness : public ScriptTest {
protected:
    // The script's error, or "" when it ran through.
    std::string ErrorOf(const std::string& source)
    {
        return RunWithControl(source) ? std::string() : Error();
    }
};

struct Refused {
    const char* script;
    const char* error; // a part of the error message
};

// Each was once a wrapped coordinate, an overflow under the sanitizers, or an abort.
constexpr Refused kRefusedArguments[] = {
    {"host.form(2147483647, 0, 100, 100);", "form: x must be a whole number from -32768 to 32767"},
    {"form.create('QUILLON.QuillonCtrl.2', 2147483600, 0, 100, 24);", "create: x must be"},
    {"form.create('QUILLON.QuillonCtrl.2', 0, 0, -5, 24);", "create: width must be a whole number from 0 to 32767"},
    {"host.snapshot('a.png', 2147483647, 0, 10, 10);", "snapshot: x must be"},
    {"host.press(50, 15); host.move(-2147483648, 5);", "move: x must be"},
    {"host.wheel(5, 5, 1e12);", "wheel: delta must be"},
    {"host.pixel(0.5, 0);", "pixel: x must be a whole number"},
    {"host.screen(1024, 768, 2147483647);", "screen: monitors must be"},
    {"host.screen(0, 0, 0);", "screen: width must be a whole number from 1"},
    {"host.screen(20000, 600, 2);", "screen: the monitors side by side must be at most 32767"},
    {"host.screen(30000, 30000); host.snapshot('big.png');", "snapshot: an image of 30000 x 30000 pixels is too large"},
    {"host.snapshot('x.png', 0, 0, 0, 10);", "snapshot: the area 0 x 10 is empty"},
    {"host.snapshot('shot\\u0000.png');", "snapshot: the path must not contain a NUL"},
    {"host.key('Enter\\u0000x');", "key: the key's name must not contain a NUL"},
    {"form.load('QUILLON.QuillonCtrl.2', 'Text = \"\"\\nText = \"\\\\uZZZZ\"\\n', 10, 40, 100, 24);",
     "load: the saved text is damaged at line 2: a \\u escape needs four hex digits"},
    {"q.Font.Size = NaN;", "0x8002000A DISP_E_OVERFLOW (overflow)"},
    {"q.Text = NaN;", "0x80020005 DISP_E_TYPEMISMATCH (type mismatch)"},
    {"q.EditMask = '#\\u0000#';", "0x80020005 DISP_E_TYPEMISMATCH (type mismatch)"},
    {"q['Text\\u0000x'] = 'a';", "unknown property or method 'Text"},
    {"q.Font['Size\\u0000'] = 3;", "unknown property 'Size"},
};

TEST_F(Robustness, ArgumentsOutOfRangeAreErrorsNamingThem)
{
    for (const Refused& r : kRefusedArguments) {
        std::string error = ErrorOf(r.script);
        EXPECT_NE(error.find(r.error), std::string::npos) << r.script << "\n  gave: " << error;
    }
}

TEST_F(Robustness, StringsCrossTheScriptBoundaryWhole)
{
    ASSERT_TRUE(RunWithControl(
        "var s = 'a\\uD83D\\uDE00b'; q.Text = s; print(q.Text === s, q.Text.length, s === 'a\U0001F600b', q.Text);"
        "q.EditMask = '\\uD83D\\uDE00#'; print(q.EditMask === '\\uD83D\\uDE00#');"
        "q.Text = undefined; print(JSON.stringify(q.Text));"
        "q.Text = 'x\\ty'; var saved = host.save(q); var q2 = form.load('QUILLON.QuillonCtrl.2', saved, 10, 40, 120, 24);"
        "print(q2.Text === 'x\\ty');"
        "q.EditMask = ''; host.pump(); host.focus(q); q.Text = ''; host.type('ab\\u0000cd'); print(q.Text);"))
        << Error();
    ExpectLines({"true 4 true a\xF0\x9F\x98\x80" "b", "true", "\"\"", "true", "abcd"}, TakeLines());
}

TEST_F(Robustness, AHandlerErrorEndsTheInputCallThatRaisedIt)
{
    ASSERT_TRUE(RunWithControl(
        "host.pump(); host.focus(q); var log = [];"
        "q.on('KeyPress', function (k) { log.push('KeyPress ' + k.value); });"
        "q.on('Change', function () { log.push('Change'); if (q.Text == 'a') throw new Error('no'); });"
        "try { host.type('abc'); } catch (e) { log.push('caught ' + e.message); }"
        "print(log.join(', '), '|', q.Text);"
        "host.type('d'); print(q.Text);"))
        << Error();
    ExpectLines({"KeyPress 97, Change, caught no | a", "ad"}, TakeLines());
}

TEST_F(Robustness, ADisabledControlTakesNeitherFocusNorKeys)
{
    ASSERT_TRUE(RunWithControl(
        "function typed(keys) { try { host.type(keys); } catch (e) { print('refused:', e.message); } }"
        "host.pump(); host.focus(q); q.Enabled = false; host.pump(); typed('ab'); print(JSON.stringify(q.Text));"
        "host.focus(q); typed('cd'); print(JSON.stringify(q.Text));"
        "q.Enabled = true; host.focus(q); typed('ef'); print(q.Text);"))
        << Error();
    // Nothing holds the focus once the control is disabled, so the keys are refused, not lost.
    const std::string kRefused = "refused: host.type: no window has the focus, so the keys would go nowhere; call host.focus(control) first";
    ExpectLines({kRefused, "\"\"", kRefused, "\"\"", "ef"}, TakeLines());
}

TEST_F(Robustness, AFontOfTheWrongKindInSavedTextIsRefused)
{
    ASSERT_TRUE(RunWithControl(
        "q.DropPicture = host.loadPicture('" QUILLON_EXAMPLES_DIR "/arrow.bmp');"
        "var saved = host.save(q), picture = saved.match(/DropPicture = (.*)/)[1];"
        "var q2 = form.load('QUILLON.QuillonCtrl.2', saved.replace(/Font = .*/, 'Font = ' + picture), 10, 40, 120, 24);"
        "print(q2.Font !== null, q2.Font.Name, /Font = \\{object\\}/.test(host.save(q2)));"))
        << Error();
    ExpectLines({"true MS Sans Serif true"}, TakeLines());
}
} // namespace
