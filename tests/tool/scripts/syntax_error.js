// A script that does not compile.
print("never printed");
var x = ;
