"""The part "kill" fails where a program does one thing wrong."""
import unittest
import unittest.mock

import kill_part
from part_test import PartTest

# A program that renders by adding its settings to the bytes. {start} comes before the first file, {file} before each. A
# target that is called "out" is one where it is killed; it has something in it where it was killed before. The first time
# it stands still before its last file, so that it is killed however late that comes.
PROGRAM = """
import json, pathlib, signal, sys, tempfile
words = sys.argv[2:]
def option(name):
    return words[words.index(name) + 1] if name in words else None
out, settings = pathlib.Path(option("--out-dir")), option("--set")
record = option("--record") and pathlib.Path(option("--record"))
names = words[words.index("--") + 1:]
is_killed, is_again = out.name == "out", any(out.glob("*.wav"))
mark = out.with_suffix(".started")
stands_still = is_killed and not mark.exists()
mark.touch()
made = {{}}
for line in record.read_text().splitlines() if record and record.exists() else []:
    try:
        made[json.loads(line)["output"]] = json.loads(line)["settings"]
    except ValueError:
        pass
def keep(name):
    with record.open("a") as file:
        file.write(json.dumps({{"output": str(out / name), "settings": settings}}) + "\\n")
def has(name):
    return (out / name).exists() and (record is None or made.get(str(out / name)) == settings)
for old in out.glob(".varno-*"):
    old.unlink()
{start}
for name in names:
    while stands_still and name == names[-1]:
        signal.pause()
    data, skipped = pathlib.Path(name).read_bytes() + settings.encode(), has(name)
    {file}
    if not skipped:
        part = out / (".varno-" + name)
        part.write_bytes(data)
        part.rename(out / name)
        if record:
            keep(name)
    print(json.dumps({{"output": name, "skipped": skipped}}), flush=True)
"""
FAULTS = {
    "half": ("if is_killed and not (out / names[-1]).exists(): (out / names[-1]).write_bytes(b'half')", "pass"),
    "stale": ("if is_killed: tempfile.mkstemp(prefix='.other-', dir=out)", "pass"),
    "result": ("", "data += b'again' if is_killed and is_again else b''"),
    "end": ("", "skipped = False"),
    "record": ("if record and is_killed and not has(names[-1]): keep(names[-1]); made.clear()", "pass"),
}


class KillTest(PartTest):
    part = kill_part
    program = "Apps/varno/varno"

    def found(self, start="", file="pass"):
        """For two ways, new and replaced outputs, the faults that were found."""
        with unittest.mock.patch.object(kill_part, "WAYS", kill_part.WAYS[1:3]):
            findings = self.run_with(PROGRAM.format(start=start, file=file)).findings
        self.assertEqual(sum("kills" in finding.what for finding in findings if finding.is_met), 2)
        return [finding for finding in findings if "kills" not in finding.what and not finding.is_met]

    def test_passes_where_nothing_is_wrong(self):
        self.assertEqual(self.found(), [])

    def test_fails_where_one_thing_is(self):
        for key, fault in FAULTS.items():
            with self.subTest(key):
                found = self.found(*fault)
                self.assertTrue(found)
                self.assertTrue(any(f"; {key}: " in finding.found for finding in found), found)

    def test_fails_where_the_program_does(self):
        with self.assertRaisesRegex(RuntimeError, "ends with status 3"):
            self.found("sys.exit(3)")


if __name__ == "__main__":
    unittest.main()
