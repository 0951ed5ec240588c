# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""run.sh, test.sh and the installing of packages, each on a copy of the scripts and with stand-ins
first in the search path for every program that would install, build or show something."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))

# What the scripts may call of the system's own.
SYSTEM_PROGRAMS = ["bash", "cat", "chmod", "cp", "dirname", "basename", "env", "grep", "head", "mkdir",
                   "nproc", "od", "renice", "sed", "sleep", "tail", "tee", "tr"]

# Every stand-in writes one line into the record: its name and its arguments.
RECORD = 'echo "$(basename "$0") $*" >>"$RECORD"\n'

STAND_INS = {
    "id": "echo 0",
    "apt-get": RECORD,
    "sudo": RECORD + 'while [[ $1 == -* ]]; do shift; done; exec "$@"',
    # Knows the packages of the file $INSTALLED, as dpkg would.
    "dpkg-query": """
        for package in "${@:3}"; do grep " $package\\$" "$INSTALLED" || known=no; done
        [[ ${known:-} != no ]]""",
    # "Builds" programs that record how they were started.
    "cmake": RECORD + """
        if [[ ${CMAKE_FAILS:-} == "$*" ]]; then exit 1; fi
        if [[ $1 == --preset ]]; then mkdir -p "build/$2/bin"; touch "build/$2/CMakeCache.txt"; fi
        cp "$STAND_INS/panel" build/release/bin/ptz-panel 2>/dev/null
        cp "$STAND_INS/panel" build/release/bin/virtual-camera 2>/dev/null""",
    "panel": RECORD + 'exit "${PANEL_EXIT:-0}"',
    "Xvfb": RECORD + "echo 42 >&3; exec sleep 1000",
    "openbox": "exec sleep 1000",
    "picom": "exec sleep 1000",
    # Takes its time to list the tests, so that a reader that has left would be noticed.
    "ctest": """
        preset=$2
        if [[ " $* " == *" -N "* ]]; then
            echo "  Test #1: soak"
            sleep 0.2
            echo "  Test #2: some_test"
            exit
        fi
        """ + RECORD + """
        if [[ " $* " == *" -L once"* ]]; then name=soak preset=once; else name=some_test; fi
        tried() { echo "1/1 Test #1: $name .........$1    0.01 sec"; }
        case "$preset" in
            "${CTEST_FAILS:-}") tried "***Failed"; tried "***Failed"; exit 8 ;;
            "${CTEST_RETRIES:-}") tried "***Timeout"; tried "   Passed" ;;
            "${CTEST_SKIPS:-}") tried "***Skipped" ;;
            *) tried "   Passed" ;;
        esac""",
}
FUZZING = "fuzzing (tests/fuzz/run.sh); the seeds and what was found are replayed"
TIDY = "clang-tidy on what does not differ from main (packaging/tidy.sh --all)"
SYSTEM_PROGRAMS += ["touch", "mktemp", "mkfifo", "rm"]


class Scripts(unittest.TestCase):
    def setUp(self):
        work = tempfile.TemporaryDirectory(prefix="a place with spaces ")
        self.addCleanup(work.cleanup)
        self.root = os.path.join(work.name, "project")
        self.path = os.path.join(work.name, "path")
        self.record = os.path.join(work.name, "record")
        self.installed = os.path.join(work.name, "installed")
        os.makedirs(self.root)
        os.mkdir(self.path)
        for name in "run.sh", "test.sh":
            shutil.copy(os.path.join(ROOT, name), self.root)
        os.mkdir(os.path.join(self.root, "tests"))
        shutil.copy(os.path.join(ROOT, "tests", "summary.py"), os.path.join(self.root, "tests"))
        shutil.copytree(os.path.join(ROOT, "packaging"), os.path.join(self.root, "packaging"))
        for name in SYSTEM_PROGRAMS:
            os.symlink(shutil.which(name, path="/usr/bin:/bin"), os.path.join(self.path, name))
        for name, text in STAND_INS.items():
            self.stand_in(name, text)
        open(self.record, "w").close()
        self.install(self.packages())

    def stand_in(self, name, text):
        file = os.path.join(self.path, name)
        with open(file, "w") as script:
            script.write("#!/usr/bin/env bash\n" + text + "\n")
        os.chmod(file, 0o755)

    def without(self, *names):
        for name in names:
            os.remove(os.path.join(self.path, name))

    def packages(self, *purposes):
        """The packages of the list, of these purposes or of all."""
        found = []
        with open(os.path.join(ROOT, "packaging", "debian-packages.txt")) as lines:
            for line in lines:
                if line.strip() and not line.startswith("#"):
                    purpose, package = line.split()
                    if not purposes or purpose in purposes:
                        found.append(package)
        return found

    def install(self, packages, status="installed"):
        with open(self.installed, "w") as file:
            file.writelines(f"{status} {package}\n" for package in packages)

    def run_script(self, *command, beneath=(), **environment):
        """Runs a script of the project from another folder; DISPLAY is set unless it is None."""
        variables = {"PATH": self.path, "RECORD": self.record, "INSTALLED": self.installed,
                     "STAND_INS": self.path, "DISPLAY": ":42", "TMPDIR": os.path.dirname(self.root),
                     "LC_ALL": "C.UTF-8"}
        variables.update(environment)
        variables = {name: value for name, value in variables.items() if value is not None}
        return subprocess.run(
            [*beneath, os.path.join(self.root, command[0]), *command[1:]], env=variables, cwd="/",
            stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False, timeout=60)

    def recorded(self, program=""):
        with open(self.record) as lines:
            return [line.rstrip("\n") for line in lines if line.startswith(program)]

    def assert_one_line(self, text, *parts):
        self.assertEqual(len(text.splitlines()), 1, text)
        for part in parts:
            self.assertIn(part, text)


