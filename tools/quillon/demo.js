// quillon demo: masked formatting, events as they arrive, a save/load round trip, auto-complete with its list, and a gallery of looks.
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

print("== Auto-complete over city names ==");
var cityNames = ["Amsterdam", "Athens", "Atlanta", "Auckland", "Austin", "Baltimore", "Bangkok", "Barcelona", "Berlin",
    "Bogota", "Boston", "Brisbane", "Brussels", "Budapest", "Cairo", "Calgary", "Chicago", "Cleveland", "Copenhagen",
    "Dallas", "Denver", "Detroit", "Dublin", "Edinburgh", "Frankfurt", "Geneva", "Glasgow", "Hamburg", "Helsinki",
    "Houston", "Istanbul", "Lisbon", "London", "Madrid", "Manchester", "Melbourne", "Memphis", "Mexico City", "Miami",
    "Milan", "Montreal", "Munich", "Nairobi", "Naples", "Nashville", "Oslo", "Ottawa", "Paris", "Phoenix", "Prague",
    "Sacramento", "Salt Lake City", "San Antonio", "San Diego", "San Francisco", "San Jose", "Santiago", "Seattle",
    "Sydney", "Toronto", "Vancouver", "Vienna", "Warsaw", "Zurich"];
var citySuffixes = ["", " Heights", " Park", " Springs", " Valley"];
var cityForm = { x: 100 + 200, y: 100 + 10, w: 160, h: 24 };   // the field on the screen
var city = form.create("QUILLON.QuillonCtrl.2", cityForm.x - 100, cityForm.y - 100, cityForm.w, cityForm.h);
cityNames.forEach(function (name) { citySuffixes.forEach(function (suffix) { city.AddItem(name + suffix); }); });
city.AutoComplete = 3;   // Both: the list suggests, the edit completes
city.AutoFindSize = 2;
print(city.ItemCount(), "items, AutoComplete", city.AutoComplete, "AutoFindSize", city.AutoFindSize);

// The list opens right under the field, as wide as it; its rows start 1 px below its top edge and are
// as high as an "M" of the font (13 px here) + 2 + ListOffset.
var list = { left: cityForm.x, top: cityForm.y + cityForm.h, rowHeight: 13 + 2 + city.ListOffset, rows: 8 };
var kListFrame = 0x000000, kHighlight = 0xFF9933;   // COLORREFs: the border colour and COLOR_HIGHLIGHT
function rowTop(row) { return list.top + 1 + row * list.rowHeight; }
function listState() {
    if (host.pixel(list.left, list.top + list.rowHeight) !== kListFrame) return "list closed";
    for (var row = 0; row < list.rows; ++row)
        if (host.pixel(list.left + 2, rowTop(row) + 1) === kHighlight) return "list open, row " + row + " highlighted";
    return "list open, no row highlighted";
}
function showCity(step) {
    print(step + ":", show(city.Text), "selected", city.SelStart() + "-" + city.SelEnd() + ",", listState());
}
city.on("Change", function () { print("    Change"); });
city.on("KeyDown", function (keyCode, shift) { print("    KeyDown", keyCode.value, "shift", shift); });
city.on("KeyPress", function (keyAscii) { print("    KeyPress", keyAscii.value); });
host.pump();
host.focus(city);
print("-- typing \"Sa\": the second key opens the list and completes the text");
host.type("S");
showCity("S");
host.type("a");
showCity("Sa");
print("-- walking the list: each key puts its item into the edit");
["Down", "Down", "PageDown", "Up"].forEach(function (name) {
    host.key(name);
    showCity(name);
});
host.key("Enter");
showCity("Enter");
print("-- typing \"Me\" over the selection, then a pick with the mouse");
host.type("Me");
showCity("Me");
var pick = { x: list.left + 40, y: rowTop(2) + Math.floor(list.rowHeight / 2) };
host.click(pick.x, pick.y);
showCity("click on row 2 right after the opening (swallowed)");
host.click(pick.x, pick.y);
showCity("click on row 2");
print("-- typing \"Bo\", a move onto row 1 (it only highlights), Escape, and the list again");
host.type("Bo");
host.move(pick.x, rowTop(1) + 3);
showCity("move onto row 1");
host.key("Escape");
showCity("Escape");
host.type("s");
showCity("s");
city.HideList();
showCity("HideList()");

