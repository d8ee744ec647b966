// A module that exports more than its entry points.
#define SHOWN [[gnu::visibility("default"), gnu::used]]

extern "C" {
SHOWN int leakedValue = 1;
SHOWN int ACFCanUnloadNow() {
    return 0;
}
SHOWN int leakedFunction() {
    return leakedValue;
}
[[gnu::visibility("hidden"), gnu::used]] int hiddenFunction() {
    return 2;
}
}
