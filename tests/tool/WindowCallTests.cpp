// Scripts that go through the window system: user mode, simulated input, pixels, snapshots, pictures.
#include <cstdio>
#include "ToolHarness.h"

namespace {
// Prints each event with its arguments; a by-reference one shows as {value}.
const char kInputRecorder[] = R"(
    function record(control) {
        ["FirstDraw", "Change", "KeyDown", "KeyPress", "KeyUp", "MouseDown", "MouseUp", "Click"].forEach(function (name) {
            control.on(name, function () {
                print([name].concat(Array.prototype.map.call(arguments, function (a) {
                    return typeof a === "object" ? "{" + a.value + "}" : a;
                })).join(" "));
            });
        });
    }
)";
} // namespace

// Only at run time does a control make its edit on the first paint, announce it, and take keys.
TEST_F(ScriptTest, UserModeDecidesWhetherTheControlGoesLive)
{
    ASSERT_TRUE(Run(std::string(kInputRecorder) + R"(
        function probe(label) {
            print("> " + label);
            var form = host.form(100, 100, 300, 200);
            var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 120, 24);
            record(q);
            host.pump();
            print("edit window:", q.EditHwnd() !== 0, "SelStart:", q.SelStart());
            host.focus(q);
            host.type("7");
            print("Text:", JSON.stringify(q.Text));
        }
        probe("run mode");
        host.userMode = false;
        probe("design mode");
    )")) << Error();
    // Keys reach the control's window in both modes; only the live one has an edit to change.
    ExpectLines({"> run mode", "FirstDraw", "edit window: true SelStart: 0", "KeyDown {55} 0", "KeyPress {55}", "Change",
                 "KeyUp {55} 0", "Text: \"7\"",
                 "> design mode", "edit window: false SelStart: -1", "KeyDown {55} 0", "KeyPress {55}", "KeyUp {55} 0",
                 "Text: \"\""},
                TakeLines());
}

TEST_F(ScriptTest, NamedKeysAndTheMouseReachTheControl)
{
    ASSERT_TRUE(RunWithControl(std::string(kInputRecorder) + R"(
        host.pump();
        host.focus(q);
        record(q);
        print("> Left with shift, then Delete");
        host.key("Left", {shift: true});
        host.key("delete");
        print("> click inside the control");
        host.click(115, 115);
    )")) << Error();
    // Shift shows in the shift state of the key itself (1); the modifier's own keys come first.
    // Delete edits the text before the control reports the key, so Change comes ahead of KeyDown.
    ExpectLines({"> Left with shift, then Delete", "KeyDown {16} 1", "KeyDown {37} 1", "KeyUp {37} 1", "KeyUp {16} 0",
                 "Change", "KeyDown {46} 0", "KeyUp {46} 0", "> click inside the control", "MouseDown 1 0 5 5",
                 "MouseUp 1 0 5 5", "Click"},
                TakeLines());
    EXPECT_FALSE(RunWithControl("host.key('Bogus');"));
    EXPECT_EQ(Error(), "test.js:2: Error: unknown key 'Bogus'");
}

TEST_F(ScriptTest, PixelsSnapshotsAndPictures)
{
    std::string png = ::testing::TempDir() + "quillon-tool-snapshot.png";
    ASSERT_TRUE(RunWithControl("var png = " + std::string("\"") + png + "\";" + R"(
        host.pump();
        // The form's face is COLOR_BTNFACE; a system colour change repaints it at once.
        print(host.pixel(150, 150).toString(16));
        host.sysColor(15, 0x0000FF);
        print(host.pixel(150, 150).toString(16));
        host.snapshot(png, 150, 150, 16, 16);
        var picture = host.loadPicture(png);
        q.DropPicture = picture;
        print(q.DropPicture.Type, q.DropPicture.Width === picture.Width, picture.Width > 0);
    )")) << Error();
    ExpectLines({"f0f0f0", "ff", "1 true true"}, TakeLines());
    std::remove(png.c_str());
    EXPECT_FALSE(RunWithControl("host.loadPicture('/nonexistent/none.png');"));
    EXPECT_EQ(Error(), "test.js:2: Error: loadPicture: /nonexistent/none.png: not a readable png image");
}
