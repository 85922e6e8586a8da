// The viewer's test form: a phone number field and a field with spin buttons, printing what they hear.
var form = host.form(0, 0, 260, 80);
var phone = form.create("QUILLON.QuillonCtrl.2", 10, 10, 200, 24);
phone.EditMask = "(###) ###-####";
phone.on("Change", function () { print("Change", phone.Text); });
var spin = form.create("QUILLON.QuillonCtrl.2", 10, 44, 200, 24);
spin.SpinButton = true;
spin.on("ClickSpin", function (button) { print("ClickSpin", button); });
spin.on("MouseMove", function () {});
