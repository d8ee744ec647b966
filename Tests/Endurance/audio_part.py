"""Hours of sound at each quality, by the program varno_endurance_audio (LongRun.h)."""
import concurrent.futures
import json
import subprocess
import time

TITLE = "a day of stereo sound at 48 kHz as fast as it goes, and hours of it at 2x, 4x and 8x"
PACKAGES = ()
TARGETS = ("varno_endurance_audio",)

# By quality. Each takes the frames that the routine counts, at the rate at which it runs, beyond 2^32.
HOURS = {1: 25.0, 2: 12.5, 4: 6.25, 8: 3.2}
SHORT_HOURS = 0.02
MOST_RESIDENT_KIB = 256
MOST_ALLOCATED_KIB = 64
MOST_DIFFERENCE_DB = -100.0
RATE_HZ = 48000


def play(work, factor, hours):
    """What the program found, and the seconds it took."""
    command = [work.build / "Tests/Endurance/varno_endurance_audio", str(factor), str(hours * 3600), str(work.seed)]
    started, found = time.monotonic(), None
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as process:
        for line in process.stdout:
            if line.startswith("progress "):
                work.progress(f"{factor}x: {float(line.split()[1]) / 3600:.1f} of {hours:g} hours")
            else:
                found = json.loads(line)
    if process.returncode != 0 or found is None:
        raise RuntimeError(f"{factor}x ended with status {process.returncode}")
    return found, time.monotonic() - started


def judge(work, name, found):
    faults = [found[key] for key in ("bad buffers", "bad meters", "position error", "broken contracts")]
    work.check(f"{name}: buffers with a sample that is not finite, such readings of meters, position less the frames "
               "processed, broken contracts", ", ".join(map(str, faults)), "0, 0, 0, 0", not any(faults))
    resident, allocated = (found[f"{key} bytes"] / 1024 for key in ("resident", "allocated"))
    work.check(f"{name}: growth of memory, resident and allocated", f"{resident:.3g} KiB, {allocated:.3g} KiB",
               f"at most {MOST_RESIDENT_KIB} KiB, {MOST_ALLOCATED_KIB} KiB",
               resident <= MOST_RESIDENT_KIB and allocated <= MOST_ALLOCATED_KIB)
    difference = found["difference after reset"]
    work.check(f"{name}: after a reset, beside a new instance with its state", difference or "the same bits", "the same bits",
               not difference)
    apart_db = found["difference after silence, dBFS"]  # null where it is not a number
    work.check(f"{name}: after 30 s of silence, beside a new instance with its state",
               "no number" if apart_db is None else f"at most {apart_db:.1f} dBFS apart",
               f"below {MOST_DIFFERENCE_DB:g} dBFS", apart_db is not None and apart_db < MOST_DIFFERENCE_DB)


def run(work):
    hours = {factor: SHORT_HOURS / factor if work.is_short else whole for factor, whole in HOURS.items()}
    with concurrent.futures.ThreadPoolExecutor(len(hours)) as side_by_side:
        playing = {factor: side_by_side.submit(play, work, factor, hours[factor]) for factor in hours}
    for factor, played in playing.items():
        found, seconds = played.result()
        frames = hours[factor] * 3600 * RATE_HZ * factor
        work.note(f"{factor}x", f"{hours[factor]:g} hours, {frames:.4g} frames of the routine in {seconds:.0f} s, beside the other "
                  f"qualities; {found['buffers']} buffers, {found['changes']} changes of settings, {found['bad inputs']} buffers "
                  "of unusable input")
        judge(work, f"{factor}x", found)
