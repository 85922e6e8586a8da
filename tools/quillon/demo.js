// quillon demo: masked formatting, events as they arrive, and a save/load round trip.
var form = host.form(100, 100, 400, 300);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 160, 24);

function show(value) { return JSON.stringify(value); }

// Events print as they arrive, indented under the call that raised them.
q.on("Change", function () { print("    Change"); });
q.on("CtrlError", function (nError, nIndex) { print("    CtrlError", nError, nIndex); });
host.on("PropertyChanged", function (dispid) { print("    PropertyChanged", dispid); });

print("== A telephone number mask ==");
q.EditMask = "(###) ###-####";
print("EditMask =", show(q.EditMask));

print("-- raw digits put with UseMaskChars false are shaped by the mask");
q.UseMaskChars = false;
q.Text = "5551234567";
print("Text, mask chars off:", show(q.Text));
q.UseMaskChars = true;
print("Text, mask chars on: ", show(q.Text));

print("-- with UseMaskChars true a put is stored as given");
q.Text = "(555) 987-6543";
print("Text, mask chars on: ", show(q.Text));

print("== Puts out of range are ignored ==");
q.BorderType = 2;
q.BorderType = 7;
print("BorderType = 2, then 7: reads", q.BorderType);
q.DropWidth = 1;
print("DropWidth = 1: reads", q.DropWidth);

print("== Items ==");
q.AddItem("apple");
q.AddItem("pear");
print("ItemCount() =", q.ItemCount());
print("RemoveItem(5) =", q.RemoveItem(5));
print("RemoveItem(0) =", q.RemoveItem(0), "leaving", q.ItemCount());

print("== Save and load ==");
print("isDirty before save:", host.isDirty(q));
var bag = host.save(q);
print("isDirty after save: ", host.isDirty(q));
var copy = form.load("QUILLON.QuillonCtrl.2", bag, 10, 40, 160, 24);
print("loaded copy: EditMask", show(copy.EditMask), "Text", show(copy.Text), "BorderType", copy.BorderType);
