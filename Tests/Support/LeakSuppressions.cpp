// Leaks that are not this project's, for programs that show editors under the leak sanitizer.

// Declared by the sanitizer, which calls it by this name.
extern "C" [[gnu::visibility("default")]] const char*
__lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier): its name

// VSTGUI gives Pango a font configuration of its own each time the module is loaded, some 50 KB; when the
// module goes, not all of them are freed. Fontconfig has allocated them.
const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier): its name
    return "leak:libfontconfig.so\n";
}
