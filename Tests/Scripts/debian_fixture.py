"""A project whose scripts make a release of Debian in a folder, with commands that only record what they would do."""
from fixture import FixtureProject

# Makes what the last arguments name, as the program of that name does, and records its call.
MMDEBSTRAP = """
echo "mmdebstrap ${{@: -3}}" >>"{calls}"
folder=${{@: -2:1}}
[[ ! -e $folder ]] || exit 9
mkdir -p "$folder/proc" "$folder/dev" "$folder/var/cache/apt/archives"
"""

# Records the command that would run in the release, and its status is that of the file of the command's last word.
UNSHARE = """
echo "in ${{@: -3:1}} with ${{@: -2:1}}: ${{@: -1}}" >>"{calls}"
status=0
[[ ${{@: -1}} != *"$(cat "{broken}")" ]] || status=3
exit $status
"""


class DebianProject(FixtureProject):
    script_name = ""  # in Scripts
    in_the_release = ""  # what the command in the release does besides being recorded

    def setUp(self):
        super().setUp()
        self.script = self.root / "Scripts" / self.script_name
        self.calls, self.broken, self.into = self.folder / "calls", self.folder / "broken", self.folder / "into"
        self.broken.write_text("nothing\n")
        self.command("mmdebstrap", MMDEBSTRAP.format(calls=self.calls))
        self.command("unshare", self.in_the_release + UNSHARE.format(calls=self.calls, broken=self.broken))
        self.command("apt-get", "echo mirror\n")

    def make(self, *arguments):
        """The script's result, and the calls that it made."""
        # Nothing here needs root, since nothing is mounted.
        system = self.root / "Scripts/debian-system.sh"
        system.write_text(system.read_text().replace("((EUID == 0))", "true"))
        self.calls.write_text("")
        done = self.run_script(*arguments, script=self.script)
        return done, self.calls.read_text().splitlines()
