"""Measures the companion and the floor, one after the other on the same headless desktop, and prints the ratios."""

import argparse
import pathlib
import re
import socket
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

import desktop  # noqa: E402

RELEASE = ROOT / "build" / "release"
PROGRAMS = {"companion": RELEASE / "vorna-companion", "floor": RELEASE / "benchmarks" / "floor"}
BRIDGE_PORT = 43105
SETTLE_SECONDS = 3.0
SECONDS_PER_MINUTE = 60
MEASURES = (
    ("start", "start to registered item, ms", 0),
    ("pss", "memory after open and close, PSS MiB", 1),
    ("private", "of it private, MiB", 1),
    ("switches", "context switches a minute, idle", 0),
    ("cpu", "processor time a minute, idle, ms", 0),
)


class ItemWatch:
    """Hears of items in the tray at the moment in which they register."""

    def __init__(self, desk):
        command = ["gdbus", "monitor", "--session", "--dest", desktop.STATUS_NOTIFIER_WATCHER]
        self._process = subprocess.Popen(command, env=desk.env, stdout=subprocess.PIPE, text=True)
        self._process.stdout.readline()

    def wait(self):
        for line in self._process.stdout:
            if "StatusNotifierItemRegistered" in line:
                return time.monotonic()
        raise desktop.Failure("the session bus went away")

    def stop(self):
        self._process.terminate()
        self._process.communicate()


def start_bridge(desk):
    def answers():
        with socket.socket() as client:
            return client.connect_ex(("127.0.0.1", BRIDGE_PORT)) == 0

    if not answers():
        desk.start([sys.executable, "-B", ROOT / "devtools" / "stand-in-bridge", "--port", BRIDGE_PORT])
        desk.wait_for(answers, "the bridge")


def start_until_registered(desk, program):
    watch = ItemWatch(desk)
    try:
        began = time.monotonic()
        process = desk.start([program])
        return process, (watch.wait() - began) * 1000
    finally:
        watch.stop()


def open_and_close(desk, process):
    item = desk.wait_for(desk.status_notifier_items, "the item")[0]
    before = set(desk.windows(process.pid))
    desk.activate_item(item)
    desk.wait_for(lambda: set(desk.windows(process.pid)) - before, "the window to open")
    time.sleep(SETTLE_SECONDS)
    desk.activate_item(item)
    desk.wait_for(lambda: not set(desk.windows(process.pid)) - before, "the window to close")
    time.sleep(SETTLE_SECONDS)


def memory(process):
    rollup = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text()
    kib = {name: int(value) for name, value in re.findall(r"^(\w+):\s+(\d+) kB", rollup, re.M)}
    return {"pss": kib["Pss"] / 1024, "private": (kib["Private_Clean"] + kib["Private_Dirty"]) / 1024}


def activity(process):
    """Context switches and processor milliseconds of all threads since the start."""
    switches, nanoseconds = 0, 0
    for task in pathlib.Path(f"/proc/{process.pid}/task").iterdir():
        status = (task / "status").read_text()
        switches += sum(int(count) for count in re.findall(r"ctxt_switches:\s+(\d+)", status))
        nanoseconds += int((task / "schedstat").read_text().split()[0])
    return switches, nanoseconds / 1e6


def start_times(desk, rounds):
    """Milliseconds of each program's starts; the first round, with cold caches, counts for neither."""
    times = {name: [] for name in PROGRAMS}
    for number in range(rounds + 1):
        for name, program in PROGRAMS.items():
            process, milliseconds = start_until_registered(desk, program)
            end(desk, process)
            if number > 0:
                times[name].append(milliseconds)
    return times


def end(desk, process):
    desk.stop(process)
    desk.wait_for(lambda: not desk.status_notifier_items(), "the item to go")


def measure_idle(desk, program, minutes):
    process, _ = start_until_registered(desk, program)
    open_and_close(desk, process)
    result = memory(process)
    switches, milliseconds = activity(process)
    time.sleep(minutes * SECONDS_PER_MINUTE)
    later_switches, later_milliseconds = activity(process)
    result["switches"] = (later_switches - switches) / minutes
    result["cpu"] = (later_milliseconds - milliseconds) / minutes
    end(desk, process)
    return result


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--minutes", type=float, default=1.0, help="how long each is watched while idle")
    parser.add_argument("--rounds", type=int, default=7, help="how often each is started; the median counts")
    arguments = parser.parse_args()
    with desktop.Desktop() as desk:
        start_bridge(desk)
        desk.start_window_manager()
        desk.start_xfce_panel()
        desk.wait_for(desk.status_notifier_host_is_there, "the tray")
        starts = start_times(desk, arguments.rounds)
        results = {
            name: {"start": statistics.median(starts[name]), **measure_idle(desk, program, arguments.minutes)}
            for name, program in PROGRAMS.items()
        }
    print(f"{'':40}{'companion':>12}{'floor':>12}{'ratio':>8}")
    for key, label, digits in MEASURES:
        ours, floor = results["companion"][key], results["floor"][key]
        ratio = f"{ours / floor:.2f}" if floor else "—"
        print(f"{label:40}{ours:12.{digits}f}{floor:12.{digits}f}{ratio:>8}")


if __name__ == "__main__":
    main()
