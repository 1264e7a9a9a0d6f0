"""What cannot be installed or started: a sentence, an exit status, and nothing lost."""

import pathlib
import tempfile
import unittest

from packages import COMPANION, NONE, PROGRAM, changed, field, install, must, package, run, status

from faults import Story

DPKG_REFUSES, APT_REFUSES, LOADER_REFUSES = 1, 100, 127
NO_BUS = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}


class Refused(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        # apt reads what it is given as a user of its own.
        self.folder.chmod(0o755)
        must("dpkg", "--purge", COMPANION)

    def check_refused(self, expected, words, *command):
        outcome = run(*command)
        self.assertEqual(outcome.returncode, expected, outcome.stdout)
        self.assertIn(words, outcome.stdout)

    def check_works(self):
        self.assertEqual(status(COMPANION), "installed")
        self.assertRegex(must(PROGRAM, "--version"), r"^vorna-companion v")

    def test_package_for_another_processor(self):
        own = field(package(COMPANION), "Architecture")
        other = "arm64" if own != "arm64" else "amd64"
        file = changed(self.folder, lambda text: text.replace(f"Architecture: {own}", f"Architecture: {other}"))
        self.check_refused(APT_REFUSES, other, "apt-get", "install", "--yes", file)
        self.check_refused(DPKG_REFUSES, f"({other}) does not match system ({own})", "dpkg", "--install", file)
        self.assertEqual(status(COMPANION), NONE)
        self.assertFalse(PROGRAM.exists())

    def test_package_that_was_cut_off_leaves_the_one_before(self):
        install(package(COMPANION))
        content = package(COMPANION).read_bytes()
        file = self.folder / "cut-off.deb"
        file.write_bytes(content[: len(content) // 2])
        self.check_refused(DPKG_REFUSES, "dpkg-deb: error: ", "dpkg", "--install", file)
        self.check_works()

    def test_half_an_install_is_finished_later(self):
        install(package(COMPANION))
        must("dpkg", "--unpack", package(COMPANION))
        self.assertEqual(status(COMPANION), "unpacked")
        self.assertRegex(must(PROGRAM, "--version"), r"^vorna-companion v")
        must("dpkg", "--configure", "--pending")
        self.check_works()

    def test_missing_library_is_named_and_can_be_fetched_later(self):
        must("apt-get", "autoremove", "--yes", "--purge")
        self.check_refused(DPKG_REFUSES, "dependency problems", "dpkg", "--install", package(COMPANION))
        self.check_refused(LOADER_REFUSES, "error while loading shared libraries: libQt6", PROGRAM)
        must("apt-get", "install", "--yes", "--no-install-recommends", "--fix-broken")
        self.check_works()

    def test_no_display(self):
        install(package(COMPANION))
        self.check_refused(1, "display", "env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", PROGRAM)


class Bare(Story):
    """Where a desktop has neither a tray nor a session bus, a second start shows the panel."""

    def test_no_tray_and_no_session_bus(self):
        install(package(COMPANION))
        self.start_companion(env=NO_BUS)
        self.wait_for_start()
        self.start_again(env=NO_BUS)
        self.wait_for_panel()
        self.check_alive()
