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
        {"q.BorderType = 'thick';", "test.js:2: Error: setting 'BorderType' failed: HRESULT 0x80020005 DISP_E_TYPEMISMATCH (type mismatch)"},
        {"q.BorderType = 100000;", "test.js:2: Error: setting 'BorderType' failed: HRESULT 0x8002000A DISP_E_OVERFLOW (overflow)"},
        {"q.AddItem();", "test.js:2: Error: calling 'AddItem' failed: HRESULT 0x8002000E DISP_E_BADPARAMCOUNT (wrong number of arguments)"},
        {"q.AddItem = 1;", "test.js:2: Error: 'AddItem' is a method and cannot be assigned"},
        {"q.Text = {};", "test.js:2: Error: 'Text' cannot be set to an object"},
        {"q.AddItem(function () {});", "test.js:2: Error: argument 1 of 'AddItem' cannot be a function"},
        {"q.Font.Bogus = 1;", "test.js:2: Error: unknown property 'Bogus'"},
        {"host.save({});", "test.js:2: Error: host.save(control): control must be a control, not an object"},
        {"form.create('No.Such.Control', 0, 0, 10, 10);", "test.js:2: Error: form.create: no control is registered as 'No.Such.Control'"},
        {"var x = ;", "test.js:2: SyntaxError: empty expression not allowed (line 2)"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(RunWithControl(std::string(c.statement) + "\nprint('after');")) << c.statement;
        EXPECT_EQ(Error(), c.message);
        ExpectLines({}, TakeLines());
    }
}

// Slips of a newcomer: a misspelt name is answered with the nearest right one, a call with what it
// lacks, a put to a read-only property and a call that would do nothing with why.
TEST_F(ScriptTest, ErrorsSuggestAndExplain)
{
    // Before any form, no window holds the focus.
    EXPECT_FALSE(Run("host.key('Enter');"));
    EXPECT_EQ(Error(), "test.js:1: Error: host.key: no window has the focus, so the keys would go nowhere; call host.focus(control) first");
    struct Case { const char* statement; const char* message; };
    const Case cases[] = {
        {"host.pmup();", "host.pmup is not a function or property (did you mean 'pump'?)"},
        {"host.Pump();", "host.Pump is not a function or property (did you mean 'pump'?)"},
        {"host.usermode = false;", "host.usermode is not a property (did you mean 'userMode'?)"},
        {"host.frobnicate();", "host.frobnicate is not a function or property"},
        {"form.craete('QUILLON.QuillonCtrl.2', 0, 0, 10, 10);", "form.craete is not a function or property (did you mean 'create'?)"},
        {"print(q.EditMsk);", "unknown property or method 'EditMsk' (did you mean 'EditMask'?)"},
        {"q.Txet = 'a';", "unknown property or method 'Txet' (did you mean 'Text'?)"},
        {"q.on('Chnage', null);", "unknown event 'Chnage' (did you mean 'Change'?)"},
        {"host.on('beep', null);", "unknown host event 'beep' (did you mean 'Beep'?)"},
        {"host.focus(q); host.key('Delet');", "unknown key 'Delet' (did you mean 'Delete'?)"},
        {"host.key('PgDn');", "unknown key 'PgDn'"},
        {"form.create();", "form.create(progID, x, y, w, h): missing progID, x, y, w and h"},
        {"form.create('QUILLON.QuillonCtrl.2', 0, 0);", "form.create(progID, x, y, w, h): missing w and h"},
        {"form.load('QUILLON.QuillonCtrl.2', 5, 0, 0, 9, 9);", "form.load(progID, bag, x, y, w, h): bag must be a string, not a number"},
        {"host.click(q, 5);", "host.click(x, y): x must be a number, not a control"},
        {"q.on();", "control.on(event, handler): missing event"},
        {"q.hWnd = 1;", "'hWnd' is a read-only property"},
        {"host.type('1');", "host.type: the focus is on a form, not in a control, so the keys would go nowhere; call host.focus(control) first"},
        {"host.pixel(1024, 0);", "host.pixel: (1024, 0) is outside the 1024 x 768 screen"},
        {"host.pixel(0, -1);", "host.pixel: (0, -1) is outside the 1024 x 768 screen"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(RunWithControl(std::string(c.statement) + "\nprint('after');")) << c.statement;
        EXPECT_EQ(Error(), std::string("test.js:2: Error: ") + c.message);
        ExpectLines({}, TakeLines());
    }
}

// A thrown value that is no Error keeps the place it was thrown from, in the script or in a handler;
// a script that is not UTF-8 is refused with the offset of the first bad byte.
TEST_F(ScriptTest, ThrownValuesAndBadBytesKeepTheirPlace)
{
    EXPECT_FALSE(Run("var a = 1;\ntry { throw 'caught'; } catch (e) {}\nthrow 'oops';"));
    EXPECT_EQ(Error(), "test.js:3: uncaught \"oops\"");
    EXPECT_FALSE(RunWithControl("q.on('Change', function () {\n  throw 42;\n});\nq.Text = 'a';"));
    EXPECT_EQ(Error(), "test.js:3: uncaught 42");
    EXPECT_FALSE(Run("print('caf\xC3\xA9');\n// \xE2\x82\n"));
    EXPECT_EQ(Error(), "test.js:2: invalid UTF-8 at byte offset 19 (0xE2); scripts are read as UTF-8");
    EXPECT_FALSE(Run("'\xED\xA0\x80'"));
    EXPECT_EQ(Error(), "test.js:1: invalid UTF-8 at byte offset 1 (0xED); scripts are read as UTF-8");
    ExpectLines({}, TakeLines());
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
