"""A desktop session of a test's own, with the library by which screen readers use the accessibility bus."""
import faulthandler
import os
import pathlib
import subprocess
import tempfile
import threading
import time
import unittest

# How long something may take on a loaded machine.
DEADLINE_S = 30
# The library waits as long for each answer.
ANSWER_MS = 10_000
# How long all tests of a class may take. A client that waits for ever would otherwise hold up all that follows.
LIMIT_S = 150


def eventually(find):
    """The first result of find() that is true; the last one at the deadline."""
    end = time.monotonic() + DEADLINE_S
    while not (found := find()) and time.monotonic() < end:
        time.sleep(0.01)
    return found


class ScreenReaderTest(unittest.TestCase):
    """Has a session bus with accessibility switched on, and no display."""

    @classmethod
    def setUpClass(cls):
        cls.children = []
        watchdog = threading.Timer(LIMIT_S, cls.give_up)
        watchdog.daemon = True
        watchdog.start()
        cls.addClassCleanup(watchdog.cancel)
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        runtime = cls.folder / "run"
        runtime.mkdir(mode=0o700)
        for name in ("DISPLAY", "AT_SPI_BUS_ADDRESS"):
            os.environ.pop(name, None)
        os.environ.update(HOME=folder.name, XDG_RUNTIME_DIR=str(runtime), GSETTINGS_BACKEND="memory",
                          **{f"XDG_{kind}_HOME": folder.name for kind in ("CACHE", "CONFIG", "DATA")})
        daemon = cls.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address",
                            f"--address=unix:dir={runtime}"])
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = daemon.stdout.readline().strip()

        # The library finds its bus when it is loaded.
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, Gio, GLib
        cls.atspi, cls.glib = Atspi, GLib
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        bus.set_exit_on_close(False)
        bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                      GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))),
                      None, Gio.DBusCallFlags.NONE, -1)
        Atspi.init()
        Atspi.set_timeout(ANSWER_MS, ANSWER_MS)

    @classmethod
    def give_up(cls):
        faulthandler.dump_traceback()
        for child in cls.children:
            child.kill()
        os._exit(1)

    @classmethod
    def start(cls, words, **options):
        """A program that ends with the tests of the class."""
        program = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, **options)
        cls.children.append(program)

        def end():
            program.stdin.close()
            program.terminate()
            program.wait()
            program.stdout.close()
        cls.addClassCleanup(end)
        return program

    @classmethod
    def find_application(cls, name):
        desktop = cls.atspi.get_desktop(0)
        found = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
        return next((each for each in found if each and each.get_name() == name), None)

    @staticmethod
    def children_of(part):
        return [part.get_child_at_index(i) for i in range(part.get_child_count())]

    def part(self, name):
        """The part of that name, by walking the tree."""
        def find(within):
            if within.get_name() == name:
                return within
            return next((found for child in self.children_of(within) if (found := find(child))), None)
        return find(self.application)

    def has(self, part, state):
        return part.get_state_set().contains(state)

    def listen(self, *kinds):
        """A list that receives events of these kinds as (kind, name of the part, first detail), and a function that
        fetches what has arrived."""
        events = []
        listener = self.atspi.EventListener.new(
            lambda event: events.append((event.type, event.source.get_name(), event.detail1)))
        for kind in kinds:
            self.assertTrue(listener.register(kind))
            self.addCleanup(listener.deregister, kind)

        def fetch():
            while self.glib.MainContext.default().iteration(False):
                pass
            return events
        return events, fetch