class Options(Scripts):
    def test_a_wrong_option_gets_one_line_and_exit_code_2(self):
        for script, *options, part in [
            ("run.sh", "--frobnicate", "--frobnicate"),
            ("run.sh", "panel", "panel"),
            ("run.sh", "--cameras", "needs a number"),
            ("run.sh", "--cameras", "many", "many"),
            ("run.sh", "--cameras=", "needs a number"),
            ("run.sh", "--cameras", "-1", "-1"),
            ("run.sh", "--cameras", "0", "from 1 to 32"),
            ("run.sh", "--cameras", "200", "from 1 to 32"),
            ("run.sh", "--real", "--tour", "exclude"),
            ("run.sh", "--real", "--cameras", "2", "--cameras"),
            ("test.sh", "--frobnicate", "--frobnicate"),
            ("test.sh", "--filter", "--filter"),
            ("packaging/lint.sh", "--frobnicate", "--frobnicate"),
            ("packaging/in_chroot.sh", "trixie", "expected a release and a command"),
        ]:
            with self.subTest(script, options=options):
                result = self.run_script(script, *options)
                self.assertEqual(result.returncode, 2)
                self.assertEqual(result.stdout, "")
                self.assert_one_line(result.stderr, part)
                self.assertEqual(self.recorded(), [])

    def test_help_names_every_option_and_does_nothing(self):
        for script, options in {"run.sh": ["--cameras", "--real", "--tour", "--help"],
                                "test.sh": ["--filter", "--no-sanitize", "--help"]}.items():
            with self.subTest(script):
                result = self.run_script(script, "--help")
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                for option in options:
                    self.assertIn(option, result.stdout)
                self.assertEqual(self.recorded(), [])


