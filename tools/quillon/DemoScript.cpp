// The built-in demo: masked formatting, events, persistence, and typing into a focused control.
#include "DemoScript.h"

const char* const kDemoScript = R"JS(
var form = host.form(100, 100, 400, 300);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 160, 24);
q.on("Change", function () { print("  event: Change, Text is now '" + q.Text + "'"); });
q.on("CtrlError", function (nError, nIndex) { print("  event: CtrlError", nError, nIndex); });
host.on("PropertyChanged", function (dispid) { print("  notice: property", dispid, "changed"); });

print("== A phone number mask ==");
q.EditMask = "(###) ###-####";
q.UseMaskChars = false;
print("Text = '5551234567' (raw digits, UseMaskChars off)");
q.Text = "5551234567";
print("Text reads '" + q.Text + "' without the literals");
q.UseMaskChars = true;
print("Text reads '" + q.Text + "' with them");

print("== Letters, case and refused characters ==");
q.EditMask = "AA-99";
q.UseMaskChars = false;
q.CaseType = 1;
print("Text = 'ab12x3' under mask AA-99, CaseType Upper");
q.Text = "ab12x3";
q.UseMaskChars = true;
print("Text reads '" + q.Text + "'");

print("== Guards ==");
q.BorderType = 7;
print("BorderType = 7 is refused; it reads", q.BorderType);
q.DropWidth = 1;
print("DropWidth = 1 is raised; it reads", q.DropWidth);
q.AddItem("apple");
q.AddItem("banana");
print("RemoveItem(5):");
print("  result", q.RemoveItem(5), "and", q.ItemCount(), "items left");

print("== Typing ==");
var t = form.create("QUILLON.QuillonCtrl.2", 10, 50, 160, 24);
t.EditMask = "##/##/####";
t.on("KeyPress", function (key) { print("  event: KeyPress", key.value); });
t.on("Change", function () { print("  event: Change", "'" + t.Text + "'"); });
host.on("Beep", function () { print("  beep: the mask refused a key"); });
host.pump();
host.focus(t);
host.type("2x3");
print("typed '2x3' into ##/##/####: the caret is at", t.SelStart());

print("== Saving and loading ==");
var saved = host.save(q);
print("saved", saved.split("\n").length - 1, "properties; dirty now:", host.isDirty(q));
var copy = form.load("QUILLON.QuillonCtrl.2", saved, 10, 90, 160, 24);
print("the loaded copy reads '" + copy.Text + "' under mask", copy.EditMask);
)JS";
