"""Measures the companion beside the floor on one headless desktop and prints the tables of docs/performance.md."""

import argparse
import json
import pathlib
import re
import shutil
import socket
import statistics
import subprocess
import sys
import time

from peer import Peer

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

import desktop  # noqa: E402
import session_bus  # noqa: E402

RELEASE = ROOT / "build" / "release"
PROGRAMS = {"companion": [RELEASE / "vorna-companion"], "floor": [RELEASE / "benchmarks" / "floor"]}
PANEL_TIMINGS = RELEASE / "benchmarks" / "panel-timings"
BRIDGE_PORT = 43105
SETTLE_SECONDS = 4.0
SECONDS_PER_MINUTE = 60
MEASURES = (
    ("start", "start to the item registered with its host, ms", 0, 1.30),
    ("pss", "memory after the window was opened and closed, PSS MiB", 1, 1.20),
    ("private", "of it private, MiB", 1, None),
    ("switches", "context switches a minute, polling, window closed", 0, 1.20),
    ("cpu", "processor time a minute, polling, window closed, ms", 0, 1.20),
)
PEER = "syncthingtray"
PEER_LIMIT = 0.35
PEER_SETTINGS = """[General]
v=1.3.2

[tray]
connections\\1\\label=Primary instance
connections\\1\\syncthingUrl=http://127.0.0.1:8384
connections\\size=1
"""
OPENINGS = (
    ("first", "the first opening of a process"),
    ("again", "half a second after it was closed"),
    ("later", "after its memory was given back"),
)
POLLS = ((10, 200), (12, 200), (100, 200), (1_000, 100), (10_000, 20), (100_000, 5))


class ItemWatch:
    """Hears of items in the tray at the moment in which they register."""

    def __init__(self, desk):
        command = ["gdbus", "monitor", "--session", "--dest", session_bus.WATCHER]
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


def start_until_registered(desk, command):
    watch = ItemWatch(desk)
    try:
        began = time.monotonic()
        process = desk.start(command)
        return process, (watch.wait() - began) * 1000
    finally:
        watch.stop()


def open_and_close(desk, process):
    """Opens the window by the item, and closes it by the item, or by a click elsewhere where that is the way."""
    item = desk.wait_for(desk.status_notifier_items, "the item")[0]
    before = set(desk.windows(process.pid))

    def opened():
        return set(desk.windows(process.pid)) - before

    desk.activate_item(item)
    desk.wait_for(opened, "the window to open")
    time.sleep(SETTLE_SECONDS)
    desk.activate_item(item)
    time.sleep(1)
    if opened():
        desk.click(10, desk.size[1] - 10)
    desk.wait_for(lambda: not opened(), "the window to close")
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
        for name, command in PROGRAMS.items():
            process, milliseconds = start_until_registered(desk, command)
            end(desk, process)
            if number > 0:
                times[name].append(milliseconds)
    return times


def end(desk, process):
    desk.stop(process)
    desk.wait_for(lambda: not desk.status_notifier_items(), "the item to go")


def measure_idle(desk, command, minutes):
    process, _ = start_until_registered(desk, command)
    open_and_close(desk, process)
    result = memory(process)
    switches, milliseconds = activity(process)
    time.sleep(minutes * SECONDS_PER_MINUTE)
    later_switches, later_milliseconds = activity(process)
    result["switches"] = (later_switches - switches) / minutes
    result["cpu"] = (later_milliseconds - milliseconds) / minutes
    end(desk, process)
    return result


def measure_peer(desk):
    """The memory of the nearest program of the kind after its window was opened and closed; None without it."""
    if shutil.which(PEER) is None:
        return None
    (pathlib.Path(desk.env["XDG_CONFIG_HOME"]) / f"{PEER}.ini").write_text(PEER_SETTINGS)
    process, _ = start_until_registered(desk, [PEER, "qt-widgets-gui", "--single-instance"])
    open_and_close(desk, process)
    result = memory(process)
    end(desk, process)
    return result


def timings(desk, *words):
    return json.loads(desk.run(PANEL_TIMINGS, *words, timeout=300).splitlines()[-1])


def measure_polls(desk):
    """Milliseconds of the main thread for one poll: {services: (shown, hidden)}."""
    result = {}
    for services, count in POLLS:
        with Peer(services) as peer:
            found = [timings(desk, "polls", peer.address, count, how) for how in ("shown", "hidden")]
        if not all(one["online"] for one in found):
            raise desktop.Failure(f"a poll of {services} services failed")
        result[services] = [one["milliseconds"] for one in found]
    return result


def print_table(heading, rows):
    print("\n| " + " | ".join(heading) + " |")
    print("|" + "---|" + "---:|" * (len(heading) - 1))
    for row in rows:
        print("| " + " | ".join(row) + " |")


def print_ratios(results, peer):
    rows = []
    for key, label, digits, limit in MEASURES:
        ours, floor = results["companion"][key], results["floor"][key]
        rows.append((label, f"{ours:.{digits}f}", f"{floor:.{digits}f}", f"{ours / floor:.2f}",
                     f"{limit:.2f}" if limit else ""))
    if peer:
        rows.append((f"the same memory, beside `{PEER}` in place of the floor", f"{results['companion']['pss']:.1f}",
                     f"{peer['pss']:.1f}", f"{results['companion']['pss'] / peer['pss']:.2f}", f"{PEER_LIMIT:.2f}"))
    print_table(("", "companion", "floor", "ratio", "at most"), rows)


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
            name: {"start": statistics.median(starts[name]), **measure_idle(desk, command, arguments.minutes)}
            for name, command in PROGRAMS.items()
        }
        peer = measure_peer(desk)
        opened = [timings(desk, "openings") for _ in range(arguments.rounds)]
        polls = measure_polls(desk)
    print_ratios(results, peer)
    print_table(("click to the first whole frame", "ms, median", "ms, most"),
                [(label, f"{statistics.median(one[key] for one in opened):.1f}", f"{max(one[key] for one in opened):.1f}")
                 for key, label in OPENINGS])
    print_table(("services in the snapshot", "panel shown, ms", "panel hidden, ms", "hidden, µs a service"),
                [(f"{services:,}", f"{shown:.2f}", f"{hidden:.2f}", f"{hidden * 1000 / services:.2f}")
                 for services, (shown, hidden) in polls.items()])


if __name__ == "__main__":
    main()