class Installing(Scripts):
    SCRIPT = "packaging/install_packages.sh"

    def test_when_nothing_is_missing_no_package_manager_is_called(self):
        result = self.run_script(self.SCRIPT, "build", "virtual-camera", "virtual-display", "tour", "test")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assertEqual(self.recorded(), [])

    def test_exactly_what_is_missing_is_installed(self):
        self.install([name for name in self.packages() if name not in ("cmake", "ninja-build")])
        result = self.run_script(self.SCRIPT, "build")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        update, install = self.recorded()
        self.assertTrue(update.startswith("apt-get ") and update.endswith(" update"), update)
        self.assertTrue(install.endswith("install --no-install-recommends cmake ninja-build"), install)

    def test_what_other_purposes_need_is_left_alone(self):
        self.install(self.packages("build"))
        self.assertEqual(self.run_script(self.SCRIPT, "build").returncode, 0)
        self.assertEqual(self.recorded(), [])

    def test_a_removed_package_whose_settings_are_still_there_is_missing(self):
        self.install(self.packages(), status="config-files")
        self.assertEqual(self.run_script(self.SCRIPT, "virtual-camera").returncode, 0)
        self.assertTrue(self.recorded()[-1].endswith(" ".join(self.packages("virtual-camera"))))

    def test_a_user_other_than_root_installs_through_sudo(self):
        self.stand_in("id", "echo 1000")
        self.install([])
        self.assertEqual(self.run_script(self.SCRIPT, "build").returncode, 0)
        self.assertEqual(len(self.recorded("sudo --non-interactive")), 2)
        self.assertEqual(len(self.recorded("apt-get")), 2)

    def test_root_needs_no_sudo(self):
        self.install([])
        self.without("sudo")
        self.assertEqual(self.run_script(self.SCRIPT, "build").returncode, 0)
        self.assertEqual(len(self.recorded("apt-get")), 2)

    def test_without_sudo_a_user_is_told_what_root_has_to_do(self):
        self.stand_in("id", "echo 1000")
        self.without("sudo")
        self.install(self.packages("virtual-camera"))
        result = self.run_script(self.SCRIPT, "build", "virtual-camera")
        self.assertEqual(result.returncode, 1)
        self.assert_one_line(result.stderr, "apt-get install " + " ".join(self.packages("build")))
        self.assertEqual(self.recorded("apt-get"), [])

    def test_when_apt_fails_its_last_words_and_the_log_are_shown(self):
        self.stand_in("apt-get", 'echo "E: no such package" >&2; exit 100')
        self.install([])
        result = self.run_script(self.SCRIPT, "build")
        self.assertEqual(result.returncode, 1)
        self.assertIn("E: no such package", result.stderr)
        log = re.search(r"could not be installed; .* (/.*)$", result.stderr.splitlines()[-1])[1]
        with open(log) as text:
            self.assertIn("E: no such package", text.read())

    def test_without_apt_a_list_says_what_is_needed(self):
        for missing in "apt-get", "dpkg-query":
            self.without(missing)
            for script, purposes in {
                "run.sh": ["build", "virtual-camera"],
                "test.sh": ["build", "virtual-camera", "virtual-display", "tour", "test"],
            }.items():
                with self.subTest(script, missing=missing):
                    result = self.run_script(script)
                    self.assertEqual(result.returncode, 1)
                    self.assertEqual(result.stdout, "")
                    lines = result.stderr.splitlines()
                    self.assertIn("no apt", lines[0])
                    self.assertEqual(lines[1:], [
                        f"  {purpose}: " + " ".join(self.packages(purpose))
                        for purpose in purposes])
                    self.assertEqual(self.recorded(), [])

    def test_no_package_is_listed_twice(self):
        packages = self.packages()
        self.assertEqual(sorted(packages), sorted(set(packages)))

    def test_a_purpose_that_is_not_in_the_list_is_an_error(self):
        result = self.run_script(self.SCRIPT, "moon-landing")
        self.assertEqual(result.returncode, 1)
        self.assert_one_line(result.stderr, "moon-landing")


class Running(Scripts):
    def bin(self, name):
        return os.path.join(self.root, "build", "release", "bin", name)

    def test_the_panel_starts_on_three_virtual_cameras_and_their_log_is_named(self):
        result = self.run_script("run.sh")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        log = os.path.join(self.root, "build", "requests.log")
        self.assert_one_line(result.stdout, f"tail -f '{log}'")
        self.assertTrue(os.path.exists(log))
        self.assertEqual(self.recorded("virtual-camera"), [
            f"virtual-camera --view --cameras 3 --log {log} -- {self.bin('ptz-panel')}"])

    def test_the_number_of_cameras_is_passed_on(self):
        for options in ["--cameras", "5"], ["--cameras=5"]:
            with self.subTest(options):
                self.run_script("run.sh", *options)
                self.assertIn(" --cameras 5 ", self.recorded("virtual-camera")[-1])

    def test_the_exit_code_is_the_panels(self):
        for options in [], ["--real"]:
            with self.subTest(options):
                result = self.run_script("run.sh", *options, PANEL_EXIT="7")
                self.assertEqual(result.returncode, 7)
        result = self.run_script("run.sh", "--real", PANEL_EXIT="7", DISPLAY=None)
        self.assertEqual(result.returncode, 7)

    def test_real_cameras_need_no_virtual_ones(self):
        self.install(self.packages("build"))
        result = self.run_script("run.sh", "--real")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(self.recorded("ptz-panel"), ["ptz-panel "])
        self.assertEqual(self.recorded("virtual-camera") + self.recorded("apt-get"), [])
        self.assertTrue(self.recorded("cmake --build")[0].endswith(" --target ptz-panel"))

    def test_only_the_programs_are_built_and_no_test_packages_needed(self):
        self.install(self.packages("build", "virtual-camera"))
        self.run_script("run.sh")
        self.run_script("run.sh")
        self.assertEqual(self.recorded("apt-get"), [])
        first, _, second, _ = self.recorded("cmake")
        self.assertEqual(first, "cmake --preset release -DBUILD_TESTING=OFF")
        # A tree that is there may have been made for the tests; it stays so.
        self.assertEqual(second, "cmake --preset release")

    def test_a_failed_build_ends_with_one_line(self):
        for failing in "--preset release -DBUILD_TESTING=OFF", "--build --preset release --target ptz-panel":
            with self.subTest(failing):
                shutil.rmtree(os.path.join(self.root, "build"), ignore_errors=True)
                result = self.run_script("run.sh", "--real", CMAKE_FAILS=failing)
                self.assertEqual(result.returncode, 1)
                self.assert_one_line(result.stderr, "could not be built")
                self.assertEqual(self.recorded("ptz-panel"), [])

    def test_without_a_display_one_is_started_and_named(self):
        self.install(self.packages("build", "virtual-display"))
        result = self.run_script("run.sh", "--real", DISPLAY=None)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("There is no display", result.stdout)
        self.assertIn("The virtual display is :42.", result.stdout)
        self.assertEqual(self.recorded("apt-get"), [])
        self.assertEqual(len(self.recorded("Xvfb")), 1)

    def test_a_virtual_display_that_does_not_start_is_said_in_one_line(self):
        self.stand_in("Xvfb", 'echo "cannot open a socket" >&2; exit 1')
        result = self.run_script("run.sh", "--real", DISPLAY=None)
        self.assertEqual(result.returncode, 1)
        self.assert_one_line(result.stderr, "did not start", "cannot open a socket")
        self.assertEqual(self.recorded("ptz-panel"), [])


