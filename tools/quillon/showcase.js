// The showcase form of `quillon view`: one field of each kind, each with a line saying what to try.
var form = host.form(20, 20, 600, 300);

// A line of text: a borderless, disabled control painted in black on the form's colour.
function label(y, text) {
    var l = form.create("QUILLON.QuillonCtrl.2", 10, y, 330, 22);
    l.BorderType = 1;
    l.BackColor = 0x8000000F;
    l.DisabledColor = 0;
    l.Text = text;
    l.Enabled = false;
    return l;
}

function field(y, width) { return form.create("QUILLON.QuillonCtrl.2", 350, y, width || 220, 24); }

label(12, "Phone number: type the digits");
var phone = field(10);
phone.EditMask = "(###) ###-####";

label(46, "Date: type it, or hold a spin button");
var date = field(44);
date.EditMask = "##/##/####";
date.SpinButton = true;
date.on("ClickSpin", function (button) { print("ClickSpin", button === 0 ? "up" : "down"); });

label(80, "Password: each key shows a star");
var secret = field(78);
secret.PasswordChar = "*";

label(114, "City: type 'ber', 'new' or 'san', then Up/Down and Enter");
var city = field(112);
city.AutoComplete = 3;
city.AutoFindSize = 2;
city.Sorted = true;
var cities = ["Amsterdam", "Athens", "Auckland", "Austin", "Baltimore", "Bangkok", "Barcelona", "Basel",
    "Beijing", "Belfast", "Berlin", "Bern", "Bergen", "Berkeley", "Bogota", "Boston", "Bremen", "Brisbane",
    "Brussels", "Budapest", "Cairo", "Calgary", "Chicago", "Copenhagen", "Dallas", "Denver", "Dublin",
    "Edinburgh", "Geneva", "Glasgow", "Hamburg", "Helsinki", "Houston", "Lisbon", "London", "Madrid",
    "Melbourne", "Miami", "Milan", "Montreal", "Munich", "Nairobi", "Naples", "New Delhi", "New Haven",
    "New Orleans", "New York", "Newark", "Newcastle", "Oslo", "Ottawa", "Paris", "Perth", "Prague", "Quebec",
    "Rome", "San Antonio", "San Diego", "San Francisco", "San Jose", "Santiago", "Seattle", "Seoul",
    "Stockholm", "Sydney", "Tokyo", "Toronto", "Vancouver", "Vienna", "Warsaw", "Zurich"];
var suffixes = ["", " Heights", " Park", " Springs", " Falls"];
suffixes.forEach(function (suffix) { cities.forEach(function (name) { city.AddItem(name + suffix); }); });
city.on("Change", function () { print("City:", city.Text); });

label(148, "Drop button: press it (ClickDrop)");
var drop = field(146);
drop.DropButton = true;
drop.on("ClickDrop", function () { print("ClickDrop"); });

label(190, "The five style presets, each with its buttons:");
var styles = ["Default", "Flat", "XP Blue", "XP Olive", "Vista Blue"];
for (var i = 0; i < styles.length; i++) {
    var s = form.create("QUILLON.QuillonCtrl.2", 10 + i * 116, 220, 110, 24);
    s.ControlStyle = i + 1;
    s.DropButton = true;
    s.SpinButton = true;
    s.Text = styles[i];
}
