// Events as a recording host sees them: each one a line, with its arguments.
//   quillon run examples/events_and_items.js
var form = host.form(100, 100, 320, 120);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 180, 24);

["Change", "CtrlError", "ClickDrop", "ClickSpin"].forEach(function (name) {
    q.on(name, function () {
        print("event", name + (arguments.length ? " " : "") + Array.prototype.join.call(arguments, " "));
    });
});
host.on("PropertyChanged", function (dispid, control) {
    print("host PropertyChanged", dispid, control === q ? "(q)" : "(another control)");
});

["apple", "banana", "cherry"].forEach(function (fruit) { q.AddItem(fruit); });
print("items:", q.ItemCount());
print("RemoveItem(3):", q.RemoveItem(3));
print("RemoveItem(-1):", q.RemoveItem(-1));
print("RemoveItem(1):", q.RemoveItem(1), "items now", q.ItemCount());

q.Text = "hello";
q.Font.Bold = true;
print("Font:", q.Font.Name, q.Font.Size + "pt", q.Font.Bold ? "bold" : "regular");