class Touring(Scripts):
    def setUp(self):
        super().setUp()
        self.tour = os.path.join(self.root, "tests", "end_to_end", "take_tour.py")
        os.makedirs(os.path.dirname(self.tour))
        # By its path a stand-in may stand anywhere.
        self.stand_in(self.tour, RECORD + 'exit "${PANEL_EXIT:-0}"')

    def assert_toured(self, result):
        report = os.path.join(self.root, "build", "tour")
        self.assertEqual((result.returncode, result.stderr), (4, ""))
        self.assertIn(report, result.stdout)
        folder = os.path.join(self.root, "build", "release", "bin")
        self.assertEqual(self.recorded("take_tour.py"), [
            f"take_tour.py --bin {folder} --report {report} --view"])
        self.assertEqual(self.recorded("virtual-camera"), [])

    def test_the_tour_is_played_on_demand_and_its_exit_code_comes_back(self):
        self.assert_toured(self.run_script("run.sh", "--tour", PANEL_EXIT="4"))

    def test_without_a_display_the_tour_is_played(self):
        result = self.run_script("run.sh", PANEL_EXIT="4", DISPLAY=None)
        self.assertIn("There is no display", result.stdout)
        self.assert_toured(result)

    def test_what_the_tour_needs_is_installed(self):
        self.install(self.packages("build", "virtual-camera"))
        self.run_script("run.sh", "--tour")
        self.assertTrue(self.recorded("apt-get")[-1].endswith(
            " ".join(self.packages("tour") + self.packages("virtual-display"))))


@unittest.skipUnless("VIRTUAL_CAMERA" in os.environ, "needs the built virtual-camera")
class RealCameras(Scripts):
    """run.sh --real, with virtual cameras for real ones."""

    def run_real(self, *options):
        beneath = [os.environ["VIRTUAL_CAMERA"], *options, "--"]
        # The search path of preloaded libraries knows no spaces.
        result = self.run_script("run.sh", "--real", beneath=beneath, TMPDIR=tempfile.gettempdir())
        self.assertEqual((result.returncode, self.recorded("ptz-panel")), (0, ["ptz-panel "]))
        return result.stderr

    def test_a_camera_that_may_be_opened_needs_no_words(self):
        self.assertEqual(self.run_real("--cameras", "2"), "")

    def test_a_camera_that_may_not_be_opened_gets_one_line_with_the_commands(self):
        for number, node in (1, "/dev/bus/usb/001/002"), (2, "/dev/bus/usb/001/003"):
            with self.subTest(node):
                open(self.record, "w").close()
                said = self.run_real("--cameras", "2", "--at-start", f"refuse-open {number} EACCES")
                self.assert_one_line(said, node, "udevadm control --reload", "udevadm trigger")
                rule = re.search(r"install -m 644 '([^']*)' /etc/udev/rules.d/ ", said)[1]
                self.assertTrue(os.path.samefile(os.path.dirname(rule),
                                                 os.path.join(self.root, "packaging")))
                self.assertTrue(os.path.exists(rule))

    def test_other_devices_that_may_not_be_opened_are_nobodys_business(self):
        for device in "other-camera", "storage":
            with self.subTest(device):
                open(self.record, "w").close()
                self.assertEqual(
                    self.run_real("--devices", device, "--at-start", "refuse-open 1 EACCES"), "")


