// The control's property pages and About box, answered by the script as a person would: a tab
// picked, fields typed into, boxes ticked, lines chosen, and Apply, OK or Cancel pressed.
//   quillon run examples/property_pages.js
var form = host.form(100, 100, 320, 80);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 180, 24);

host.on("Dialog", function (dlg) {
    print("dialog:", dlg.caption);
    dlg.page("General");
    var fill = dlg.field(232);
    print("fill lines:", fill.lines.length, "from", fill.lines[0], "to", fill.lines[13]);
    print("fill now:", fill.index, fill.text);
    fill.index = 10;
    dlg.field(208).text = "1";          // the drop button's width: the put makes it 2
    dlg.field(207).checked = true;
    dlg.field(201).text = "hello";
    dlg.press("Apply");
    print("after Apply:", q.ButtonFillType, q.DropWidth, q.DropButton, q.Text);
    dlg.page("More");
    dlg.field(216).index = 1;           // upper case
    dlg.field(202).text = "AAAA";
    dlg.press("OK");
});
q.PropertyPages = 1;
print("after OK:", q.CaseType, q.EditMask, "PropertyPages reads", q.PropertyPages);

// Without a handler a dialog is cancelled at once, so that a script never waits.
host.on("Dialog", null);
q.PropertyPages = 1;
print("cancelled: nothing changed:", q.CaseType, q.EditMask);

// A host that shows the pages in its own frame.
host.showPropertyFrame = true;
host.on("Dialog", function (dlg) { print("dialog:", dlg.caption); dlg.press("Cancel"); });
q.PropertyPages = 2;
host.showPropertyFrame = false;

host.on("Dialog", function (dlg) {
    print("dialog:", dlg.caption);
    host.snapshot("/tmp/quillon-example-aboutbox.png");
    dlg.press("OK");
});
q.AboutBox();
