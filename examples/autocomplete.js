// An auto-complete field: items, the list that suggests them, and the text the edit completes to.
//   quillon run examples/autocomplete.js
var form = host.form(100, 100, 320, 200);
var q = form.create("QUILLON.QuillonCtrl.2", 10, 10, 180, 24);

// Items in any order; Sorted keeps the list in case-blind alphabetical order.
["Newark", "New York", "Nashville", "new haven", "Newcastle", "New Orleans", "Naples", "New Delhi"].forEach(function (city) {
    q.AddItem(city);
});
q.Sorted = true;
q.AutoComplete = 3;       // 0 none, 1 Append (complete the text), 2 Suggest (open the list), 3 both
q.AutoFindSize = 2;       // the search starts at the second key
q.MatchCase = false;      // "ne" matches "New York" and "new haven" alike
print("items:", q.ItemCount());

function show(step) { print(step + ":", JSON.stringify(q.Text), "selected", q.SelStart() + "-" + q.SelEnd()); }

host.pump();
host.focus(q);
host.type("ne");          // Append completes the text after the typed part, which stays selected
show("typed ne");
host.key("Down");         // each step through the list puts its item into the edit
show("Down");
host.key("Down");
show("Down");
host.key("Enter");        // Enter closes the list on the item reached
show("Enter");

// With MatchCase the typed case must match: "new " finds only "new haven".
q.MatchCase = true;
q.Text = "";
host.type("new ");
show("typed new, MatchCase");
host.key("Escape");       // Escape closes the list and leaves the text as it is
show("Escape");
