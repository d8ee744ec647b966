"""What the documents link to exists, and so do the files of the tree that they name."""
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
DOCUMENTS = sorted([*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")])

LINK = re.compile(r"\]\(([^)\s]+)\)")
# A path within backticks. What is made by a build or stands for a name of the reader's has no such place.
NAMED = re.compile(r"`([\w.-]+/[\w./-]*)`")
FOLDERS = {folder.name for folder in ROOT.iterdir() if folder.is_dir()} - {"build"}
PLACEHOLDER = "NAME"


def anchors(document):
    """Where a link may lead to within a document, as the web shows its headings."""
    headings = re.findall(r"(?m)^#+ (.*)$", document.read_text())
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def broken_links(document, text):
    for target in LINK.findall(text):
        path, _, anchor = target.partition("#")
        place = document.parent / path if path else document
        if not re.match(r"\w+:", target) and (not place.exists() or anchor and anchor not in anchors(place)):
            yield target


def missing_files(text):
    for name in NAMED.findall(text):
        if name.split("/")[0] in FOLDERS and PLACEHOLDER not in name and "..." not in name and not (ROOT / name).exists():
            yield name


class PathsTest(unittest.TestCase):
    def test_links(self):
        for document in DOCUMENTS:
            self.assertEqual(list(broken_links(document, document.read_text())), [], document.name)

    def test_files(self):
        for document in DOCUMENTS:
            self.assertEqual(list(missing_files(document.read_text())), [], document.name)

    def test_what_is_broken_is_found(self):
        manual = ROOT / "docs/manual.md"
        text = "[a](presets.md) [b](presets.md#the-factory-presets) [c](#auto-gain) [d](https://example.org/x) "
        self.assertEqual(list(broken_links(manual, text)), [])
        text = "[a](gone.md) [b](presets.md#gone) [c](#gone)"
        self.assertEqual(list(broken_links(manual, text)), ["gone.md", "presets.md#gone", "#gone"])
        text = "`docs/manual.md` `docs/` `build/x` `a/b` `Formats/NAME/CMakeLists.txt` `docs/gone.md` `Scripts/gone/`"
        self.assertEqual(list(missing_files(text)), ["docs/gone.md", "Scripts/gone/"])


if __name__ == "__main__":
    unittest.main()
