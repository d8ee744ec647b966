"""Many files over several workers: Dask, GNU parallel and Slurm, as examples/batch and docs/batch.md use them, with two
workers on this machine. Their outputs are those of one process, to the byte, and nothing is rendered twice."""
import json
import os
import pathlib
import pwd
import socket
import subprocess

from hosts import PROGRAM, RATE_HZ, HostTest, Sound, make_music, write_wav

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples/batch"
FILES = 24
FRAMES = RATE_HZ // 10
SETTINGS = ("--set", "Hot=0.5", "--quality", "2x")
# The distribution's, whose package Dask is.
PYTHON = "/usr/bin/python3"


class BatchTest(HostTest):
    def setUp(self):
        super().setUp()
        music = make_music(1, 3).channels[0]
        self.source, self.target, self.expected = (self.folder / name for name in ("in", "out", "expected"))
        for folder in (self.source, self.target, self.expected):
            folder.mkdir()
        for number in range(FILES):
            channels = [music[number * FRAMES:(number + 1) * FRAMES]] * (1 + number % 2)
            write_wav(self.source / f"clip {number:02}.wav", Sound(RATE_HZ, channels), 16)
        self.run_program(PROGRAM, "render", "--quiet", "--out-dir", str(self.expected), *SETTINGS,
                         *sorted(map(str, self.source.iterdir())))

    def lines(self, *names):
        return [json.loads(line) for name in names for line in pathlib.Path(name).read_text().splitlines()]

    def check_outputs(self):
        """Each output is that of one process."""
        expected = sorted(self.expected.iterdir())
        self.assertEqual([path.name for path in expected], sorted(path.name for path in self.target.glob("*.wav")))
        for path in expected:
            self.assertEqual((self.target / path.name).read_bytes(), path.read_bytes(), path.name)

    def check_report(self, reports, times):
        """Each output is there so many times, and made of an input and settings."""
        names = [pathlib.Path(report["output"]).name for report in reports]
        self.assertEqual(sorted(names), sorted(path.name for path in self.source.iterdir() for _ in range(times)))
        for report in reports:
            self.assertFalse(report["skipped"])
            self.assertIn("settings", report["made_of"])


class DaskTest(BatchTest):
    def batch(self, *options, program=PROGRAM, status=0, settings=SETTINGS):
        return self.run_program(PYTHON, "-B", str(EXAMPLES / "dask-batch.py"), "--program", program, "--tasks", "6", *options,
                                str(self.source), str(self.target), "--", *settings, status=status)

    def records(self):
        return self.lines(*self.target.glob("records/*.jsonl"))

    def test_renders_all_and_the_second_time_what_has_changed(self):
        self.assertIn(f"{FILES} files, 0 failed", self.batch())
        self.check_outputs()
        self.check_report(self.records(), 1)
        self.check_report(self.lines(self.target / "report.jsonl"), 1)
        changed = self.source / "clip 07.wav"
        changed.write_bytes((self.source / "clip 09.wav").read_bytes())
        self.batch()
        self.assertEqual(len(self.records()), FILES + 1)
        self.check_report(self.lines(self.target / "report.jsonl"), 1)
        self.assertEqual((self.target / "clip 07.wav").read_bytes(), (self.target / "clip 09.wav").read_bytes())

    def test_a_worker_that_is_killed_loses_nothing(self):
        # The first process renders all of its files but one; then its worker is killed.
        program = self.folder / "varno"
        program.write_text(f"#!/bin/bash\nif mkdir '{self.folder}/first' 2>/dev/null; then\n"
                           f"  '{PROGRAM}' \"${{@:1:$#-1}}\" && kill -KILL $PPID && exec sleep 0\nfi\nexec '{PROGRAM}' \"$@\"\n")
        program.chmod(0o755)
        printed = self.batch(program=str(program))
        self.assertIn(f"{FILES} files, 0 failed", printed)
        self.assertIn("Restarting worker", printed)
        self.check_outputs()
        self.check_report(self.records(), 1)  # nothing was rendered again
        self.check_report(self.lines(self.target / "report.jsonl"), 1)

    def test_a_file_that_fails_is_in_the_report(self):
        (self.source / "clip 03.wav").write_text("no sound")
        self.assertIn(f"{FILES} files, 1 failed", self.batch(status=1))
        reports = self.lines(self.target / "report.jsonl")
        self.assertEqual(len(reports), FILES)
        self.assertEqual([pathlib.Path(report["input"]).name for report in reports if "error" in report], ["clip 03.wav"])

    def test_wrong_options_end_it(self):
        self.assertIn('did you mean "Hot"?', self.batch(settings=("--set", "Hott=1"), status=1))
        self.assertFalse((self.target / "report.jsonl").exists())


