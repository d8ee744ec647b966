"""Runs the short form of a part with a stand-in for the program that it tries."""
import contextlib
import io
import pathlib
import shutil
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from work import Work


class PartTest(unittest.TestCase):
    """A test class states the part, and the place of its program below a folder of a build."""

    maxDiff = None
    part = None
    program = ""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="varno-part-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def run_with(self, script):
        """The part's work with a Python script in the place of the program."""
        program = self.folder / "build" / self.program
        program.parent.mkdir(parents=True, exist_ok=True)
        program.write_text(f"#!{sys.executable} -B\n{script}")
        program.chmod(0o755)
        folder = self.folder / "work"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        work = Work("part", self.folder / "build", folder, is_short=True)
        with contextlib.redirect_stderr(io.StringIO()):
            self.part.run(work)
        return work

    def failed(self, script):
        """What of the part's findings is not as demanded."""
        return [finding.what for finding in self.run_with(script).findings if not finding.is_met]
