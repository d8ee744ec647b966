"""Pictures as rows of pixels, and how much two of them differ. ImageMagick reads the files."""
import subprocess

BYTES_PER_PIXEL = 3
FULL = 255


class Picture:
    """Of `width` times `height` pixels of red, green and blue."""

    def __init__(self, width, height, pixels):
        self.width = width
        self.height = height
        self.pixels = bytearray(pixels)

    @staticmethod
    def read(path):
        size = subprocess.run(["identify", "-format", "%w %h", path], check=True, capture_output=True, text=True).stdout
        pixels = subprocess.run(["convert", path, "-alpha", "off", "-colorspace", "sRGB", "-depth", "8", "rgb:-"],
                                check=True, capture_output=True).stdout
        return Picture(*map(int, size.split()), pixels)

    @property
    def size(self):
        return self.width, self.height

    def row(self, y, left, right):
        """The bytes of a row from pixel `left` up to, not with, `right`."""
        start = BYTES_PER_PIXEL * self.width * y
        return slice(start + BYTES_PER_PIXEL * left, start + BYTES_PER_PIXEL * right)

    def fill(self, left, top, right, bottom):
        for y in range(top, bottom):
            self.pixels[self.row(y, left, right)] = bytes(BYTES_PER_PIXEL * (right - left))

    def copy(self, source, target, width, height):
        """The rectangle at the pixel `source` (x, y) replaces the one at `target`."""
        part = [self.pixels[self.row(source[1] + y, source[0], source[0] + width)] for y in range(height)]
        for y, line in enumerate(part):
            self.pixels[self.row(target[1] + y, target[0], target[0] + width)] = line


def differences(one, other, cell):
    """The mean difference of two pictures of one size, 0 to 1, and the largest mean within a square of `cell` pixels
    with its corner (x, y)."""
    sums = {}
    for y in range(one.height):
        for left in range(0, one.width, cell):
            part = one.row(y, left, min(left + cell, one.width))
            corner = (left, y - y % cell)
            total = sum(abs(a - b) for a, b in zip(one.pixels[part], other.pixels[part]))
            before = sums.get(corner, (0, 0))
            sums[corner] = (before[0] + total, before[1] + part.stop - part.start)
    mean = sum(total for total, _ in sums.values()) / (FULL * len(one.pixels))
    return mean, max((total / (FULL * count), corner) for corner, (total, count) in sums.items())
