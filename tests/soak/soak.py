"""A day of the companion in a few minutes: every poll, with faults among them, and a user who never rests.

The companion is the whole of it, in a real tray, and only its poll interval is shorter. After a warm-up and at the end
it is brought to the same state, and what it holds then is compared.
"""

import argparse
import collections
import os
import pathlib
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "desktop"))

import desktop  # noqa: E402
import peer  # noqa: E402
import psutil  # noqa: E402
import session_bus  # noqa: E402
from companion import PANEL_WIDTH, StandIn  # noqa: E402
from program import Program  # noqa: E402

PROGRAM = os.environ.get("VORNA_SOAK", str(HERE.parents[1] / "build/dev/tests/vorna-soak"))
DAYPARTS = ("Dawn", "Day", "Dusk", "Night", "Auto")
ACTIONS = ("Desk backup now", "Sync via iCloud", "Refresh")
DAYPART_EACH, ACTION_EACH, SETTINGS_EACH, REST_EACH = 3, 7, 10, 40
# Longer than a closed panel is kept.
REST_SECONDS = 2.5
SETTINGS_TABS = 4
CLICK_SECONDS = 0.5
# A little longer than Qt waits before it believes that the focus has gone, and than two clicks count as one.
FOCUS_SECONDS, SAME_CLICK_SECONDS = 0.15, 0.26
HEADER = (20, 10, 300, 40)
SAMPLES, MOST_SAMPLES, SAMPLE_SECONDS = 40, 400, 0.05
KIB = 1024
# Without the C library's caches of freed pieces, up to 240 KiB a thread that it counts as in use.
EXACT_HEAP = {"GLIBC_TUNABLES": "glibc.malloc.tcache_count=0"}
# An answer to the heartbeat, an action that works, and one that fails.
TOOL = """case "$2" in
heartbeat) echo '{"local": {"state": "installed"}, "remote": {"state": "signed_in"}}' ;;
backup) echo "12 files"; echo "saved" ;;
*) echo "no route to the other Mac" >&2; exit 3 ;;
esac"""
# What each figure may have grown by since the warm-up. PSS has no bound: it changes with what else runs.
MEASURES = {"heap in use, KiB": 64, "memory of its own, KiB": 512, "with its share of the libraries (PSS), KiB": None,
            "open descriptors": 0, "threads": 0, "child processes": 0, "X resources": 0, "X pixmaps, bytes": 0,
            "D-Bus match rules": 0, "D-Bus names": 0}


