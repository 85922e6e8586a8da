// An error thrown by an event handler ends the script, blamed on the handler's own line.
var form = host.form(0, 0, 300, 200);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 120, 24);
q.on("Change", function () { print("in Change"); throw new Error("thrown in Change"); });
q.Text = "abc";
print("not reached");
