// A misspelt member ends the script at its line; what ran before it has been printed.
var form = host.form(0, 0, 300, 200);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 120, 24);
q.EditMask = "##-##";
print("before", q.EditMask);
q.Bogus = 1;
print("not reached");
