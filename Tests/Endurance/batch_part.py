"""A batch with files in it that cannot be rendered. Those are named, each with the reason, and the others rendered."""
import contextlib
import json
import os
import pathlib
import re
import socket
import subprocess
import threading

import clips

TITLE = "a batch of 10,000 files of 0.1 s, 20 of which cannot be rendered, with one and two jobs and with Dask"
PACKAGES = ("hosts",)
TARGETS = ("varno",)

FILES, SHORT_FILES = 10000, 200
# Rendered alone and compared.
SINGLES, SHORT_SINGLES = 100, 5
MOST_MEMORY_MIB = 256
DASK = pathlib.Path(__file__).resolve().parents[2] / "examples/batch/dask-batch.py"
# The distribution's, whose package Dask is.
PYTHON = "/usr/bin/python3"
# Below what stands for a size that is not known.
HUGE_BYTES = 0x70000000


def make_folder(path, _):
    path.mkdir()


def make_loop(path, _):
    path.symlink_to(path.name)


def make_device(path, _):
    path.symlink_to("/dev/zero")


def make_pipe(path, _):
    os.mkfifo(path)


def make_socket(path, _):
    # The names of sockets are short.
    with contextlib.chdir(path.parent), socket.socket(socket.AF_UNIX) as server:
        server.bind(path.name)


def make_unreadable(path, good):
    path.write_bytes(good)
    path.chmod(0)


def holding(change):
    """Makes a file whose content is a change of a good one."""
    return lambda path, good: path.write_bytes(change(good))


def sound_of(good):
    return good[44:]


# How each is made, from a good file, and what must be said of it.
HOSTILE = {
    "truncated header": (holding(lambda good: good[:20]), "is no audio that can be read"),
    "truncated data": (holding(lambda good: good[:5000]), r"is truncated: 2478 frames found, expected the 4800"),
    "huge data": (holding(lambda good: clips.wav(sound_of(good), data_bytes=HUGE_BYTES)), "is truncated: 4800 frames found"),
    "huge format": (holding(lambda good: clips.wav(sound_of(good), format_bytes=HUGE_BYTES)), "is no audio that can be read"),
    "65535 channels": (holding(lambda good: clips.wav(sound_of(good), channels=65535)), "Too many channels"),
    "six channels": (holding(lambda good: clips.wav(sound_of(good), channels=6)), "has 6 channels; expected 1"),
    "rate of zero": (holding(lambda good: clips.wav(sound_of(good), rate_hz=0)), "is no audio that can be read"),
    "low rate": (holding(lambda good: clips.wav(sound_of(good), rate_hz=8000)), "sample rate 8000 Hz is not supported"),
    "unknown coding": (holding(lambda good: clips.wav(sound_of(good), tag=0x1234)), "is no audio that can be read"),
    "no data": (holding(lambda good: good[:36]), "is no audio that can be read.*data"),
    "no frames": (holding(lambda _: clips.wav(b"")), "holds no frames"),
    "empty": (holding(lambda _: b""), "is empty"),
    "text": (holding(lambda _: b"no sound\n" * 1000), "is no audio that can be read"),
    "folder": (make_folder, "is a folder"),
    "symbolic loop": (make_loop, "Too many levels of symbolic links"),
    "device": (make_device, "is a device"),
    "pipe with text": (make_pipe, "is no audio that can be read"),
    "socket": (make_socket, "cannot be read"),
    "unreadable": (make_unreadable, "Permission denied"),
    # A good file, of which the output's name is a folder's.
    "taken": (holding(lambda good: good), "is a folder; expected the name of a file"),
}


def file_of(kind):
    return f"{kind}.wav"


HOSTILE_FILES = {file_of(kind) for kind in HOSTILE}


def make_inputs(work, folder):
    """Writes all inputs. Returns the names in random order."""
    folder.mkdir()
    count = SHORT_FILES if work.is_short else FILES
    names = clips.make_clips(folder, count - len(HOSTILE), work.random)
    good = (folder / names[0]).read_bytes()
    for kind, (make, _) in HOSTILE.items():
        make(folder / file_of(kind), good)
    names += sorted(HOSTILE_FILES)
    work.random.shuffle(names)
    return names


def make_target(folder, name):
    """A folder for outputs, in which one of them cannot be made."""
    target = folder / name
    (target / file_of("taken")).mkdir(parents=True)
    return target


@contextlib.contextmanager
def text_in_pipe(path):
    """Writes text into the pipe as soon as somebody reads from it."""
    def write():
        with contextlib.suppress(BrokenPipeError), open(path, "wb") as pipe:
            pipe.write(b"no sound\n")

    writer = threading.Thread(target=write)
    writer.start()
    try:
        yield
    finally:
        # Where nobody has read, the writer still waits.
        with contextlib.suppress(OSError):
            os.close(os.open(path, os.O_RDONLY | os.O_NONBLOCK))
        writer.join()


def without_privileges():
    """What goes before a command so that permissions hold for the super user too."""
    if os.geteuid() != 0:
        return ()
    return ("setpriv", "--bounding-set", "-dac_override,-dac_read_search")


