"""Many short audio files, and what a batch of varno render makes of them."""
import math
import os
import pathlib
import re
import struct
import subprocess
import time

RATE_HZ = 48000
CLIP_FRAMES = RATE_HZ // 10
PCM = 1
# In seconds, between two looks at a process.
POLL_S = 0.01


def make_music(random, seconds=2):
    """Samples of 16 bits: decaying tones and hiss."""
    samples = bytearray()
    for frame in range(seconds * RATE_HZ):
        time_s = frame / RATE_HZ
        beat = math.exp(-6.0 * (time_s * 3.0 % 1.0))
        tone = 0.5 * math.sin(2.0 * math.pi * 110.0 * (1 + int(time_s)) * time_s)
        samples += struct.pack("<h", round(beat * (tone + 0.2 * (random.random() - 0.5)) * 32767))
    return bytes(samples)


def wav(data, channels=1, rate_hz=RATE_HZ, tag=PCM, format_bytes=16, data_bytes=None):
    """A WAV file of 16 bits, whose header may state sizes of its own."""
    frame_bytes = channels * 2
    form = struct.pack("<HHIIHH", tag, channels, rate_hz, rate_hz * frame_bytes & 0xFFFFFFFF, frame_bytes & 0xFFFF, 16)
    body = (b"WAVEfmt " + struct.pack("<I", format_bytes) + form +
            b"data" + struct.pack("<I", len(data) if data_bytes is None else data_bytes) + data)
    return b"RIFF" + struct.pack("<I", len(body)) + body


def make_clips(folder, count, random):
    """Writes so many files of 0.1 s, mono and stereo, of different sound. Returns their names."""
    music, names = make_music(random), []
    for number in range(count):
        channels = 1 + number % 2
        size = CLIP_FRAMES * 2 * channels
        at = random.randrange((len(music) - size) // 4) * 4
        names.append(f"clip {number:05}.wav")
        (folder / names[-1]).write_bytes(wav(music[at:at + size], channels))
    return names


def most_memory(process):
    """The most bytes that the process has had resident so far; 0 where it has ended."""
    found = re.search(r"^VmHWM:\s*(\d+) kB$", pathlib.Path(f"/proc/{process}/status").read_text(encoding="utf-8"), re.M)
    return 1024 * int(found[1]) if found else 0


class Batch:
    """A process of varno render, by its prefix (such as setpriv) and options. Its folder holds the inputs."""

    def __init__(self, program, folder, names, target, *options, prefix=(), environment=None, log):
        self._log = log
        with open(f"{log}.out", "wb") as out, open(f"{log}.err", "wb") as err:
            self._started = time.monotonic()
            self._process = subprocess.Popen([*prefix, str(program), "render", "--json", "--out-dir", str(target), *options,
                                              "--", *names], cwd=folder, stdin=subprocess.DEVNULL, stdout=out, stderr=err,
                                             env={**os.environ, **(environment or {})})
        self.status = None  # as subprocess has it: below 0 where a signal ended it
        self.seconds = 0.0
        self.peak_bytes = 0

    def wait(self):
        """Waits for its end. Returns this object, whose status, seconds and peak_bytes are then known."""
        ended = 0
        while not ended:
            # What the system says at the end counts the memory of this process too, before the program was loaded.
            self.peak_bytes = max(self.peak_bytes, most_memory(self._process.pid))
            time.sleep(POLL_S)
            ended, status = os.waitpid(self._process.pid, os.WNOHANG)
        self.status = self._process.returncode = os.waitstatus_to_exitcode(status)
        self.seconds = time.monotonic() - self._started
        return self

    def text(self, stream):
        """What it wrote to "out" or "err"."""
        with open(f"{self._log}.{stream}", encoding="utf-8", errors="replace") as file:
            return file.read()
