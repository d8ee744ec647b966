"""check-interface-comments demands the contract of every interface method and of nothing else."""
import pathlib
import subprocess
import tempfile
import unittest

from fixture import ROOT

HEADER = """
#include <cstdint>
/// A class with virtual functions: its comment is no method's.
class IThing : public virtual Base {
public:
%s
};
"""


class CheckInterfaceCommentsTest(unittest.TestCase):
    def check(self, body, folder_name=""):
        with tempfile.TemporaryDirectory(prefix="varno-comments-") as folder:
            path = pathlib.Path(folder) / folder_name / "IThing.h"
            path.parent.mkdir(exist_ok=True)
            path.write_text(HEADER.lstrip() % body)
            done = subprocess.run([ROOT / "Scripts/check-interface-comments", folder], capture_output=True, text=True,
                                  check=False)
            self.assertEqual(done.stderr, "")
            self.assertEqual(done.returncode, 1 if done.stdout else 0)
            return done.stdout.replace(f"{path}:", "")

    def test_passes_complete_contracts(self):
        self.assertEqual(self.check("""
    /// The gain in dB, -20 to +20. [audio]
    virtual double Gain() const = 0;
    /// Hands out the first part, of which the caller owns one reference.
    /// Returns 0, or -1 when there is none. [main]
    virtual AAX_Result GetPart(IPart** outPart,
                               int32_t index) = 0;
    /// The name; belongs to the object. [any]
    virtual const char* Name() const = 0;"""), "")

    def test_no_comment(self):
        for above in ("", "    // Not a comment of documentation. [any]\n", "    /// Far away, in no unit. [any]\n\n"):
            self.assertEqual(self.check(above + "    virtual void Do() = 0;").split(": ", 1)[1],
                             "Do: has no /// comment directly above it\n")

    def test_no_thread(self):
        for end in ("", " [gui]", " [main] or so", " [main]."):
            self.assertEqual(self.check(f"    /// Does what is to be done.{end}\n    virtual void Do() = 0;"),
                             "6: Do: its comment does not end with [audio], [main] or [any]\n")

    def test_a_comment_without_content(self):
        self.assertEqual(self.check("    /// Does it. [any]\n    virtual void Do() = 0;"),
                         "6: Do: its comment says nothing\n")

    def test_result_codes(self):
        for type_name in ("AAX_Result", "ACFRESULT"):
            self.assertEqual(self.check(f"    /// Does what is to be done. [any]\n    virtual {type_name} Do() = 0;"),
                             '6: Do: its comment does not name the result codes ("Returns ...")\n')

    def test_ownership(self):
        for method in ("void* Part() = 0", "void Part(IPart** outPart) = 0", "void Part(int a, const void** out) = 0"):
            self.assertEqual(self.check(f"    /// Finds the part of it. [any]\n    virtual {method};"),
                             "6: Part: it hands out a pointer and its comment does not say who owns what, "
                             "or until when it is valid\n")

    def test_a_plain_pointer_goes_in(self):
        self.assertEqual(self.check("    /// Reads the name. [any]\n    virtual void Set(const char* name) = 0;"), "")

    def test_exempt(self):
        self.assertEqual(self.check("""
    virtual ~IThing() = default;
    void Do() override;
    virtual void Also() override;
    // virtual void Disabled() = 0;
    const char* text = "virtual void Quoted();";"""), "")

    def test_bodies_and_access_do_not_hide_a_method(self):
        self.assertEqual(self.check("""
    int32_t Count() const { return 1; }
    virtual void First() {}
protected:
    virtual void Second() = 0;"""), "7: First: has no /// comment directly above it\n"
                                    "9: Second: has no /// comment directly above it\n")

    def test_folders_within(self):
        self.assertIn("Do: has no ///", self.check("    virtual void Do() = 0;", "ACF"))


if __name__ == "__main__":
    unittest.main()
