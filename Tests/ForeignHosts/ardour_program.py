"""Which Ardour there is, and which of the effect's ports are switches to it."""
import shutil

SWITCHES = ("HP", "Band", "ASw", "UK", "HSw", "LinkSw")


def program():
    """Its number is that of the release: 7 in Debian 12, 8 in Debian 13."""
    return next((name for name in ("ardour7-lua", "ardour8-lua") if shutil.which(name)), "ardour-lua")
