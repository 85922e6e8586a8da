// Scripts against a control: members by name, print, errors, persistence, the font object.
#include "ToolHarness.h"

TEST_F(ScriptTest, PropertiesRoundTripByNameWithTheirTypes)
{
    ASSERT_TRUE(RunWithControl(R"(
        q.EditMask = "##-##";
        q.useMASKchars = false;          // names are looked up without regard to case
        q.BorderType = 2;
        q.BackColor = 0x80000005;
        q.ForeColor = 0x00FF8000;
        q.Sorted = true;
        print(q.EditMask, typeof q.UseMaskChars, q.UseMaskChars, q.bordertype, q.Sorted);
        print(q.BackColor.toString(16), q.ForeColor.toString(16));
        q.Text = "1234";
        print(q.Text, q.ItemCount(), typeof q.AddItem);
    )")) << Error();
    ExpectLines({"##-## boolean false 2 true", "80000005 ff8000", "1234 0 function"}, TakeLines());
}

// Values go through the control's own coercions: numbers from text, truth values from numbers.
TEST_F(ScriptTest, PutsAreCoercedByTheControl)
{
    ASSERT_TRUE(RunWithControl(R"(
        q.BorderType = "2";
        q.UseMaskChars = 0;
        q.EditMask = 42;
        print(q.BorderType, q.UseMaskChars, q.EditMask, typeof q.EditMask);
        q.BorderType = 7;                // out of range: ignored
        print(q.BorderType);
    )")) << Error();
    ExpectLines({"2 false 42 string", "2"}, TakeLines());
}

TEST_F(ScriptTest, PrintJoinsItsArgumentsThroughString)
{
    ASSERT_TRUE(RunWithControl(R"(
        print("a", 1, true, null, undefined, 1.5, [1, 2], {});
        print();
        print("");
        print("  spaced  ", "x");
        print({ toString: function () { return "custom"; } }, q, q.Font);
    )")) << Error();
    ExpectLines({"a 1 true null undefined 1.5 1,2 [object Object]", "", "", "  spaced   x",
                 "custom [object Control] [object Dispatch]"},
                TakeLines());
}

// Each failure ends the script at its statement with a message naming what went wrong.
TEST_F(ScriptTest, ErrorsNameTheMemberAndEndTheScript)
{
    struct Case { const char* statement; const char* message; };
    const Case cases[] = {
        {"print(q.Bogus);", "test.js:2: Error: unknown property or method 'Bogus'"},
        {"q.Bogus = 1;", "test.js:2: Error: unknown property or method 'Bogus'"},
        {"q.Frobnicate(1, 2);", "test.js:2: Error: unknown property or method 'Frobnicate'"},
        {"q.on('Bogus', function () {});", "test.js:2: Error: unknown event 'Bogus'"},
        {"host.on('Bogus', function () {});", "test.js:2: Error: unknown host event 'Bogus'"},
        {"q.BorderType = 'thick';", "test.js:2: Error: setting 'BorderType' failed: HRESULT 0x80020005 (type mismatch)"},
        {"q.BorderType = 100000;", "test.js:2: Error: setting 'BorderType' failed: HRESULT 0x8002000A (overflow)"},
        {"q.AddItem();", "test.js:2: Error: calling 'AddItem' failed: HRESULT 0x8002000E (wrong number of arguments)"},
        {"q.AddItem = 1;", "test.js:2: Error: 'AddItem' is a method and cannot be assigned"},
        {"q.Text = {};", "test.js:2: Error: 'Text' cannot be set to an object"},
        {"q.AddItem(function () {});", "test.js:2: Error: argument 1 of 'AddItem' cannot be a function"},
        {"q.Font.Bogus = 1;", "test.js:2: Error: unknown property 'Bogus'"},
        {"host.save({});", "test.js:2: Error: save: the argument must be a control"},
        {"form.create('No.Such.Control', 0, 0, 10, 10);", "test.js:2: Error: cannot create 'No.Such.Control': HRESULT 0x800401F3"},
        {"var x = ;", "test.js:2: SyntaxError: empty expression not allowed (line 2)"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(RunWithControl(std::string(c.statement) + "\nprint('after');")) << c.statement;
        EXPECT_EQ(Error(), c.message);
        ExpectLines({}, TakeLines());
    }
}

TEST_F(ScriptTest, SaveAndLoadRoundTrip)
{
    ASSERT_TRUE(RunWithControl(R"(
        print("new:", host.isDirty(q));
        q.EditMask = "(###) ###-####";
        q.BorderType = 2;
        q.Text = "(555) 123-4567";
        q.Font.Bold = true;
        print("after puts:", host.isDirty(q));
        var bag = host.save(q);
        print("after save:", host.isDirty(q), typeof bag);
        var copy = form.load("QUILLON.QuillonCtrl.2", bag, 10, 40, 120, 24);
        print(copy.EditMask, copy.BorderType, copy.Text, copy.Font.Bold, host.isDirty(copy));
        print(host.save(copy) === bag);
        var blank = form.load("QUILLON.QuillonCtrl.2", "", 10, 70, 120, 24);   // an empty bag: defaults
        print(JSON.stringify(blank.EditMask), blank.BorderType, blank.Font.Bold);
    )")) << Error();
    ExpectLines({"new: false", "after puts: true", "after save: false string",
                 "(###) ###-#### 2 (555) 123-4567 true false", "true", "\"\" 3 false"},
                TakeLines());
}

TEST_F(ScriptTest, FontObjectByName)
{
    ASSERT_TRUE(RunWithControl(R"(
        var f = q.Font;
        print(f.Name, f.Size, f.Bold, f.Italic);
        f.Name = "Arial";
        q.Font.Size = 12;
        q.Font.italic = true;
        print(q.Font.Name, q.Font.Size, q.Font.Italic, f.Size);
    )")) << Error();
    ExpectLines({"MS Sans Serif 8.25 false false", "Arial 12 true 12"}, TakeLines());
}

TEST_F(ScriptTest, UserModeIsTheHostsAmbientProperty)
{
    ASSERT_TRUE(Run(R"(
        print(host.userMode);
        host.userMode = false;
        print(host.userMode);
        host.userMode = 1;
        print(host.userMode);
    )")) << Error();
    ExpectLines({"true", "false", "true"}, TakeLines());
    EXPECT_TRUE(m_pScript->Host().m_bUserMode);
    ASSERT_TRUE(Run("host.userMode = false;"));
    EXPECT_FALSE(m_pScript->Host().m_bUserMode);
}

TEST_F(ScriptTest, OneScriptObjectPerControl)
{
    ASSERT_TRUE(RunWithControl(R"(
        var seen = null;
        host.on("PropertyChanged", function (dispid, control) { seen = control; });
        var other = form.create("QUILLON.QuillonCtrl.2", 10, 40, 120, 24);
        other.Text = "x";
        print(seen === other, seen === q, other === q);
    )")) << Error();
    ExpectLines({"true false false"}, TakeLines());
}

// A Dialog handler's mistakes end the script as any error does, and the dialog is cancelled; a
// dialog object kept past its handler no longer answers.
TEST_F(ScriptTest, DialogHandlerErrorsAndAKeptDialogObject)
{
    struct Case { const char* handler; const char* message; };
    const Case cases[] = {
        {"dlg.page('Nope');", "test.js:3: Error: page: no tab 'Nope'"},
        {"dlg.field(999);", "test.js:3: Error: field: the dialog has no field 999 here"},
        {"dlg.field(232).index = 14;", "test.js:3: Error: index: no line 14"},
        {"dlg.press('Later');", "test.js:3: Error: press: no button Later"},
        {"throw new Error('from the handler');", "test.js:3: Error: from the handler"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(RunWithControl(std::string("host.on('Dialog', function (dlg) {\n") + c.handler +
                                    "\n});\nq.PropertyPages = 1;\nprint('after');")) << c.handler;
        EXPECT_EQ(Error(), c.message);
        ExpectLines({}, TakeLines());
    }
    EXPECT_FALSE(RunWithControl(R"(
        var kept;
        host.on("Dialog", function (dlg) { kept = dlg; dlg.press("Cancel"); });
        q.AboutBox();
        print(kept.caption);
    )"));
    EXPECT_EQ(Error(), "test.js:6: Error: caption: the dialog is no longer open");
}
