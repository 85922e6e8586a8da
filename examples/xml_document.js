// A control's own XML document: written as a string and to a file, read back into another control,
// and the file dialogs of XMLWrite and XMLRead answered by the host.
//   quillon run examples/xml_document.js
var path = "/tmp/quillon-example-document.xml";
var form = host.form(100, 100, 320, 120);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 180, 24);
q.EditMask = "##-##";
q.Text = "12-34";
q.BorderType = 2;
q.Font.Name = "Arial";
q.Font.Size = 10;
q.Font.Bold = true;
["First", "Second"].forEach(function (item) { q.AddItem(item); });

print("items only:", q.ReadXMLString(1).replace(/\r\n/g, "\\r\\n"));   // each record ends in CR LF
print("WriteFile:", q.WriteFile(path, 0));

var r = form.create("QUILLON.QuillonCtrl.2", 10, 40, 180, 24);
r.on("Change", function () { print("event Change, Text now", r.Text); });
r.on("CtrlError", function (nError, nIndex) { print("event CtrlError", nError, nIndex); });
print("ReadFile:", r.ReadFile(path, 0));
print("read back:", r.Text, r.BorderType, r.Font.Name, r.Font.Size + "pt", r.Font.Bold ? "bold" : "regular",
      r.ItemCount(), "items");
print("the same document:", r.ReadXMLString(0) === q.ReadXMLString(0));

print("ReadFile of a missing file:", r.ReadFile("/tmp/quillon-no-such-document.xml", 0));
print("WriteFile with no name:", r.WriteFile("", 0));

host.fileDialog = function (kind, initialName) {
    print("dialog", kind, initialName);
    return kind === "save" ? path : null;   // null cancels
};
r.XMLWrite = "settings";   // writes the property block alone
r.XMLRead = "settings";    // cancelled: nothing is read
print("items after XMLWrite and a cancelled XMLRead:", r.ItemCount());