class Day:
    """One desktop with the companion on it, for as many polls and openings as are asked for."""

    def __init__(self, desk, tick):
        self._desk = desk
        self.counts = collections.Counter()
        self._tool = StandIn(desk.root, "vorna")
        self._tool.does(TOOL)
        desk.env["PATH"] = f"{desk.root}:{desk.env['PATH']}"
        desk.start_window_manager()
        desk.start_notifications()
        desk.start_tray()
        self.peer = peer.Peer(tick)
        self._program = Program(desk, [PROGRAM, round(tick * 1000)], EXACT_HEAP)
        self._process = psutil.Process(self._program.pid)
        self._item = desk.wait_for(desk.status_notifier_items, "the item")[0]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._program.__exit__()
        self.peer.stop()

    def live(self, polls, openings):
        """Goes on until there were so many of both, evenly."""
        first_polls, first_openings = self.peer.polls, self.counts["openings"]
        while self.peer.polls < polls or self.counts["openings"] < openings:
            done = (self.peer.polls - first_polls) / max(1, polls - first_polls)
            if self.counts["openings"] - first_openings <= done * (openings - first_openings):
                self._visit(self.counts["openings"])
            else:
                time.sleep(SAMPLE_SECONDS)

    def measure(self, before=None):
        """What the companion holds at rest: the smallest of many samples, since its polls go on. Where it has been
        `before`, more of them are taken as long as that is too much."""
        self.peer.calm = True
        self._wait_for(lambda: self.peer.held == 0 and not self._process.children(), "the last poll and action to end")
        self._open()
        self._program.tell("press Day")
        self._close(self._activate)
        time.sleep(REST_SECONDS)
        least, taken = self._sample(), 1
        while taken < SAMPLES or (before and broken_bounds(before, least) and taken < MOST_SAMPLES):
            time.sleep(SAMPLE_SECONDS)
            least = {label: min(value, least[label]) for label, value in self._sample().items()}
            taken += 1
        self.peer.calm = False
        return least

    def quit(self):
        """Ends the companion as a user does; its exit status and what it complained of."""
        self.counts["tool runs"] = len(self._tool.calls())
        self.counts["notifications"] = self._desk.notifications()[-1][0]
        self._desk.choose_menu_entry(self._item, "Quit vorna")
        return self._program.process.wait(timeout=30), self._program.complaints()

    # The user

    def _visit(self, number):
        self._open()
        for what, each, labels in (("daypart", DAYPART_EACH, DAYPARTS), ("action", ACTION_EACH, ACTIONS)):
            if number % each == 0:
                label = labels[number // each % len(labels)]
                self._program.tell(f"press {label}")
                self.counts[what] += f"no button {label}" not in self._program.lines[-2:]
        self._close((self._activate, self._press_escape, self._activate, self._click_elsewhere)[number % 4])
        self.counts["openings"] += 1
        if number % SETTINGS_EACH == 0:
            self._look_at_settings()
        if number % REST_EACH == 0:
            time.sleep(REST_SECONDS)

    def _windows(self, managed):
        """The windows that the window manager looks after, or the panel: {window: place}."""
        clients = self._desk.root_windows("_NET_CLIENT_LIST")
        return {window: place for window, place in self._desk.windows(self._program.pid).items()
                if (window in clients) == managed and (managed or place[2] == PANEL_WIDTH)}

    def _is_painted(self, managed):
        """Whether the upper part of the one window shows more than one colour."""
        return any(len(self._desk.colours(*HEADER, window=window)) > 1 for window in self._windows(managed))

    def _open(self):
        self._click_until(self._activate, lambda: self._is_painted(managed=False), "the panel")

    def _close(self, how):
        self._click_until(how, lambda: not self._windows(managed=False), "the panel to close")
        time.sleep(SAME_CLICK_SECONDS if how == self._click_elsewhere else FOCUS_SECONDS)

    def _activate(self):
        self._desk.activate_item(self._item)

    def _press_escape(self):
        self._desk.press("Escape")

    def _click_elsewhere(self):
        for x, *_ in self._windows(managed=False).values():
            self._desk.click(1080 if x < 640 else 200, 600)

    def _click_until(self, click, condition, what):
        """Clicks, and again when nothing came of it: the panel goes when the focus goes elsewhere just then."""
        def works():
            if condition():
                return True
            click()
            self.counts["clicks"] += 1
            try:
                return self._wait_for(condition, what, within=CLICK_SECONDS)
            except desktop.Failure:
                return False

        self._wait_for(works, what)

    def _look_at_settings(self):
        self._desk.choose_menu_entry(self._item, "Settings…")
        self._wait_for(lambda: self._is_painted(managed=True) and self._windows(managed=True).keys()
                       <= set(self._desk.root_windows("_NET_ACTIVE_WINDOW")), "the settings")
        for _ in range(SETTINGS_TABS):
            self._desk.press("Right")
        self._desk.press("Escape")
        self._wait_for(lambda: not self._windows(managed=True), "the settings to close")
        self.counts["settings"] += 1

    # The figures

    def _sample(self):
        memory = self._process.memory_maps(grouped=True)
        server = self._desk.resources(self._program.pid)
        bytes_of_pixmaps = server.pop("pixmap bytes")
        bus = self._desk.call(session_bus.BUS, session_bus.BUS_PATH,
                              session_bus.BUS + ".Debug.Stats.GetConnectionStats", "(s)", self._item[0])[0]
        return dict(zip(MEASURES, (
            int(self._program.ask("heap")[0]) / KIB, sum(one.private_dirty for one in memory) / KIB,
            sum(one.pss for one in memory) / KIB, self._process.num_fds(), self._process.num_threads(),
            len(self._process.children()), server.total(), bytes_of_pixmaps, bus["MatchRules"], bus["BusNames"])))

    def _wait_for(self, condition, what, **options):
        return self._desk.wait_for(condition, what, every=0.005, **options)


def broken_bounds(first, last, times=1):
    """The labels of the figures that have grown by more than their bound, so many times over."""
    return [label for label, growth in MEASURES.items()
            if growth is not None and last[label] - first[label] > growth * times]


def table(checkpoints):
    """The figures in Markdown, a column for each checkpoint."""
    lines = ["| | " + " | ".join(checkpoints) + " | may grow by |", "|---|" + "--:|" * (len(checkpoints) + 1)]
    for label, growth in MEASURES.items():
        values = " | ".join(f"{figures[label]:,.0f}" for figures in checkpoints.values())
        lines.append(f"| {label} | {values} | {'—' if growth is None else growth} |")
    return "\n".join(lines)


def run(polls, openings, tick, parts):
    """Lives a day, measures at each of its `parts`, and returns the checkpoints, the day, and how it ended."""
    checkpoints = {}
    with desktop.Desktop() as desk, Day(desk, tick) as day:
        for part in parts:
            print(f"on to {part:.0%} of {polls:,} polls", file=sys.stderr)
            day.live(round(polls * part), round(openings * part))
            checkpoints[f"{day.peer.polls:,} polls"] = day.measure(next(iter(checkpoints.values()), None))
        return checkpoints, day, *day.quit()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--polls", type=int, default=17_280)
    parser.add_argument("--openings", type=int, default=2_000)
    parser.add_argument("--tick", type=float, default=0.04, help="seconds from poll to poll")
    arguments = parser.parse_args()
    began = time.monotonic()
    checkpoints, day, status, complaints = run(arguments.polls, arguments.openings, arguments.tick,
                                               (0.1, 0.4, 0.7, 1))
    first, *_, last = checkpoints.values()
    broken = broken_bounds(first, last)
    print(table(checkpoints))
    print(f"\n{day.peer.polls:,} polls, {day.peer.spoilt.total():,} of them spoilt; "
          + ", ".join(f"{count:,} {name}" for name, count in day.counts.items())
          + f"; in {time.monotonic() - began:.0f} s")
    print(complaints, end="")
    if broken:
        print("More than its bound: " + "; ".join(broken))
    return 1 if broken or status != 0 else 0


if __name__ == "__main__":
    sys.exit(main())
