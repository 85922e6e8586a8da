// Events heard by script functions, as whole sequences interleaved with the calls that raise them.
#include "ToolHarness.h"

namespace {
// Every handler prints its event as one line; the script marks its own steps with "> ...".
const char kRecorder[] = R"(
    ["Change", "CtrlError", "ClickDrop", "ClickSpin", "MouseOn", "FirstDraw", "Click"].forEach(function (name) {
        q.on(name, function () {
            print([name].concat(Array.prototype.slice.call(arguments)).join(" "));
        });
    });
    host.on("PropertyChanged", function (dispid) { print("PropertyChanged " + dispid); });
)";
} // namespace

TEST_F(ScriptTest, EventsArriveInOrderWithTheCallsThatRaiseThem)
{
    ASSERT_TRUE(RunWithControl(std::string(kRecorder) + R"(
        print("> Text");
        q.Text = "abc";
        print("> same Text again");
        q.Text = "abc";
        print("> EditMask, BorderType");
        q.EditMask = "##";
        q.BorderType = 2;
        print("> items");
        q.AddItem("one");
        q.RemoveItem(5);
        q.RemoveItem(0);
        q.RemoveItem(0);
        print("> done");
    )")) << Error();
    // Text put: the bound notification, then Change, even when the text is the same.
    // RemoveItem out of range: CtrlError 32003 with the index, and nothing else.
    ExpectLines({"> Text", "PropertyChanged -517", "Change", "> same Text again", "PropertyChanged -517", "Change",
                 "> EditMask, BorderType", "> items", "CtrlError 32003 5", "CtrlError 32003 0", "> done"},
                TakeLines());
}

TEST_F(ScriptTest, HandlersCanBeReplacedAndRemoved)
{
    ASSERT_TRUE(RunWithControl(R"(
        q.on("Change", function () { print("first"); });
        q.Text = "a";
        q.on("change", function () { print("second"); });   // event names without regard to case
        q.Text = "b";
        q.on("Change", null);
        q.Text = "c";
        host.on("PropertyChanged", function (dispid) { print("bound", dispid); });
        q.Text = "d";
        host.on("PropertyChanged", null);
        q.Text = "e";
    )")) << Error();
    ExpectLines({"first", "second", "bound -517"}, TakeLines());
}

// A handler may use the control that fired the event, and see the state the event reports.
TEST_F(ScriptTest, HandlersReachTheControlDuringTheEvent)
{
    ASSERT_TRUE(RunWithControl(R"(
        q.EditMask = "##-##";
        q.UseMaskChars = false;
        q.on("Change", function () { print("Change sees", q.Text, q.ItemCount()); q.AddItem(q.Text); });
        q.Text = "1234";
        q.UseMaskChars = true;
        print(q.Text, q.ItemCount());
    )")) << Error();
    ExpectLines({"Change sees 1234 0", "12-34 1"}, TakeLines());
}

// The first error thrown by a handler ends the script once the call that raised the event returns;
// handlers of events raised meanwhile do not run.
TEST_F(ScriptTest, AnErrorInAHandlerEndsTheScript)
{
    EXPECT_FALSE(RunWithControl(R"(
        q.on("Change", function () { print("Change"); throw new Error("first"); });
        host.on("PropertyChanged", function () { print("PropertyChanged"); });
        q.Text = "a";
        print("not reached");
    )"));
    EXPECT_EQ(Error(), "test.js:3: Error: first");
    ExpectLines({"PropertyChanged", "Change"}, TakeLines());

    EXPECT_FALSE(RunWithControl(R"(
        host.on("PropertyChanged", function () { throw new TypeError("in the host's handler"); });
        q.on("Change", function () { print("Change"); });
        q.Text = "a";
    )"));
    EXPECT_EQ(Error(), "test.js:3: TypeError: in the host's handler");
    ExpectLines({}, TakeLines());

    // The script host is usable again afterwards.
    ASSERT_TRUE(RunWithControl("host.on('PropertyChanged', null); q.on('Change', function () { print('fine'); }); q.Text = 'b';"))
        << Error();
    ExpectLines({"fine"}, TakeLines());
}
