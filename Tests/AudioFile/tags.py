#!/usr/bin/python3
"""Writes and reads the tags of audio files with mutagen, which shares no code with the product.

usage: tags.py write FILE | tags.py read FILE

`write` gives a file nineteen texts, some of them with the same or an unknown key, and a picture. `read` prints all
texts as KEY=value and all pictures, sorted, in a form that does not depend on the container.
"""
import base64
import hashlib
import sys

import mutagen
from mutagen import aiff, flac, id3, mp3, wave

PICTURE = bytes(range(256)) * 40
TEXTS = [
    ("TITLE", "N\u00e4chte"), ("ARTIST", "First"), ("ARTIST", "Second"), ("ALBUM", "Twelve"), ("DATE", "2024-05-01"),
    ("GENRE", "Jazz"), ("TRACKNUMBER", "3"), ("COMMENT", "two\nlines"), ("COMPOSER", "Nobody"), ("COPYRIGHT", "2024"),
    ("ISRC", "DEAB12400001"), ("MOOD", "calm"), ("X-TAKE", "7"), ("X-TAKE", "8"), ("X-TAKE", "7"), ("BPM", "120"),
    ("ENCODER", "Recorder 2"), ("REPLAYGAIN_TRACK_GAIN", "-6.5 dB"), ("\u0058 Y", "\u65e5\u672c"),
]
FRAMES = {"TITLE": "TIT2", "ARTIST": "TPE1", "ALBUM": "TALB", "DATE": "TDRC", "GENRE": "TCON", "TRACKNUMBER": "TRCK",
          "COMPOSER": "TCOM", "COPYRIGHT": "TCOP", "ISRC": "TSRC", "MOOD": "TMOO", "BPM": "TBPM"}
KEYS = {frame: key for key, frame in FRAMES.items()}


def picture_block():
    block = flac.Picture()
    block.type, block.mime, block.desc, block.data = 3, "image/png", "c\u00f6ver", PICTURE
    block.width, block.height, block.depth = 20, 10, 24
    return block


def values_of(key):
    return [value for other, value in TEXTS if other == key]


def write_id3(file):
    if file.tags is None:
        file.add_tags()
    for key in dict(TEXTS):
        values = values_of(key)
        if key in FRAMES:
            file.tags.add(getattr(id3, FRAMES[key])(encoding=3, text=values))
        elif key == "COMMENT":
            file.tags.add(id3.COMM(encoding=3, lang="eng", desc="", text=values))
        else:
            file.tags.add(id3.TXXX(encoding=3, desc=key, text=values))
    file.tags.add(id3.APIC(encoding=3, mime="image/png", type=3, desc="c\u00f6ver", data=PICTURE))


def write_comments(file):
    file.tags.clear()
    for key, value in TEXTS:
        file.tags.append((key, value))
    if isinstance(file, flac.FLAC):
        file.add_picture(picture_block())
    else:
        file.tags.append(("METADATA_BLOCK_PICTURE", base64.b64encode(picture_block().write()).decode()))


def described(picture):
    return f"picture {int(picture.type)} {picture.mime} {picture.desc} {hashlib.sha1(picture.data).hexdigest()}"


def id3_lines(tags):
    for frame in tags.values():
        if frame.FrameID == "APIC":
            yield described(frame)
        elif frame.FrameID == "TXXX":
            yield from (f"{frame.desc}={value}" for value in frame.text)
        elif frame.FrameID == "COMM":
            yield from (f"COMMENT={value}" for value in frame.text)
        elif frame.FrameID in KEYS:
            yield from (f"{KEYS[frame.FrameID]}={value}" for value in frame.text)
        else:
            yield f"frame {frame.FrameID}"


def comment_lines(file):
    for key, value in file.tags:
        if key.upper() == "METADATA_BLOCK_PICTURE":
            yield described(flac.Picture(base64.b64decode(value)))
        else:
            yield f"{key}={value}"
    if isinstance(file, flac.FLAC):
        yield from (described(picture) for picture in file.pictures)


def main():
    command, path = sys.argv[1:]
    file = mutagen.File(path)
    is_id3 = isinstance(file, (wave.WAVE, aiff.AIFF, mp3.MP3))
    if command == "write":
        (write_id3 if is_id3 else write_comments)(file)
        file.save()
        return
    lines = [] if file.tags is None else id3_lines(file.tags) if is_id3 else comment_lines(file)
    sys.stdout.buffer.write("".join(sorted(repr(line) + "\n" for line in lines)).encode())


if __name__ == "__main__":
    main()
