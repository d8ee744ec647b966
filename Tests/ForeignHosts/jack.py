"""JACK for tests: a server of its own for each, with a dummy for the sound card."""
import fcntl
import functools
import os
import pathlib
import re
import signal
import subprocess
import tempfile

from hosts import PATIENCE_S, RATE_HZ, HostTest

PERIOD_FRAMES = 1024
# The server prints it where it has read a client's requests from the wrong place on. It leaves that client alone then.
LOST = "Unknown request"
MOST_TIMES = 5
ONE_AT_A_TIME = pathlib.Path(tempfile.gettempdir()) / "varno-test-jack.lock"


def again_where_requests_are_lost(test):
    """Begins a test again where JACK's server has lost the requests of a client, as happens now and then with Ardour at its
    start: its threads share a connection. That is no fault of what is tested."""
    @functools.wraps(test)
    def run(self):
        for _ in range(MOST_TIMES - 1):
            try:
                return test(self)
            except AssertionError:
                if LOST not in self.log("jackd.log"):
                    raise
            self.doCleanups()
            self.setUp()
        return test(self)
    return run


class JackTest(HostTest):
    """Gives each test self.jack, the environment in which programs find its server. Other runs of such tests wait: clients
    of the same name conflict, even on different servers."""

    def setUp(self):
        super().setUp()
        lock = ONE_AT_A_TIME.open("wb")
        self.addCleanup(lock.close)
        fcntl.flock(lock, fcntl.LOCK_EX)
        # Without a name of its own, a server conflicts with others, also with ones that have ended without cleaning up.
        self.jack = {"JACK_DEFAULT_SERVER": f"varno-test-{os.getpid()}-{id(self)}", "JACK_NO_START_SERVER": "1",
                     "JACK_NO_AUDIO_RESERVATION": "1"}

    def start_server(self):
        """Starts the server and waits until it answers."""
        # -r: without real-time scheduling, which needs privileges. -S: the server waits for its clients, however busy
        # the machine is, instead of leaving one out.
        server = self.start("jackd", "-r", "-S", "-n", self.jack["JACK_DEFAULT_SERVER"], "-d", "dummy", "-r",
                            str(RATE_HZ), "-p", str(PERIOD_FRAMES), environment=self.jack, log="jackd.log")
        self.addCleanup(self.end_server, server)
        self.eventually(lambda: self.list_ports() is not None, "the JACK server")
        return server

    def end_server(self, server):
        """JACK keeps a list of eight servers. One that was killed stays in it until another of its name has ended."""
        if self.end(server) == -signal.SIGKILL:
            self.end(self.start_server())

    def list_ports(self, *options):
        """What jack_lsp prints; None where no server answers."""
        done = subprocess.run(["jack_lsp", *options], cwd=self.folder, env={**os.environ, **self.jack},
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              timeout=PATIENCE_S, check=False)
        return done.stdout.decode() if done.returncode == 0 else None

    def jack_program(self, *command):
        """What a program prints that uses the server. One that fails is tried again: the previous client of the same
        name may still be registered for a moment."""
        def attempt():
            done = subprocess.run(command, cwd=self.folder, env={**os.environ, **self.jack}, stdin=subprocess.DEVNULL,
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=PATIENCE_S, check=False)
            return (done.stdout.decode(),) if done.returncode == 0 else None
        return self.eventually(attempt, f"success of {' '.join(command)}")[0]

    def ports(self):
        return self.jack_program("jack_lsp").split()

    def wait_for_ports(self, *names):
        self.eventually(lambda: set(names) <= set(self.ports()), f"the ports {names}")

    def connect(self, source, destination):
        """Ports can be seen a moment before their client takes connections."""
        self.jack_program("jack_connect", source, destination)

    def start_ecasound(self, name, channels, *chain, log):
        """A client that plays a file into JACK or records one from it; its ports are name:out_1 or name:in_1 and so on.
        It does not wait for a transport."""
        return self.start("ecasound", "-q", f"-G:jack,{name},notransport", f"-f:f32_le,{channels},{RATE_HZ}", *chain,
                          environment=self.jack, log=log)

    def start_player(self, path, channels):
        player = self.start_ecasound("player", channels, "-i", path, "-o", "jack", log="player.log")
        self.wait_for_ports(f"player:out_{channels}")
        return player

    def start_recorder(self, path, channels, *options):
        """Records from the first call on. Returns the process and the recorder's ports, which are not connected."""
        recorder = self.start_ecasound("recorder", channels, "-i", "jack", "-o", path, *options, log="recorder.log")
        self.wait_for_ports(f"recorder:in_{channels}")
        return recorder, [f"recorder:in_{number + 1}" for number in range(channels)]

    def reported_latency(self, port):
        """Least and most frames from the port to the next one that is a terminal, as JACK keeps them."""
        text = self.jack_program("jack_lsp", "-l", port)
        return [tuple(map(int, pair)) for pair in re.findall(r"\[ (\d+) (\d+) \] frames", text)]

    def loop_latency(self, *way):
        """Frames around a loop through the ports of `way` (into and out of clients in turn), measured with tones."""
        meter = self.start("stdbuf", "-oL", "jack_iodelay", environment=self.jack, log="iodelay.log")
        self.wait_for_ports("jack_delay:in", "jack_delay:out")
        stops = ["jack_delay:out", *way, "jack_delay:in"]
        for source, destination in zip(stops[::2], stops[1::2]):
            self.connect(source, destination)
        wanted = 10  # the first measurements still vary
        found = self.eventually(
            lambda: (lambda all_found: all_found if len(all_found) >= wanted else None)(
                re.findall(r"([\d.]+) frames +[\d.]+ ms total roundtrip latency", self.log("iodelay.log"))),
            "a measured latency")
        self.end(meter)
        self.eventually(lambda: "jack_delay:in" not in self.ports(), "the end of jack_iodelay")
        return float(found[-1])


class Jalv:
    """jalv at its prompt, between two files: commands go in, lines come out."""

    def __init__(self, test, uri, *options):
        self.test = test
        self.process = test.start("stdbuf", "-oL", "jalv", "-n", "Fx", "-x", *options, uri, environment=test.jack,
                                  log="jalv.log", stdin=subprocess.PIPE)
        test.addCleanup(self.process.stdin.close)

    def say(self, command):
        self.process.stdin.write(command.encode() + b"\n")
        self.process.stdin.flush()

    def answer(self, command, pattern):
        """What the first line that matches holds, of those that come after the command."""
        before = len(self.test.log("jalv.log"))
        self.say(command)
        return self.test.eventually(lambda: re.search(pattern, self.test.log("jalv.log")[before:], re.MULTILINE),
                                    f"{pattern} from {command}")
