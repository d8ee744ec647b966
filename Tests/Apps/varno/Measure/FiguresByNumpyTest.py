"""The figures that varno measures, from files that varno render makes and numpy looks at: another program's signals and
another program's transform. Levels agree within 0.1 dB, products within 1 dB down to -90 dB."""
import functools
import json
import os
import pathlib
import subprocess
import tempfile
import unittest
import wave

import numpy

VARNO = pathlib.Path(os.environ["VARNO_BUILD"]) / "Apps/varno/varno"
RATE_HZ = 48000
LEVEL_DB = 0.1
PRODUCT_DB = 1.0
LEAST_PRODUCT_DB = -90.0


def decibels(ratio):
    return 20.0 * numpy.log10(ratio)


def rms(samples):
    return numpy.sqrt(numpy.mean(numpy.square(samples)))


def tone(frequency_hz, level_db, seconds):
    times = numpy.arange(round(seconds * RATE_HZ)) / RATE_HZ
    return 10.0 ** (level_db / 20.0) * numpy.sin(2.0 * numpy.pi * frequency_hz * times)


@functools.cache
def figure(name, *options):
    printed = subprocess.run([VARNO, "measure", "--json", name, *options], stdout=subprocess.PIPE, check=True).stdout
    return json.loads(printed)["figures"][0]["rows"]


def row(name, *options, **place):
    found = [each for each in figure(name, *options) if all(each[key] == value for key, value in place.items())]
    assert len(found) == 1, (name, place, len(found))
    return found[0]


def rendered(samples, *options):
    """What varno render makes of mono samples, as 32-bit float raw samples of a WAV file."""
    with tempfile.TemporaryDirectory() as folder:
        source, target = pathlib.Path(folder, "in.wav"), pathlib.Path(folder, "out.wav")
        # 24 bits: finer than all that is looked at.
        scaled = numpy.round(numpy.clip(samples, -1.0, 1.0) * 8388607.0).astype("<i4")
        with wave.open(str(source), "wb") as file:
            file.setparams((1, 3, RATE_HZ, 0, "NONE", ""))
            file.writeframes(scaled.view(numpy.uint8).reshape(-1, 4)[:, :3].tobytes())
        subprocess.run([VARNO, "render", "--quiet", "--dither", "none", *options, source, target], check=True)
        with wave.open(str(target), "rb") as file:
            data = numpy.frombuffer(file.readframes(file.getnframes()), numpy.uint8).reshape(-1, 3)
        padded = numpy.zeros((len(data), 4), numpy.uint8)
        padded[:, 1:] = data
        return padded.view("<i4").reshape(-1) / 2147483648.0


def powers(samples):
    """Of each frequency in Hz in the last second."""
    return 2.0 * numpy.square(numpy.abs(numpy.fft.rfft(samples[-RATE_HZ:]) / RATE_HZ))


