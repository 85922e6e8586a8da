// A document whose UTF-16 does not decode: refused with CtrlError 1000, and nothing on standard error.
var q = host.form(0, 0, 200, 50).create("QUILLON.QuillonCtrl.2", 0, 0, 120, 24);
q.on("CtrlError", function (nError, nIndex) { print("CtrlError", nError, nIndex); });
print("ReadFile:", q.ReadFile("scripts/bad_encoding.xml", 0));
