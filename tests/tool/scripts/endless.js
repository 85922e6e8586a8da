// Never ends: for the timeout of `quillon run`.
print("started");
for (;;) {}