def named(errors):
    """The hostile files among the errors that have their own reason. An error is an input and a text."""
    right = set()
    for file, text in errors:
        kind = pathlib.Path(file).stem
        if kind in HOSTILE and re.search(HOSTILE[kind][1], text) and file_of(kind) in text:
            right.add(file_of(kind))
    return right


def judge_names(work, how, errors):
    right = named(errors)
    wrong = sorted(file for file, _ in errors if pathlib.Path(file).name not in right)
    missing = sorted(HOSTILE_FILES - right)
    work.check(f"{how}: files named with their reason, others named",
               f"{len(right)}, {len(wrong)}" + "".join(f"; {name}" for name in [*missing, *wrong][:5]),
               f"{len(HOSTILE)}, 0", right == HOSTILE_FILES and not wrong)


def judge_outputs(work, how, names, target, others=()):
    made = {path.name for path in target.iterdir() if path.is_file()} - set(others)
    good = set(names) - HOSTILE_FILES
    work.check(f"{how}: outputs, files that are none", f"{len(made & good)}, {len(made - good)}", f"{len(good)}, 0", made == good)


def render_with_jobs(work, names, folder, target, jobs):
    how = f"--jobs {jobs}"
    with text_in_pipe(folder / file_of("pipe with text")):
        batch = clips.Batch(work.program, folder, names, target, "--jobs", str(jobs), prefix=without_privileges(),
                            log=work.folder / f"jobs-{jobs}").wait()
    lines = [json.loads(line) for line in batch.text("out").splitlines()]
    work.check(f"{how}: exit status, lines of the report", f"{batch.status}, {len(lines)}", f"1, {len(names)}",
               batch.status == 1 and len(lines) == len(names))
    errors = [(line["input"], line["error"]) for line in lines if "error" in line]
    judge_names(work, how, errors)
    printed = [line.removeprefix("varno: ") for line in batch.text("err").splitlines()]
    work.check(f"{how}: lines on standard error, those of the report", f"{len(printed)}",
               f"{len(HOSTILE)}, the same", sorted(printed) == sorted(text for _, text in errors))
    judge_outputs(work, how, names, target)
    peak_mib = batch.peak_bytes / 2 ** 20
    work.check(f"{how}: most memory", f"{peak_mib:.0f} MiB", f"at most {MOST_MEMORY_MIB} MiB", peak_mib <= MOST_MEMORY_MIB)
    work.note(f"{how}: time", f"{batch.seconds:.1f} s, {1000 * batch.seconds / len(names):.2f} ms a file")


def render_with_dask(work, names, folder, target):
    with text_in_pipe(folder / file_of("pipe with text")):
        done = subprocess.run([*without_privileges(), PYTHON, "-B", str(DASK), "--program", str(work.program), str(folder),
                               str(target)], capture_output=True, text=True, check=False)
    last = done.stdout.splitlines()[-1] if done.stdout else done.stderr[-500:]
    expected = f"{len(names)} files, {len(HOSTILE)} failed"
    work.check("Dask: exit status, last line", f"{done.returncode}, {last}", f"1, {expected}",
               done.returncode == 1 and last == expected)
    lines = [json.loads(line) for line in (target / "report.jsonl").read_text().splitlines()]
    judge_names(work, "Dask", [(line["input"], line["error"]) for line in lines if "error" in line])
    judge_outputs(work, "Dask", names, target, ["report.jsonl"])


def is_same(name, one, other):
    return all((folder / name).is_file() for folder in (one, other)) and (one / name).read_bytes() == (other / name).read_bytes()


def differences(names, one, other):
    """How many of these files are not the same in both folders."""
    return sum(not is_same(name, one, other) for name in names)


def render_singles(work, good, folder, target):
    chosen = work.random.sample(good, SHORT_SINGLES if work.is_short else SINGLES)
    single = work.folder / "single"
    single.mkdir()
    for name in chosen:
        subprocess.run([work.program, "render", "--quiet", folder / name, single / name], check=True, stdout=subprocess.DEVNULL)
    different = differences(chosen, target, single)
    work.check("outputs that are not those of a render alone", f"{different} of {len(chosen)}", f"0 of {len(chosen)}",
               different == 0)


def run(work):
    folder = work.folder / "in"
    names = make_inputs(work, folder)
    good = [name for name in names if name not in HOSTILE_FILES]
    one, two = (make_target(work.folder, name) for name in ("one", "two"))
    for jobs, target in ((1, one), (2, two)):
        work.progress(f"--jobs {jobs}")
        render_with_jobs(work, names, folder, target, jobs)
    different = differences(good, one, two)
    work.check("outputs of two jobs that are not those of one", different, "0", different == 0)
    render_singles(work, good, folder, one)
    if not work.is_short:  # the tests of foreign hosts have a short one
        work.progress("Dask")
        dask = make_target(work.folder, "dask")
        render_with_dask(work, names, folder, dask)
        different = differences(good, one, dask)
        work.check("outputs of Dask that are not those of one job", different, "0", different == 0)
