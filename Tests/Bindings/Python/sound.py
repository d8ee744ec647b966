"""Sound for the tests of the Python package, and the program that it is compared with."""
import json
import os
import pathlib
import struct
import subprocess

import numpy as np

PROGRAM = os.environ["VARNO_PROGRAM"]
RATE = 48000
FLOAT = 3  # the format tag of WAV files


def music(channels, frames, seed=1):
    """Decaying bursts over noise: every stage of the effect has something to do."""
    random = np.random.default_rng(seed)
    time = np.arange(frames) / RATE
    bursts = np.sin(2 * np.pi * 90 * time) * np.exp(-8 * (time % 0.2))
    return (0.7 * bursts + 0.1 * random.standard_normal((channels, frames))).astype(np.float32)


def write_wav(path, sound, rate=RATE):
    channels, frames = sound.shape
    data = sound.T.tobytes()
    form = struct.pack("<HHIIHH", FLOAT, channels, rate, rate * channels * 4, channels * 4, 32)
    fact = struct.pack("<I", frames)
    chunks = b"".join(name + struct.pack("<I", len(body)) + body for name, body in
                      ((b"fmt ", form), (b"fact", fact), (b"data", data)))
    pathlib.Path(path).write_bytes(b"RIFF" + struct.pack("<I", 4 + len(chunks)) + b"WAVE" + chunks)


def read_wav(path):
    content = pathlib.Path(path).read_bytes()
    offset, channels = 12, 0
    while True:
        name, size = content[offset:offset + 4], struct.unpack_from("<I", content, offset + 4)[0]
        body = content[offset + 8:offset + 8 + size]
        if name == b"fmt ":
            channels = struct.unpack_from("<H", body, 2)[0]
        elif name == b"data":
            return np.frombuffer(body, np.float32).reshape(-1, channels).T.copy()
        offset += 8 + size + size % 2


def varno(*arguments):
    # Under sanitizers the program contains what Python has to load before.
    environment = {name: value for name, value in os.environ.items() if name not in ("LD_PRELOAD", "ASAN_OPTIONS")}
    return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, check=True, env=environment).stdout


def rendered(folder, sound, *options, rate=RATE):
    """The sound and the report of varno render."""
    source, result = pathlib.Path(folder) / "in.wav", pathlib.Path(folder) / "out.wav"
    write_wav(source, sound, rate)
    report = json.loads(varno("render", "--json", "--force", *options, source, result))
    return read_wav(result), report