class FiguresByNumpy(unittest.TestCase):
    def assert_product(self, measured, found, what):
        """Of a harmonic or an alias in dB; what measure leaves out is soft."""
        if measured is None:
            self.assertLess(found, LEAST_PRODUCT_DB, what)
        elif max(measured, found) > LEAST_PRODUCT_DB:
            self.assertAlmostEqual(measured, found, delta=PRODUCT_DB, msg=str(what))

    def test_curves(self):
        for curve in range(1, 9):
            for level_db in (-30.0, -12.0, 0.0):
                signal = tone(1000, level_db, 12)
                output = rendered(signal, "--set", f"Ratio=#{curve}", "--set", "Hot=0")
                found = decibels(rms(output[-RATE_HZ:]) / rms(signal[-RATE_HZ:]))
                measured = row("curves", level_db=level_db)[f"curve_{curve}"]
                self.assertAlmostEqual(measured, found, delta=LEVEL_DB, msg=f"curve {curve} at {level_db}")

    def test_drive(self):
        for level_db in (-24.0, -12.0, 0.0):
            clean = rms(rendered(tone(1000, level_db, 4), "--set", "Hot=0")[-RATE_HZ:])
            for hot in (0.1, 0.4, 1.0):
                output = rendered(tone(1000, level_db, 4), "--set", f"Hot={hot}")
                measured = row("drive", level_db=level_db, hot=hot)
                self.assertAlmostEqual(measured["change_db"], decibels(rms(output[-RATE_HZ:]) / clean), delta=LEVEL_DB)

    def test_harmonics(self):
        looked_at = 0
        for select in ("off", "on"):
            for hot in (0.0, 0.07, 0.2, 0.4, 1.0):
                power = powers(rendered(tone(1000, -12, 4), "--set", f"Hot={hot}", "--set", f"HSw={select}"))
                measured = row("harmonics", hot=hot, hsw=select)
                for harmonic in range(2, 8):
                    found = 10.0 * numpy.log10(power[1000 * harmonic] / power[1000] + 1e-30)
                    self.assert_product(measured[f"h{harmonic}_db"], found, (select, hot, harmonic))
                    looked_at += found > LEAST_PRODUCT_DB
                found = 10.0 * numpy.log10(numpy.sum(power[2000::1000]) / power[1000])
                self.assert_product(measured["thd_db"], found, (select, hot, "thd"))
        self.assertGreater(looked_at, 30)

    def test_aliasing(self):
        for quality in ("1x", "4x"):
            for hot in (0.1, 0.4):
                for tone_hz in (2999, 6997, 14983):
                    output = rendered(tone(tone_hz, -12, 4), "--set", f"Hot={hot}", "--quality", quality)
                    power = powers(output)
                    audible = numpy.arange(16, 20001)
                    others = power[audible[audible % tone_hz != 0]]
                    measured = row("aliasing", "--quality", quality, level_db=-12.0, hot=hot, tone_hz=tone_hz)
                    for key, found in (("sum_db", numpy.sum(others)), ("largest_db", numpy.max(others))):
                        self.assert_product(measured[key], 10.0 * numpy.log10(found / power[tone_hz]),
                                            (quality, hot, tone_hz, key))

    def test_detector(self):
        """A tone that is softer by as much as a filter lets the detector hear it louder is reduced as much."""
        usual = ("--set", "Hot=0", "--set", "Ratio=#5", "--set", "Atk=0.5", "--set", "Rls=0.5")

        def reduction_db(frequency_hz, level_db, *options):
            signal = tone(frequency_hz, level_db, 3)
            return decibels(rms(signal[-RATE_HZ:]) / rms(rendered(signal, *usual, *options)[-RATE_HZ:]))

        for frequency_hz in (120.0, 1000.0, 7000.0):
            measured = row("detector", frequency_hz=frequency_hz)
            for name, key in (("HP", "high_pass_db"), ("Band", "band_db")):
                plain = reduction_db(frequency_hz, -10.0)
                filtered = reduction_db(frequency_hz, -10.0 - measured[key], "--set", f"{name}=on")
                self.assertAlmostEqual(plain, filtered, delta=LEVEL_DB, msg=f"{name} at {frequency_hz}")

    def test_transfer(self):
        signal = tone(1000, 0, 4)
        output = rendered(signal, "--set", "Hot=0.4", "--format", "pcm24")
        for each in figure("transfer"):
            # Samples of the input in the last period that are this one.
            near = numpy.flatnonzero(numpy.abs(signal[-49:-1] - each["input"]) < 1e-5) + len(signal) - 49
            self.assertTrue(any(abs(output[at + 1] - each["hot_0.4"]) < 1e-5 for at in near), each)

    def test_burst(self):
        """A tone at half the sample rate has the burst's constant magnitude, and leaves the DC blocker as it came."""
        signal = numpy.concatenate([0.5 * (-1.0) ** numpy.arange(round(0.3 * RATE_HZ)), numpy.zeros(RATE_HZ)])
        output = rendered(signal, "--set", "Atk=0.25", "--set", "Rls=0.25", "--set", "Hot=0")
        for time_ms in (1.0, 2.0, 5.0, 20.0, 100.0, 200.0):
            frame = round(time_ms * RATE_HZ / 1000)
            found = -decibels(abs(output[frame + 1]) / 0.5)
            self.assertAlmostEqual(row("burst", time_ms=time_ms)["knobs_0.25"], found, delta=LEVEL_DB, msg=time_ms)


if __name__ == "__main__":
    unittest.main()
