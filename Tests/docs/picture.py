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

    def colours(self):
        """Each as its three bytes."""
        return {bytes(self.pixels[at:at + BYTES_PER_PIXEL]) for at in range(0, len(self.pixels), BYTES_PER_PIXEL)}

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


def cells(one, other, cell):
    """How much two pictures of one size differ in the mean, 0 to 1, by squares of `cell` pixels: by their corners
    (x, y)."""
    sums = {}
    for y in range(one.height):
        for left in range(0, one.width, cell):
            part = one.row(y, left, min(left + cell, one.width))
            corner = (left, y - y % cell)
            total = sum(abs(a - b) for a, b in zip(one.pixels[part], other.pixels[part]))
            before = sums.get(corner, (0, 0))
            sums[corner] = (before[0] + total, before[1] + part.stop - part.start)
    return {corner: total / (FULL * count) for corner, (total, count) in sums.items()}


def differences(one, other, cell):
    """The mean difference of two pictures of one size, 0 to 1, and the largest mean within a square of `cell` pixels
    with its corner (x, y)."""
    means = cells(one, other, cell)
    total = sum(abs(a - b) for a, b in zip(one.pixels, other.pixels))
    return total / (FULL * len(one.pixels)), max((mean, corner) for corner, mean in means.items())


def changed_areas(one, other, cell, most):
    """Where two pictures of one size differ by more than `most` in the mean of a square: rectangles around squares that
    touch, as edges (left, top, right, bottom)."""
    left_over = {corner for corner, mean in cells(one, other, cell).items() if mean > most}
    areas = []
    while left_over:
        found, new = set(), [left_over.pop()]
        while new:
            x, y = corner = new.pop()
            found.add(corner)
            near = {(x + dx, y + dy) for dx in (-cell, 0, cell) for dy in (-cell, 0, cell)} & left_over
            left_over -= near
            new += near
        areas.append((min(x for x, _ in found), min(y for _, y in found),
                      min(max(x for x, _ in found) + cell, one.width),
                      min(max(y for _, y in found) + cell, one.height)))
    return sorted(areas)
