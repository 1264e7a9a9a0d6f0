"""The companion while its session fails: trays that die, a bus that goes, sessions that end."""

import signal

import desktop
import psutil
from companion import COMPANION, POLL_SECONDS, skip_unless_possible
from faults import Story

HOST_DEATHS = 100
WARM_UP_DEATHS = 10
MOST_GROWTH_KB = 512
# Later Qt says the first where the display ends the program; the second, whoever draws just then; the others, the X
# library, when Qt still has requests under way.
NOISE_AT_THE_END = ("QThreadStorage: ", "qt.qpa.xcb: ", "XIO: ", "      after ")

setUpModule = skip_unless_possible


class TrayHosts(Story):
    """A tray that is not there, comes late, and dies again and again."""

    def check_hundred_deaths(self, show_item_and_kill):
        self.start_companion()
        for death in range(HOST_DEATHS):
            if death == WARM_UP_DEATHS:
                kilobytes, counts = self.held()
            show_item_and_kill()
        self.check_alive()

        def as_little():
            now, now_counts = self.held()
            fits = now - kilobytes <= MOST_GROWTH_KB or desktop.is_sanitized(COMPANION)
            return fits and all(count <= counts[kind] for kind, count in now_counts.items())

        # What went with the last tray may still be on its way out.
        self.wait_for(as_little, "as little to be held as before")
        self.assertEqual(self.bridge.polls(), [])

    def held(self):
        """Kilobytes of memory of its own, and counts of descriptors, threads and things of the X server."""
        process = psutil.Process(self.companion.pid)
        counts = self.desk.resources(self.companion.pid)
        counts.update({"descriptors": process.num_fds(), "threads": process.num_threads()})
        return sum(one.anonymous for one in process.memory_maps(grouped=True)) // 1024, counts

    def test_host_of_items_dies_a_hundred_times(self):
        def show_item_and_kill():
            with self.start_host() as host:
                host.expect("registered ")

        self.check_hundred_deaths(show_item_and_kill)
        self.start_host()
        self.desk.activate_item(self.item())
        self.wait_for_panel()
        self.check_polling_goes_on()

    def test_tray_that_windows_are_embedded_into_dies_a_hundred_times(self):
        def show_item_and_kill():
            tray = self.desk.start_trayer()
            self.wait_for(lambda: self.desk.windows(self.companion.pid), "the item")
            self.desk.kill(tray)
            self.wait_for(lambda: not self.desk.windows(self.companion.pid), "the item to go")

        self.check_hundred_deaths(show_item_and_kill)
        self.desk.start_trayer()
        self.open_embedded()
        self.check_polling_goes_on()


class SessionBus(Story):
    """A session without its bus."""

    def check_goes_on_quietly(self):
        self.check_polling_goes_on()
        before = self.desk.cpu_seconds(self.companion)
        self.check_polling_goes_on()
        self.assertLess(self.desk.cpu_seconds(self.companion) - before, POLL_SECONDS / 5)
        # Qt may have been telling the tray of an icon when the bus died, and says so.
        printed = [line for line in self.desk.output(self.companion).splitlines() if "QDBusTrayIcon" not in line]
        self.assertEqual(printed, [])

    def test_bus_that_dies_leaves_the_open_panel_at_work_and_a_second_start(self):
        self.start_with_item()
        self.open_by_second_start()
        self.desk.kill(self.desk.process("dbus-daemon"))
        self.check_goes_on_quietly()
        self.assertTrue(self.panels())
        self.desk.press("Escape")
        self.wait_for(lambda: not self.panels(), "the panel to close")
        self.open_by_second_start()
        self.check_goes_on_quietly()
        self.desk.press("ctrl+q")
        self.assertEqual(self.wait_for_exit(), 0)

    def test_bus_that_never_was_leaves_the_embedded_item(self):
        self.desk.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.start_companion()
        self.desk.start_trayer()
        self.open_embedded()
        self.check_goes_on_quietly()


class Endings(Story):
    """A session that ends under the companion."""

    def check_ended(self, expected):
        self.assertEqual(self.wait_for_exit(), expected, self.desk.output(self.companion))

    def test_signals_end_it_at_once_and_in_silence(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            for is_open in (False, True):
                with self.subTest(number=number, is_open=is_open), self.start_with_item():
                    if is_open:
                        self.open_by_second_start()
                    self.companion.send_signal(number)
                    self.check_ended(-number)
                    self.assertEqual(self.desk.output(self.companion), "")
                self.wait_for(lambda: not self.desk.status_notifier_items(), "no host")

    def test_display_that_goes_ends_it_with_a_sentence(self):
        self.start_with_item()
        self.open_by_second_start()
        self.desk.kill(self.desk.process("Xvfb"))
        self.check_ended(1)
        printed = [line for line in self.desk.output(self.companion).splitlines()
                   if not line.startswith(NOISE_AT_THE_END)]
        self.assertEqual(len(printed), 1, printed)

    def check_log_out(self, is_open):
        desktop.require("xfce4-session")
        session = self.desk.start_session()
        members = self.desk.session_members()
        self.start_companion()
        self.wait_for(lambda: self.desk.session_members() > members, "the companion to join the session")
        if is_open:
            self.open_by_second_start()
        self.desk.log_out()
        self.check_ended(0)
        self.assertEqual(self.desk.output(self.companion), "")
        self.assertEqual(session.wait(timeout=30), 0)

    def test_log_out_is_agreed_to_and_ends_it(self):
        self.check_log_out(is_open=False)

    def test_log_out_with_an_open_panel_is_agreed_to_and_ends_it(self):
        self.check_log_out(is_open=True)
