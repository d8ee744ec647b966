"""./run endurance: parts are found by their files, built for and run; one that fails, or checks nothing, fails the command;
--record writes a section for each part that ran."""
import shutil
import unittest

from fixture import ROOT, FixtureProject

GOOD = """
TITLE = "good work"
PACKAGES = ()
TARGETS = ("varno",)


def run(work):
    work.check("files", 3, "3", (work.build / "Apps/varno/varno").exists() and not list(work.folder.iterdir()))
    work.note("form", "short" if work.is_short else "whole")
    work.note("drawn |\\nseeded", work.random.randrange(1 << 30))
"""
BAD = GOOD.replace('3, "3",', '2, "3", False and')
BROKEN = GOOD.replace("    work.note", "    raise OSError('the reason')\n    work.note", 1)
EMPTY = GOOD[:GOOD.index("    work.check")] + "    work.note('files', 3)\n"
MARKED = ("# A\n\n<!-- endurance: written by ./run endurance --record -->\n\n### other\n\nstays\n\n"
          "### part\n\nold\n\n<!-- /endurance -->\n\nB\n")


class EnduranceTest(FixtureProject):
    def setUp(self):
        super().setUp()
        (self.root / "Scripts/packages.txt").write_text("[program]\ng++\n")
        (self.root / "Tests/Endurance").mkdir()
        for name in ("run", "work.py"):
            shutil.copy(ROOT / "Tests/Endurance" / name, self.root / "Tests/Endurance" / name)
        self.write("docs/verification.md", MARKED)

    def part(self, name, text):
        self.write(f"Tests/Endurance/{name}_part.py", text)

    def environment(self):
        return {**super().environment(), "TMPDIR": str(self.folder)}

    def endurance(self, *arguments):
        done = self.run_script("endurance", *arguments)
        return done.returncode, done.stdout, done.stderr

    def document(self):
        return (self.root / "docs/verification.md").read_text()

    def test_parts_run_in_turn(self):
        self.part("second", GOOD)
        self.part("first", GOOD)
        status, out, err = self.endurance()
        self.assertEqual(status, 0, err)
        self.assertRegex(out, r"\Apart +what +found +demanded\nfirst +files +3 +3\nfirst +form +whole\nfirst +drawn")
        self.assertRegex(out, r"\nfirst: passed, \d+ s\nsecond: passed, \d+ s\n\Z")
        self.assertEqual(list(self.folder.glob("varno-endurance-*")), [])
        self.assertEqual(self.document(), MARKED)
        drawn = [line for line in out.splitlines() if "drawn" in line]
        _, again, _ = self.endurance("--short", "second")
        self.assertIn(drawn[1], again)
        self.assertRegex(again, r"\nsecond +form +short\n")
        self.assertNotIn("first", again)
        _, other, _ = self.endurance("--seed", "2", "second")
        self.assertNotIn(drawn[1], other)

    def test_what_is_not_as_demanded_fails(self):
        for text, reason in ((BAD, r"FAILED: files: 2; demanded: 3\n"), (BROKEN, r"FAILED: the run: OSError: the reason;")):
            self.part("part", text)
            status, out, err = self.endurance("part")
            self.assertEqual(status, 1)
            self.assertRegex(err, reason)
            self.assertRegex(out, r" FAILED\n")
            self.assertRegex(out, r"\npart: FAILED, \d+ s\n")
            self.assertEqual(len(list(self.folder.glob("varno-endurance-part-*"))), 1, "its files stay")
            shutil.rmtree(next(self.folder.glob("varno-endurance-part-*")))

    def test_a_part_that_checks_nothing_has_failed(self):
        self.part("part", EMPTY)
        status, out, _ = self.endurance()
        self.assertEqual(status, 1)
        self.assertIn("part: FAILED", out)

    def test_the_record_has_the_parts_that_ran(self):
        self.part("part", GOOD)
        self.assertEqual(self.endurance("--record")[0], 0)
        self.assertRegex(self.document(),
                         r"\A# A\n\n<!-- endurance.*-->\n\n### other\n\nstays\n\n### part\n\nGood work\.\n"
                         r"\d{4}-\d\d-\d\d \d\d:\d\d UTC, commit .*; .*kernel .*\. It took \d+ s\.\n\n"
                         r"\| what \| found \| demanded \|\n\|---\|---\|---\|\n\| files \| 3 \| 3 \|\n"
                         r"\| form \| whole \|  \|\n\| drawn \\\| seeded \| \d+ \|  \|\n\n"
                         r"<!-- /endurance -->\n\nB\n\Z")
        self.part("part", BAD)
        self.assertEqual(self.endurance("--record")[0], 1)
        self.assertIn("| files | 2 **FAILED** | 3 |", self.document())
        before = self.document()
        status, _, err = self.endurance("--record", "--short")
        self.assertEqual((status, self.document()), (1, before))
        self.assertIn("not --short ones", err)
        self.write("docs/verification.md", "# A\n")
        self.assertIn("are missing", self.endurance("--record")[2])

    def test_wrong_use_and_lists_need_no_build(self):
        self.part("part", GOOD)
        self.assertEqual(self.endurance("--list")[:2], (0, "part       good work\n"))
        self.assertIn("--record", self.endurance("--help")[1])
        self.assertEqual(self.endurance("none"), (2, "", "run: endurance: there is no part 'none'; there are: part\n"))
        self.assertEqual(self.endurance("--none")[0], 2)
        self.assertFalse((self.root / "build").exists())


if __name__ == "__main__":
    unittest.main()
