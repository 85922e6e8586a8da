// A telephone number field: raw digits go in, the mask shapes them, and the copy a form would
// save keeps the text.
//   quillon run examples/phone_mask.js
var form = host.form(100, 100, 320, 120);
var phone = form.create("QUILLON.QuillonCtrl.2", 10, 10, 180, 24);
phone.EditMask = "(###) ###-####";
phone.UseMaskChars = false;

["2025550143", "8005551212"].forEach(function (digits) {
    phone.Text = digits;
    phone.UseMaskChars = true;
    var shown = phone.Text;
    phone.UseMaskChars = false;
    print(digits, "->", shown, "(raw " + phone.Text + ")");
});

var saved = host.save(phone);
var again = form.load("QUILLON.QuillonCtrl.2", saved, 10, 40, 180, 24);
print("reloaded:", again.EditMask, "with raw text", again.Text);
