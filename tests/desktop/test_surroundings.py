"""The companion where something else fails: notifications, the settings file, the home, clock and time zone."""

import glob
import os
import pathlib
import shutil
import signal
import time
from datetime import datetime, timedelta

import desktop
from companion import COMPANION, PANEL, POLL_SECONDS, CompanionTest, skip_unless_possible
from faults import in_mounts_of_its_own

A_CALL_GIVES_UP_AFTER = 25
NIGHT = "vorna.macos.daypart=night"

setUpModule = skip_unless_possible


class Surroundings(CompanionTest):
    """A companion that a screen reader follows, with a bridge, and a tool that says when it has made a backup."""

    def setUp(self):
        super().setUp()
        self.bridge = self.start_bridge()
        self.tool.does('[ "$1" = desk ] && echo "backed up"; :')

    def open(self, **options):
        self.start_companion(**options)
        self.open_panel()
        self.reader.wait_for_text("online · :43105", PANEL)

    def press(self, daypart):
        self.reader.press(daypart, PANEL)
        self.wait_for_daypart(daypart)

    def back_up(self):
        """Runs the tool to its end."""
        self.reader.press("Desk backup now", PANEL)
        self.reader.wait_for_text("backed up", PANEL)
        self.wait_for_equal(lambda: self.unusable(PANEL), [], "the buttons that cannot be pressed")

    def end(self):
        self.desk.stop(self.companion)
        self.assertEqual(self.companion.returncode, -signal.SIGTERM, self.desk.output(self.companion))
        self.wait_for(lambda: not self.desk.status_notifier_items(), "the item to go")


class Notifications(Surroundings):
    """A notification daemon that is not there, hangs, and comes back."""

    def test_action_ends_without_a_daemon_and_the_next_one_is_told_of(self):
        masked = pathlib.Path(self.desk.env["XDG_DATA_HOME"]) / "dbus-1/services/notifications.service"
        masked.parent.mkdir(parents=True, exist_ok=True)
        masked.write_text(f"[D-BUS Service]\nName={desktop.NOTIFICATIONS}\nExec=/bin/false\n")
        self.addCleanup(masked.unlink)
        self.desk.reload_services()
        self.desk.kill(self.desk.process("dunst"))
        try:
            self.open()
            self.back_up()
        finally:
            self.desk.start_notifications()
        self._seen = 0
        self.back_up()
        self.wait_for_notifications(("Desk backup", "backed up"))

    def test_daemon_that_hangs_holds_nothing_up_for_long(self):
        daemon = self.desk.process("dunst")
        self.open()
        os.kill(daemon.pid, signal.SIGSTOP)
        began = time.monotonic()
        try:
            self.back_up()
            self.press("Night")
            self.assertLess(time.monotonic() - began, A_CALL_GIVES_UP_AFTER / 2)
        finally:
            os.kill(daemon.pid, signal.SIGCONT)
        self.wait_for_notifications(("Desk backup", "backed up"))


class SettingsFile(Surroundings):
    """A settings file that cannot be read or written."""

    # What is wrong, the shell that makes it so in the folder of all settings, mounts, and whether a choice is kept.
    CASES = (
        ("corrupt", "mkdir vorna && head -c 2048 /dev/urandom > vorna/companion.conf", None, True),
        ("a folder", "mkdir -p vorna/companion.conf", None, False),
        ("its folder a file", "touch vorna", None, False),
        ("read-only", "mkdir vorna && echo > vorna/companion.conf",
         "mount --bind vorna vorna && mount -o remount,bind,ro vorna", False),
        ("on a full disk", "mkdir vorna",
         "mount -t tmpfs -o size=16k tmpfs vorna && { cat /dev/zero > vorna/filling 2>/dev/null; true; }", False),
    )

    def test_choice_is_shown_all_the_same_and_kept_where_it_can_be(self):
        folder = self.configuration.parent
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        for what, script, mounts, stays in self.CASES:
            with self.subTest(what):
                self.desk.run("sh", "-c", f"cd {folder.parent} && rm -rf vorna && {script}")
                self.check_choice(stays, mounts and in_mounts_of_its_own(f"cd {folder.parent} && {mounts}"))
                self.assertTrue(what != "read-only" or self.configuration.read_text() == "\n")
                self.desk.run("rm", "-rf", folder)

    def check_choice(self, stays, command):
        """A chosen daypart is shown; whether it is there after a restart depends."""
        self.open(command=command or ())
        self.wait_for_daypart("Day")
        self.press("Night")
        self.assertEqual(self.desk.output(self.companion), "")
        self.wait_for(lambda: not stays or NIGHT in self.remembered(), "the choice on the disk")
        self.end()
        self.open(command=command or ())
        self.wait_for_daypart("Night" if stays else "Day")
        self.end()

    def test_home_that_is_not_there_or_not_named_is_not_needed(self):
        folders = ["-u", "XDG_CONFIG_HOME", "-u", "XDG_CACHE_HOME", "-u", "XDG_DATA_HOME"]
        for words in ([*folders, "HOME=/proc/self/nowhere"], ["-u", "HOME"]):
            with self.subTest(words):
                self.open(command=["env", *words])
                self.press("Night")
                self.back_up()
                self.assertEqual(self.desk.output(self.companion), "")
                self.end()
                self.configuration.unlink(missing_ok=True)


