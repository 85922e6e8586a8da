// A first script: a telephone number field, typed into as a person would.
//   quillon run examples/first_script.js
var form = host.form(100, 100, 300, 80);                            // a form on the screen
var phone = form.create("QUILLON.QuillonCtrl.2", 10, 10, 160, 24);  // a control on the form
phone.EditMask = "(###) ###-####";
phone.on("Change", function () { print("Change:", phone.Text); });
host.focus(phone);
host.type("5551234567");                                            // ten key presses
print("typed:", phone.Text);
form.snapshot("phone.png");                                         // the form as a person sees it
