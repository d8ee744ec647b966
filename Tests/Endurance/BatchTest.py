"""The part "batch" fails where a program does one thing wrong."""
import unittest

import batch_part
from part_test import PartTest

# A program that renders by reversing the bytes, and knows the hostile files by their names. {fault} comes before the end
# of each file, {end} before that of the program.
PROGRAM = """
import json, pathlib, sys
sys.path.insert(0, {folder!r})
import batch_part
words = sys.argv[2:]
def option(name):
    return words[words.index(name) + 1] if name in words else None
jobs, out = option("--jobs"), option("--out-dir")
names = words[words.index("--") + 1:] if "--" in words else words[-2:-1]
REASONS = {{"no data": "is no audio that can be read: no data"}}
status = 0
for index, name in enumerate(names):
    kind = pathlib.Path(name).stem
    target = pathlib.Path(out, name) if out else pathlib.Path(words[-1])
    error = None
    if kind in batch_part.HOSTILE:
        status, error = 1, f"{{name}}: " + REASONS.get(kind, batch_part.HOSTILE[kind][1])
        data = None
    else:
        data = pathlib.Path(name).read_bytes()[::-1]
    {fault}
    if data is not None:
        target.write_bytes(data)
    if error:
        print("varno: " + error, file=sys.stderr)
    print(json.dumps({{"input": name, **({{"error": error}} if error else {{}})}}))
{end}
sys.exit(status)
"""
FAULTS = {
    "a file is lost": ("if name == 'clip 00007.wav': data = None", "", "outputs, files that are none"),
    "two jobs mix samples": ("if jobs == '2' and name == 'clip 00007.wav': data = data[::-1]", "", "of two jobs"),
    "a file alone is another one": ("if not out: data = data[::-1]", "", "of a render alone"),
    "a file is not named": ("if kind == 'symbolic loop': continue", "", "lines of the report"),
    "another reason is given": ("if kind == 'socket': error = name + ': failed'", "", "named with their reason"),
    "another file is named": ("if kind == 'device': error = error.replace('device.wav', 'it')", "", "named with their reason"),
    "a good file is refused": ("if name == 'clip 00007.wav': error, data = name + ': is a device', None", "",
                               "named with their reason"),
    "a hostile file is rendered": ("if kind == 'no frames': error, data = None, b''", "", "named with their reason"),
    "a temporary file stays": ("if out: pathlib.Path(out, '.varno-0123456789abcdef.part').touch()", "",
                               "outputs, files that are none"),
    "the status is that of success": ("", "status = 0", "exit status"),
    "nothing is printed for people": ("sys.stderr = open('/dev/null', 'w')", "", "on standard error"),
    "memory follows the header": ("if index == 0: held = b'x' * (300 << 20)", "", "most memory"),
}


class BatchTest(PartTest):
    part = batch_part
    program = "Apps/varno/varno"

    def script(self, fault="pass", end=""):
        return PROGRAM.format(folder=batch_part.__file__.rpartition("/")[0], fault=fault or "pass", end=end)

    def test_passes_where_nothing_is_wrong(self):
        work = self.run_with(self.script())
        self.assertEqual([finding for finding in work.findings if not finding.is_met], [])

    def test_fails_where_one_thing_is(self):
        for name, (fault, end, expected) in FAULTS.items():
            with self.subTest(name):
                failed = self.failed(self.script(fault, end))
                self.assertTrue(any(expected in what for what in failed), failed)


if __name__ == "__main__":
    unittest.main()