print("== A gallery of looks ==");
var gallery = host.form(520, 10, 490, 620);
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

// The open list in each scroll bar look, with a hot row. Only the focused field has its list open,
// so each one is held as a still before the next field takes the focus.
var kLabelRow = 12, kListFieldRow = 13, kHotRow = 3;
var listFields = ["Regular", "Thin", "Modern"].map(function (name, style) {
    var x = 10 + style * 160, label = gallery.create("QUILLON.QuillonCtrl.2", x, 10 + kLabelRow * 34, 150, 24);
    label.Text = "List, " + name + " bar";
    var field = gallery.create("QUILLON.QuillonCtrl.2", x, 10 + kListFieldRow * 34, 150, 24);
    cityNames.forEach(function (city) { citySuffixes.forEach(function (suffix) { field.AddItem(city + suffix); }); });
    field.AutoComplete = 3;
    field.AutoFindSize = 2;
    field.ScrollStyle = style;
    return { label: label, field: field, x: 520 + x, y: 10 + 10 + kListFieldRow * 34 };
});
host.pump();
var kListedHeight = 24 + 1 + list.rows * list.rowHeight + 1;   // the field and its list under it
["Ma", "Sa", "Ba"].forEach(function (prefix, style) {
    var at = listFields[style];
    host.focus(at.field);
    host.type(prefix);
    host.move(at.x + 40, at.y + 24 + 1 + kHotRow * list.rowHeight + 5);
    host.freeze(at.x, at.y, 150, kListedHeight);
    at.field.HideList();
});
var spin = { x: 520 + 10 + 140, y: 10 + 10 + 2 * 34 + 5 }; // the upper spin button of "Pressed spin"
host.press(spin.x, spin.y);
host.snapshot(galleryPath, 520, 10, 490, 610);
host.thaw();
host.release(spin.x, spin.y);
print(looks.length, "looks written to the gallery,", galleryPath);

print("== Property pages and the About box ==");
// Each page is shown in the frame over a control of its own form, so that the frames stand side by
// side, and held as a still; the About box comes last, over the fourth form.
var pagesPath = galleryPath.replace(/\.png$/, "") + "-pages.png";
var kFrameWidth = 500, kFrameHeight = 360;
var pageForms = [[0, 0], [kFrameWidth, 0], [0, kFrameHeight], [kFrameWidth, kFrameHeight]].map(function (at) {
    var f = host.form(at[0], at[1], 200, 40);
    var c = f.create("QUILLON.QuillonCtrl.2", 10, 8, 180, 24);
    c.EditMask = "(###) ###-####";
    c.SpinButton = true;
    return { x: at[0], y: at[1], control: c };
});
["General", "More", "About"].forEach(function (name, i) {
    var at = pageForms[i];
    host.on("Dialog", function (dlg) {
        dlg.page(name);
        print("frame:", dlg.caption, "on the", name, "page");
        host.freeze(at.x, at.y, kFrameWidth, kFrameHeight);
        dlg.press("Cancel");
    });
    at.control.PropertyPages = 1;
});
host.focus(pageForms[3].control);
host.on("Dialog", function (dlg) {
    print("dialog:", dlg.caption);
    host.snapshot(pagesPath, 0, 0, 2 * kFrameWidth, 2 * kFrameHeight);
    dlg.press("OK");
});
pageForms[3].control.AboutBox();
host.thaw();
host.on("Dialog", null);
print("pages and About box written to", pagesPath);
