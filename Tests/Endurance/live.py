"""`varno play` on a JACK server of its own with a dummy for the sound card, and load beside it."""
import contextlib
import json
import os
import re
import signal
import subprocess
import time

# A server, a client or a program that takes longer to answer counts as hanging.
PATIENCE_S = 60
RATE_HZ = 48000
# Clients of the same name conflict, even on different servers.
CLIENT = f"varno-endurance-{os.getpid()}"
REAL_TIME_PRIORITY = 10
# On which this program, and what it starts, may be.
PROCESSORS = sorted(os.sched_getaffinity(0))


def has_real_time():
    """Whether threads may have real-time scheduling here."""
    done = subprocess.run(["chrt", "-f", str(REAL_TIME_PRIORITY), "true"], stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, check=False)
    return done.returncode == 0


def end(process, how=signal.SIGTERM):
    """Ends a process; returns its status."""
    if process.poll() is None:
        process.send_signal(how)
    try:
        return process.wait(PATIENCE_S)
    except subprocess.TimeoutExpired:
        process.kill()
        return process.wait()


@contextlib.contextmanager
def running(folder, log, *command, environment=None, output=None):
    """A process that ends with the block, or with this program."""
    with open(folder / log, "wb") as errors, open(folder / (output or log), "ab") as printed:
        process = subprocess.Popen(["setpriv", "--pdeathsig", "TERM", *map(str, command)], cwd=folder,
                                   stdin=subprocess.DEVNULL, stdout=printed, stderr=errors,
                                   env={**os.environ, **(environment or {})})
    try:
        yield process
    finally:
        end(process)


def eventually(condition, what):
    """Waits until condition() is true; returns what it returned."""
    limit = time.monotonic() + PATIENCE_S
    while time.monotonic() < limit:
        found = condition()
        if found:
            return found
        time.sleep(0.05)
    raise RuntimeError(f"never came: {what}")


@contextlib.contextmanager
def server(folder, period_frames, is_real_time):
    """A server that waits for no client; gives the environment in which programs find it."""
    environment = {"JACK_DEFAULT_SERVER": CLIENT, "JACK_NO_START_SERVER": "1", "JACK_NO_AUDIO_RESERVATION": "1"}
    scheduling = ["-R", "-P", REAL_TIME_PRIORITY] if is_real_time else ["-r"]
    with running(folder, "jackd.log", "jackd", *scheduling, "-n", CLIENT, "-d", "dummy", "-r", RATE_HZ, "-p", period_frames,
                 environment=environment) as process:
        def answers():
            if process.poll() is not None:
                raise RuntimeError(f"jackd has ended: {(folder / 'jackd.log').read_text()}")
            return subprocess.run(["jack_lsp"], env={**os.environ, **environment}, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, check=False).returncode == 0
        eventually(answers, "the JACK server")
        yield environment


@contextlib.contextmanager
def load(folder):
    """Two workers of stress-ng, each of which would use a whole processor."""
    with running(folder, "stress.log", "stress-ng", "--cpu", "2", "--quiet"):
        yield


def stop_for(process, seconds):
    """Has a process stand still."""
    process.send_signal(signal.SIGSTOP)
    time.sleep(seconds)
    process.send_signal(signal.SIGCONT)


def memory_kib(process):
    """What of a process is in memory."""
    with open(f"/proc/{process.pid}/status") as status:
        return int(re.search(r"^VmRSS:\s+(\d+) kB", status.read(), re.M).group(1))


class Player:
    """`varno play` while it plays."""

    def __init__(self, process, log, printed):
        self.process = process
        self.log = log
        self.printed = printed

    def statistics(self):
        """Ends it; returns what it has counted."""
        status = end(self.process)  # SIGINT is ignored below a shell's background jobs
        if status != 0:
            raise RuntimeError(f"varno play ends with {status}: {self.log.read_text()}")
        return json.loads(self.printed.read_text())


@contextlib.contextmanager
def play(work, environment, *options, name="play", processor=PROCESSORS[-1]):
    """A Player, once it plays. It stays on a processor. @param name of which each player beside others has its own"""
    log, printed = work.folder / f"{name}.log", work.folder / f"{name}.json"
    printed.unlink(missing_ok=True)
    with running(work.folder, log.name, "taskset", "--cpu-list", processor, work.program, "play", "--no-edit", "--backend",
                 "jack", "--name", f"{CLIENT}-{name}", "--json", *options, environment=environment,
                 output=printed.name) as process:
        def plays():
            if process.poll() is not None:
                raise RuntimeError(f"varno play has ended: {log.read_text()}")
            return "playing: " in log.read_text()
        eventually(plays, "the effect")
        yield Player(process, log, printed)
