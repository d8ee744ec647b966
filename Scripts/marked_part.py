"""The part of a document that a command writes, between two lines of comments."""
import subprocess
import sys


class MarkedPart:
    """`<!-- NAME: written by COMMAND -->` to `<!-- /NAME -->`."""

    def __init__(self, root, document, name, command):
        self.root, self.document = root, document
        self.markers = (f"<!-- {name}: written by {command} -->\n", f"<!-- /{name} -->\n")

    def around(self):
        """The document before and after the part. Ends the program where it has none."""
        before, first, rest = (self.root / self.document).read_text().partition(self.markers[0])
        _, last, after = rest.partition(self.markers[1])
        if not first or not last:
            sys.exit(f"run: {self.document}: the lines {self.markers[0].strip()} and {self.markers[1].strip()} are missing")
        return before + first, last + after

    def write(self, text):
        before, after = self.around()
        (self.root / self.document).write_text(f"{before}\n{text}\n\n{after}")


def commit(root):
    """The commit that is checked out, for what is written."""
    done = subprocess.run(["git", "-c", "safe.directory=*", "-C", str(root), "rev-parse", "--short", "HEAD"],
                          capture_output=True, text=True, check=False)
    return done.stdout.strip() or "unknown"