class ParallelTest(BatchTest):
    def batch(self):
        return self.run_program("bash", "-c", "printf '%s\\0' in/*.wav | parallel --null --max-args 5 --jobs 2 "
                                f"'{PROGRAM}' render --json --skip-existing --record out/report.jsonl --out-dir out {' '.join(SETTINGS)}",
                                environment={"HOME": str(self.folder)})

    def test_renders_all_and_the_second_time_nothing(self):
        self.assertEqual(len(self.batch().splitlines()), FILES)
        self.check_outputs()
        self.check_report(self.lines(self.target / "report.jsonl"), 1)
        self.assertEqual({json.loads(line)["skipped"] for line in self.batch().splitlines()}, {True})
        self.assertEqual(len(self.lines(self.target / "report.jsonl")), FILES)


class SlurmTest(BatchTest):
    """A controller, a node with two processors and the authentication of both, of the test's own and its user's."""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o755)
        for name in ("state", "spool"):
            (self.folder / name).mkdir()
        key = self.folder / "munge.key"
        key.write_bytes(os.urandom(1024))
        key.chmod(0o600)
        self.start("munged", "--foreground", "--force", f"--key-file={key}", f"--socket={self.folder}/munge.socket",
                   f"--pid-file={self.folder}/munged.pid", f"--seed-file={self.folder}/munge.seed",
                   f"--log-file={self.folder}/munge-file.log", log="munged.log")
        self.eventually((self.folder / "munge.socket").exists, "the authentication")
        name = socket.gethostname().split(".")[0]
        user = pwd.getpwuid(os.geteuid()).pw_name
        ports = self.free_ports(2)
        (self.folder / "slurm.conf").write_text(f"""ClusterName=batch
SlurmctldHost={name}(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
AuthInfo=socket={self.folder}/munge.socket
SlurmctldPort={ports[0]}
SlurmdPort={ports[1]}
StateSaveLocation={self.folder}/state
SlurmdSpoolDir={self.folder}/spool
SlurmctldPidFile={self.folder}/slurmctld.pid
SlurmdPidFile={self.folder}/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SwitchType=switch/none
SchedulerParameters=batch_sched_delay=0,sched_min_interval=0
ReturnToService=2
NodeName={name} NodeAddr=127.0.0.1 CPUs=2
PartitionName=local Nodes=ALL Default=YES State=UP
""")
        self.slurm = {"SLURM_CONF": self.path("slurm.conf"), "VARNO": PROGRAM}
        self.start("slurmctld", "-D", environment=self.slurm, log="slurmctld.log")
        self.start("slurmd", "-D", environment=self.slurm, log="slurmd.log")
        self.eventually(lambda: "idle" in self.asked("sinfo", "--noheader"), "the node")

    @staticmethod
    def free_ports(count):
        sockets = [socket.socket() for _ in range(count)]
        for each in sockets:
            each.bind(("127.0.0.1", 0))
        ports = [each.getsockname()[1] for each in sockets]
        for each in sockets:
            each.close()
        return ports

    def asked(self, *command):
        return subprocess.run(command, env={**os.environ, **self.slurm}, capture_output=True, text=True, check=False).stdout

    def batch(self):
        self.run_program("sbatch", "--array=0-3", str(EXAMPLES / "slurm-batch.sh"), self.path("list"), str(self.target), *SETTINGS,
                         environment=self.slurm)
        self.eventually(lambda: not self.asked("squeue", "--noheader").strip(), "the end of the array")
        return self.lines(*self.target.glob("records/*.jsonl"))

    def test_renders_all_and_the_second_time_what_is_missing(self):
        (self.folder / "list").write_text("".join(f"{path}\n" for path in sorted(self.source.iterdir())))
        self.check_report(self.batch(), 1)
        self.check_outputs()
        (self.target / "clip 05.wav").unlink()
        self.assertEqual(len(self.batch()), FILES + 1)
        self.check_outputs()