class Testing(Scripts):
    def last_lines(self, count, *options, **environment):
        result = self.run_script("test.sh", *options, **environment)
        return result.returncode, result.stdout.splitlines()[-count:], result.stderr

    def test_the_last_lines_sum_up_every_run(self):
        self.assertEqual(self.last_lines(8), (0, [
            "once: 1 of 1 tests passed", "release: 1 of 1 tests passed",
            "sanitize: 1 of 1 tests passed", "Failed: none", "Passed at the second try only: none",
            "Not run (0 of 2): none", f"Left out: {TIDY}", f"Left out: {FUZZING}"], ""))

    def test_a_failure_in_any_run_fails_the_whole_and_stands_last(self):
        for name, test in {"once": "soak", "release": "some_test", "sanitize": "some_test"}.items():
            with self.subTest(name):
                code, lines, _ = self.last_lines(6, CTEST_FAILS=name)
                self.assertEqual(code, 1)
                self.assertEqual(lines[0], f"Failed: {test} ({name})")
                self.assertTrue(lines[-1].startswith(f"FAILED: {name} summary;"), lines)

    def test_a_second_try_is_named(self):
        for name, test in {"once": "soak", "release": "some_test", "sanitize": "some_test"}.items():
            with self.subTest(name):
                code, lines, _ = self.last_lines(5, CTEST_RETRIES=name)
                self.assertEqual((code, lines[:2]), (
                    0, ["Failed: none", f"Passed at the second try only: {test} ({name})"]))

    def test_what_no_run_ran_is_named(self):
        self.assertEqual(self.last_lines(3, CTEST_SKIPS="once")[1][0], "Not run (1 of 2): soak")

    def test_what_the_options_leave_out_is_said(self):
        self.assertEqual(self.last_lines(2, "--no-sanitize", "--filter", "some")[1], [
            "Left out: the sanitizers (--no-sanitize)",
            "Left out: tests whose names do not match 'some' (--filter)"])

    def test_a_failed_build_fails_the_run(self):
        release = "--build --preset release --target tested_programs"
        self.assertEqual(self.last_lines(1, CMAKE_FAILS=release)[0], 1)
        code, lines, _ = self.last_lines(1, CMAKE_FAILS="--build --preset sanitize")
        self.assertEqual(code, 1)
        self.assertTrue(lines[0].startswith("FAILED: sanitize;"), lines)

    def test_programs_are_tested_as_shipped_and_units_with_the_sanitizers(self):
        self.run_script("test.sh")
        release, = [call for call in self.recorded("ctest --preset release ") if "-LE" in call]
        sanitize, = self.recorded("ctest --preset sanitize ")
        self.assertTrue(release.endswith(" -LE ^(once|unit)$"))
        self.assertTrue(sanitize.endswith(" -LE release-only"))

    def test_what_is_randomised_is_run_once(self):
        self.run_script("test.sh")
        for call in self.recorded("ctest"):
            self.assertNotEqual(call.endswith(" -L once"), " --repeat until-pass:2 " in call)

    def test_without_the_sanitizers_everything_is_tested_as_shipped(self):
        self.run_script("test.sh", "--no-sanitize")
        self.assertEqual(self.recorded("cmake --preset sanitize"), [])
        self.assertIn("cmake --build --preset release", self.recorded())
        self.assertEqual(len(self.recorded("ctest")), 2)
        self.assertTrue(any(call.endswith(" -LE ^once$") for call in self.recorded("ctest")))

    def test_the_filter_goes_to_every_run(self):
        for options in ["--filter", "rocker|notice"], ["--filter=rocker|notice"]:
            with self.subTest(options):
                open(self.record, "w").close()
                self.run_script("test.sh", *options)
                calls = self.recorded("ctest")
                self.assertEqual(len(calls), 3)
                for call in calls:
                    self.assertIn(" -R rocker|notice", call)

    def test_warnings_are_errors_only_where_nobody_looks(self):
        for ci, errors in {"true": "ON", None: "OFF"}.items():
            with self.subTest(CI=ci):
                open(self.record, "w").close()
                self.run_script("test.sh", CI=ci)
                calls = self.recorded("cmake --preset")
                self.assertEqual(len(calls), 2)
                for call in calls:
                    self.assertIn(f"-DPTZ_WARNINGS_AS_ERRORS={errors}", call)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
