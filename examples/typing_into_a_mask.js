// Typing into a masked field through the container's message loop: the mask refuses letters
// where it wants digits and steps over its literals.
//   quillon run examples/typing_into_a_mask.js
var form = host.form(100, 100, 320, 120);
var date = form.create("QUILLON.QuillonCtrl.2", 10, 10, 180, 24);
date.EditMask = "##/##/####";
date.on("KeyPress", function (keyAscii) { print("KeyPress", String.fromCharCode(keyAscii.value)); });
date.on("Change", function () { print("  Text now", JSON.stringify(date.Text)); });
host.on("Beep", function () { print("  beep"); });

host.pump();                  // the first paint brings the control to life
host.focus(date);
host.type("12x");
host.type("252024");
host.key("Home");
print("caret after Home:", date.CaretPosition());
