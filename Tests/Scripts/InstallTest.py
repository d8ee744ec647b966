"""What is missing is installed with apt, with the rights that this needs, or named."""
import os
import platform
import subprocess
import unittest

from fixture import FixtureProject

PACKAGES = """
# Why it is listed.
[program]
alpha
beta-dev

[test]
gamma

[aarch64]
cross

[libcxx]
other-library

[helgrind]
judge

[windows]
other-system

[hosts]
delta-host
"""

DPKG_QUERY = """
for name in "$@"; do
    case $name in -*|'$'*) continue ;; esac
    if grep -qx "$name" "{installed}"; then printf '%s installed\\n' "$name"; else found=no; fi
done
[[ -z ${{found-}} ]]
"""

# Records each call; fails as many times as the file states.
APT_GET = """
echo "$*" | sed 's/^-q -o [^ ]* //' >>"{calls}"
[[ " $* " != *" install "* ]] || {{
    [[ $DEBIAN_FRONTEND == noninteractive ]] || exit 7
    left=$(cat "{failures}")
    if ((left > 0)); then
        echo $((left - 1)) >"{failures}"
        echo "Reading package lists..."
        echo "E: Unable to fetch some archives" >&2
        exit 100
    fi
    printf '%s\\n' "$@" >>"{installed}"
}}
"""

# Changes to another user, which only root may do.
AS_NOBODY = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]


class InstallTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.write("Scripts/packages.txt", PACKAGES)
        self.installed, self.calls, self.failures = (self.folder / name for name in ("installed", "calls", "failures"))
        self.installed.write_text("beta-dev\n")
        self.calls.write_text("")
        self.failures.write_text("0\n")
        names = {"installed": self.installed, "calls": self.calls, "failures": self.failures}
        self.command("dpkg-query", DPKG_QUERY.format(**names))
        self.command("apt-get", APT_GET.format(**names))
        # The machine's own services are not touched.
        self.systemctl("")
        self.command("sudo", f'echo "sudo $*" >>"{self.calls}"\n[[ $1 == -v ]] || exec "$@"\n')

    def systemctl(self, end):
        self.command("systemctl", f'echo "systemctl $*" >>"{self.calls}"\n{end}\n')

    def apt_calls(self):
        return [call for call in self.calls.read_text().splitlines() if not call.startswith(("sudo", "update", "systemctl"))]

    def test_only_the_missing_packages_of_the_purpose(self):
        done = self.run_script("render")
        self.assertEqual(done.returncode, 3, done.stderr)
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha"])
        self.assertIn("run: installing alpha\n", done.stderr)
        self.assertNotIn("Reading package lists", done.stdout + done.stderr)

    def test_the_tests_need_more(self):
        self.run_script("test", "text")
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha gamma"])

    def test_another_processor_needs_more_again(self):
        self.run_script("test", "aarch64")
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha cross gamma"])

    def test_another_standard_library_needs_more_again(self):
        self.run_script("test", "libcxx")
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha gamma other-library"])

    def test_the_judge_of_threads_is_installed_to_be_run_alone(self):
        self.run_script("test", "helgrind")
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha gamma judge"])

    def test_another_system_needs_more_again_on_the_processor_that_runs_its_programs(self):
        for processor, packages in (("x86_64", "alpha gamma other-system"), ("aarch64", "alpha gamma")):
            self.calls.write_text("")
            self.installed.write_text("beta-dev\n")
            self.command("uname", f"echo {processor}\n")
            self.run_script("test", "windows")
            self.assertEqual(self.apt_calls(), [f"install -y --no-install-recommends {packages}"])

    def test_foreign_hosts_are_installed_to_be_tested_alone(self):
        self.run_script("test", "hosts")
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha delta-host gamma"])

    def test_services_of_new_packages_stay_off(self):
        self.write("Scripts/packages.txt", PACKAGES + "munge\nslurmd\n")
        self.installed.write_text("alpha\nbeta-dev\ngamma\nmunge\n")
        done = self.run_script("test", "hosts")
        calls = [call for call in self.calls.read_text().splitlines() if not call.startswith("sudo")]
        self.assertEqual(calls[0], "systemctl mask slurmd.service", "before they are installed, and those that are there keep theirs")
        self.assertEqual(calls[-1], "install -y --no-install-recommends delta-host slurmd")
        self.assertIn("run: these services stay off until systemctl unmask: slurmd.service\n", done.stderr)

    def test_installs_nothing_whose_service_would_start(self):
        self.write("Scripts/packages.txt", PACKAGES + "slurmd\n")
        self.systemctl("echo no bus >&2\nexit 1")
        done = self.run_script("test", "hosts")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("systemctl mask slurmd.service\nno bus\n", done.stderr)
        self.assertEqual(self.apt_calls(), [])

    def test_what_is_for_one_release_is_installed_there_alone(self):
        this = platform.freedesktop_os_release()
        here = f"{this['ID']}-{this['VERSION_ID']}"
        self.write("Scripts/packages.txt", PACKAGES + f"\n[program {here}]\nhere\n[program {here}1]\nelsewhere\n[test {here}]\ntested\n")
        self.run_script("render")
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha here"])

    def test_another_release_needs_what_makes_it(self):
        self.write("Scripts/packages.txt", PACKAGES + "\n[release]\nmaker\n")
        self.write("Scripts/make-debian", "#!/bin/sh\necho made $1 in $2\n")
        (self.root / "Scripts/make-debian").chmod(0o755)
        for name in ("debian-12", "debian-13"):
            self.assertEqual(self.last_line(self.run_script("test", name)), "1 passed, 0 failed")
            made = (self.root / f"build/checks/{name}.log").read_text()
            self.assertEqual(made, f"made {name[-2:]} in {self.root}/build\n")
        self.assertEqual(self.apt_calls(), ["install -y --no-install-recommends alpha gamma maker"])

    def test_nothing_missing_nothing_printed(self):
        self.installed.write_text("alpha\nbeta-dev\n")
        self.assertNotIn("install", self.run_script("render").stderr)
        self.assertEqual(self.calls.read_text(), "")

    def test_refuses_on_request(self):
        done = self.run_script("--no-install", "render")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertEqual(done.stderr, "run: these packages are missing (and --no-install is given): alpha\n")
        self.assertEqual(self.calls.read_text(), "")

    def test_refusal_needs_no_package_when_none_is_missing(self):
        self.installed.write_text("alpha\nbeta-dev\n")
        self.assertEqual(self.run_script("--no-install", "render").returncode, 3)

    def test_tries_again_with_fresh_lists(self):
        self.failures.write_text("1\n")
        done = self.run_script("render")
        self.assertEqual(done.returncode, 3, done.stderr)
        calls = [call for call in self.calls.read_text().splitlines() if not call.startswith("sudo")]
        self.assertEqual(calls[-3:], ["install -y --no-install-recommends alpha", "update",
                                      "install -y --no-install-recommends alpha"])

    def test_reports_what_failed_and_why(self):
        self.failures.write_text("2\n")
        done = self.run_script("render")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertRegex(done.stderr, r"run: failed: .*apt-get .*install -y --no-install-recommends alpha\n"
                                      r"E: Unable to fetch some archives\n")

    def test_packages_that_changed_are_looked_at_again(self):
        self.run_script("render")
        self.write("Scripts/packages.txt", PACKAGES.replace("alpha", "alpha\ndelta"))
        self.run_script("render")
        self.assertEqual(self.apt_calls()[-1], "install -y --no-install-recommends delta")

    def as_user(self, *arguments):
        """Calls ./run as somebody who is not root."""
        if os.geteuid() != 0:
            return self.run_script(*arguments)
        subprocess.run(["chown", "-R", "65534:65534", self.folder], check=True)
        return self.run_script(*arguments, prefix=[*AS_NOBODY, "env", f"HOME={self.folder}"])

    def test_a_user_goes_through_sudo(self):
        done = self.as_user("render")
        self.assertEqual(done.returncode, 3, done.stderr)
        self.assertIn("sudo -v\n", self.calls.read_text())
        self.assertRegex(self.calls.read_text(), r"sudo env DEBIAN_FRONTEND=noninteractive apt-get .* install ")

    def test_a_user_whom_sudo_refuses_sees_the_command(self):
        self.command("sudo", "exit 1\n")
        done = self.as_user("render")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.splitlines()[-1], "run: sudo refused; as root: apt-get install alpha")

    def test_root_needs_no_sudo(self):
        self.run_script("render")
        self.assertEqual("sudo" in self.calls.read_text(), os.geteuid() != 0)


if __name__ == "__main__":
    unittest.main()
