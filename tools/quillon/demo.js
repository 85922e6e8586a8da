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

print("== Typing and the buttons ==");
var b = form.create("QUILLON.QuillonCtrl.2", 10, 80, 160, 24);
b.EditMask = "##:##";
b.SpinButton = true;
b.DropButton = true;
var now = 0;
function wait(ms) { for (var t = 0; t < ms; t += 10) { now += 10; host.advance(10); } } // events print at their tick
function at(name) { return function () { print("    " + now + " ms", name, Array.prototype.join.call(arguments, " ")); }; }
["ClickSpin", "ClickDrop", "Change", "MouseDown", "MouseUp", "Click"].forEach(function (e) { b.on(e, at(e)); });
b.on("KeyPress", function (key) { print("    " + now + " ms", "KeyPress", key.value); });
host.on("PropertyChanged", function () {});
host.pump();
print("-- typing 1234 into ##:##");
host.focus(b);
host.type("1234");
print("Text:", show(b.Text));
print("-- the upper spin button held for 300 ms: at once, after InitialDelay, then every 1000 / RepeatRate ms");
host.press(260, 185);
wait(200);
wait(60);
wait(40);
host.release(260, 185);
wait(600);
print("-- a click on the drop button");
host.click(243, 192);

print("== A gallery of looks ==");
var gallery = host.form(520, 10, 490, 450);
var looks = [];
function look(text, props) {
    var n = looks.length, c = gallery.create("QUILLON.QuillonCtrl.2", 10 + (n % 3) * 160, 10 + Math.floor(n / 3) * 34, 150, 24);
    c.Text = text;
    for (var k in props) c[k] = props[k];
    looks.push(c);
    return c;
}
var buttons = { SpinButton: true, DropButton: true, DropWidth: 20, SpinBackColorTo: 0xC08040, DropBackColorTo: 0x4080C0 };
function withButtons(extra) { var p = {}; for (var k in buttons) p[k] = buttons[k]; for (var k2 in extra) p[k2] = extra[k2]; return p; }
["Regular", "None", "Raised", "Lowered"].forEach(function (name, i) { look("Border " + name, { BorderType: i, BorderColor: 0x804000 }); });
look("Regular buttons", withButtons({}));
look("Modern buttons", withButtons({ ButtonStyle: 1 }));
var pressed = look("Pressed spin", withButtons({}));
look("Disabled", withButtons({ Enabled: false }));
["Solid", "Horizontal", "Vertical", "Diagonal", "RevDiag", "HorzBump", "VertBump", "Diamond", "Pyramid", "Circle",
 "Ellipse", "HorzEdge", "VertEdge", "VertEdge2"].forEach(function (name, i) { look("Fill " + name, withButtons({ ButtonFillType: i })); });
["Small", "Large", "Line 1", "Line 2"].forEach(function (name, i) { look("Arrow " + name, withButtons({ ArrowType: i, ButtonStyle: i % 2 })); });
var picture = host.loadPicture(demoPicture);
look("Picture", { DropButton: true, DropWidth: 20, DropPicture: picture });
look("Masked picture", { DropButton: true, DropWidth: 20, DropPicture: picture, MaskBitmap: true, MaskColor: 0xFF00FF });
look("Embossed, off", { DropButton: true, DropWidth: 20, DropPicture: picture, EmbossBitmap: true, MaskColor: 0xFF00FF, Enabled: false });
["Default", "Standard", "XP Blue", "XP Olive", "Vista Blue"].forEach(function (name, i) { look(name, withButtons({ ControlStyle: i + 1 })); });
host.pump();
looks.forEach(function (c) { c.BorderColor = c.BorderColor; }); // a second paint: the unfocused face
host.pump();
var spin = { x: 520 + 10 + 140, y: 10 + 10 + 2 * 34 + 5 }; // the upper spin button of "Pressed spin"
host.press(spin.x, spin.y);
host.snapshot(galleryPath, 520, 10, 490, 420);
host.release(spin.x, spin.y);
print(looks.length, "looks written to the gallery");
