"""The effect's names and settings, test music, and WAV files of it."""
import array
import math
import pathlib
import random
import struct

URI = "urn:morvak:varno-s"
MONO, STEREO = URI + "#mono", URI + "#stereo"
PLUGINS = {1: MONO, 2: STEREO}
LATENCY_FRAMES = 1

RATE_HZ = 48000
STIMULUS_S = 10

# Two settings, in multiples of 1/16, so that single precision and decimal text hold them exactly.
MILD = {"Gain": 0.625, "Hot": 0.125, "Ratio": 0.0, "LinkSw": 1, "HP": 1, "Volume": 0.4375}
DRIVEN = {"Gain": 0.75, "Hot": 0.5, "Ratio": 1.0, "Atk": 0.25, "Rls": 0.375, "Mix": 0.125, "HSw": 1, "UK": 1, "Band": 1}

# Every parameter with its default, in the order of the ports.
PARAMETERS = {"Gain": 0.5, "HP": 0, "Band": 0, "Atk": 0.5, "Rls": 0.5, "ASw": 0, "UK": 0, "Volume": 0.5, "Hot": 0.07,
              "Ratio": 0.5, "Mix": 0, "HSw": 0, "LinkSw": 0}

WAVE_PCM, WAVE_FLOAT, WAVE_EXTENSIBLE = 1, 3, 0xFFFE


class Sound:
    """Samples of full scale +-1 as single precision, one array per channel."""

    def __init__(self, rate_hz, channels):
        self.rate_hz = rate_hz
        self.channels = channels

    @property
    def frames(self):
        return len(self.channels[0])


def interleaved(sound):
    count = len(sound.channels)
    samples = array.array("f", bytes(4 * sound.frames * count))
    for number, channel in enumerate(sound.channels):
        samples[number::count] = channel
    return samples


def chunks(content):
    at = 12
    while at + 8 <= len(content):
        name, size = struct.unpack_from("<4sI", content, at)
        yield name, content[at + 8:at + 8 + size]
        at += 8 + size + size % 2


def samples_of(data, tag, bits):
    """Samples of a data chunk as single precision."""
    if tag == WAVE_FLOAT:
        return array.array("f", array.array({32: "f", 64: "d"}[bits], data))
    size = bits // 8
    # Integers go into the upper bytes of 32 bits.
    wide = bytearray(4 * (len(data) // size))
    for byte in range(size):
        wide[4 - size + byte::4] = data[byte::size]
    return array.array("f", (value / 2.0 ** 31 for value in array.array("i", bytes(wide))))


def read_wav(path):
    content = pathlib.Path(path).read_bytes()
    parts = dict(chunks(content))
    form = parts[b"fmt "]
    tag, count, rate_hz, _, _, bits = struct.unpack_from("<HHIIHH", form)
    if tag == WAVE_EXTENSIBLE:
        tag = struct.unpack_from("<H", form, 24)[0]
    samples = samples_of(parts[b"data"], tag, bits)
    return Sound(rate_hz, [samples[number::count] for number in range(count)])


def write_wav(path, sound, bits):
    """Writes single precision (32 bits) or integers of 16 bits."""
    count = len(sound.channels)
    samples = interleaved(sound)
    if bits == 32:
        tag, data = WAVE_FLOAT, samples.tobytes()
    else:
        tag, data = WAVE_PCM, array.array("h", (round(value * 2 ** 15) for value in samples)).tobytes()
    frame = count * bits // 8
    form = struct.pack("<HHIIHH", tag, count, sound.rate_hz, sound.rate_hz * frame, frame, bits)
    body = b"WAVEfmt " + struct.pack("<I", len(form)) + form + b"data" + struct.pack("<I", len(data)) + data
    pathlib.Path(path).write_bytes(b"RIFF" + struct.pack("<I", len(body)) + body)


def make_music(channels, seconds=STIMULUS_S):
    """Decaying tones and hiss, peak about -4 dBFS, in steps of 16 bits: exact in every format that hosts read."""
    noise = random.Random(5)
    voices = []
    for channel in range(channels):
        pitch_hz = 110.0 * (channel + 1)
        voice = array.array("f")
        for frame in range(seconds * RATE_HZ):
            time_s = frame / RATE_HZ
            beat = math.exp(-6.0 * (time_s * 3.0 % 1.0))
            value = beat * (0.5 * math.sin(2.0 * math.pi * pitch_hz * time_s) + 0.12 * (noise.random() - 0.5))
            voice.append(round(value * 2 ** 15) / 2 ** 15)
        voices.append(voice)
    return Sound(RATE_HZ, voices)
