"""The LV2 bundles that hosts of the tests find."""
import pathlib
import re

SPECIFICATION_BUNDLES = pathlib.Path("/usr/lib/lv2")


def link_bundles(folder, bundle):
    """Fills the folder with links to the bundle and to those that hold a part of the specification."""
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.iterdir():
        old.unlink()
    for manifest in SPECIFICATION_BUNDLES.glob("*/manifest.ttl"):
        if re.search(r"\ba\s+(lv2|owl):(Specification|Ontology)\b", manifest.read_text()):
            (folder / manifest.parent.name).symlink_to(manifest.parent)
    (folder / bundle.name).symlink_to(bundle)