class Clocks(Surroundings):
    """A clock that is set, and a time zone that changes, while the panel is open."""

    def hours(self):
        """The time of day that the panel says it was last updated at; nothing before it was."""
        found = [text for text in self.reader.texts(PANEL) if text.startswith("Updated ")]
        return found and (datetime.strptime(found[0], "Updated %H:%M:%S") - datetime(1900, 1, 1)) / timedelta(hours=1)

    def wait_for_hours_later(self, hours, before):
        self.wait_for(lambda: abs((self.hours() - before - hours + 12) % 24 - 12) < 0.1, "the new time of day")

    def set_clock(self, hours):
        ahead = self.clock.with_suffix(".new")
        ahead.write_text(f"{hours * 3600:+d}")
        ahead.rename(self.clock)

    def check_set(self, hours, daypart):
        """The next poll tells the new time, and polls keep coming as they did."""
        polls = len(self.bridge.polls())
        self.set_clock(hours)
        self.wait_for_hours_later(hours, self.noon)
        self.wait_for(lambda: len(self.bridge.polls()) >= polls + 3, "more polls")
        polls = self.bridge.polls()[polls:]
        self.assertGreater(polls[-1] - polls[0], POLL_SECONDS * (len(polls) - 2), polls)
        self.press("Night")
        self.reader.press("Auto", PANEL)
        self.wait_for_daypart(daypart)
        self.photograph("faults-clock-" + daypart.lower())

    def test_clock_that_is_set_is_followed_and_polls_go_on(self):
        library = next(iter(glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")), None)
        if library is None:
            self.skipTest("not installed: faketime")
        if desktop.is_sanitized(COMPANION):
            self.skipTest("the address sanitizer does not let another library come before it")
        self.clock = self.desk.root / "clock"
        self.set_clock(0)
        self.open(env={"LD_PRELOAD": library, "FAKETIME_TIMESTAMP_FILE": str(self.clock), "FAKETIME_NO_CACHE": "1",
                       "FAKETIME_DONT_FAKE_MONOTONIC": "1"})
        self.noon = self.wait_for(self.hours, "the first update")
        self.wait_for_daypart("Day")
        self.check_set(-6, "Dawn")
        self.check_set(7, "Dusk")

    def test_time_zone_that_changes_is_followed(self):
        zones = pathlib.Path("/usr/share/zoneinfo/Etc")
        if not zones.is_dir():
            self.skipTest("not installed: tzdata")
        zone = self.desk.root / "zone"
        zone.write_bytes((zones / "GMT").read_bytes())
        os.utime(zone, (0, 0))  # a zone that changes within a second is taken for the same one
        self.open(command=[*in_mounts_of_its_own(f"mount --bind {zone} /etc/localtime"), "env", "-u", "TZ"])
        before = self.wait_for(self.hours, "the first update")
        zone.write_bytes((zones / "GMT-7").read_bytes())
        self.wait_for_hours_later(7, before)
        self.check_alive()
