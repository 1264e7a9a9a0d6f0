"""Measures the companion beside the floor, several times over, prints the tables of docs/performance.md with the budgets,
and fails where one is broken."""

import argparse
import json
import pathlib
import shutil
import socket
import statistics
import sys

from figures import HEADING, Figure, print_table
from peer import Peer
from programs import (PROGRAMS, RELEASE, ROOT, desktop, end, memory, memory_after_opening, open_and_close, start_times,
                      start_until_registered)

import wayland

PANEL_TIMINGS = RELEASE / "benchmarks" / "panel-timings"
BRIDGE_PORT = 43105
BESIDE_THE_FLOOR = (
    ("start", "start to the item registered with its host, ms", 0, 1.10),
    ("pss", "memory after the window was opened and closed, PSS MiB", 1, 1.15),
    ("private", "of it private, MiB", 1, None),
    ("wayland", "the same memory in a Wayland session (sway), PSS MiB", 1, 1.25),
    ("switches", "context switches a minute, polling, window closed", 0, 0.25),
    ("cpu", "processor time a minute, polling, window closed, ms", 0, 0.75),
)
ALONE = (
    ("first", "click to the first whole frame: the first opening of a process, ms", 1, 16),
    ("again", "half a second after it was closed, ms", 1, 6),
    ("later", "after its memory was given back, ms", 1, 10),
    ("shown", "one poll of 12 services, panel shown, ms", 2, 0.8),
    ("hidden", "one poll of 12 services, panel hidden, ms", 2, 0.3),
    ("wayland", "memory in a Wayland session after the window was opened and closed, PSS MB", 1, 30),
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
# Qt would have the floor load EGL, only to ask it about the frame of a window that has none.
WITHOUT_EGL = {"QT_WAYLAND_DISABLE_WINDOWDECORATION": "1"}
STARTS = 5
USUAL_SERVICES, USUAL_POLLS = 12, 200
POLLS = ((10, 200), (100, 200), (1_000, 100), (10_000, 20), (100_000, 5))
MB_PER_MIB = 1.048576


def start_bridge(desk):
    def answers():
        with socket.socket() as client:
            return client.connect_ex(("127.0.0.1", BRIDGE_PORT)) == 0

    if not answers():
        desk.start([sys.executable, "-B", ROOT / "devtools" / "stand-in-bridge", "--port", BRIDGE_PORT])
        desk.wait_for(answers, "the bridge")


def timings(desk, *words):
    return json.loads(desk.run(PANEL_TIMINGS, *words, timeout=300).splitlines()[-1])


def poll_times(desk, services, count):
    """Milliseconds of the main thread for one poll."""
    with Peer(services) as peer:
        found = {how: timings(desk, "polls", peer.address, count, how) for how in ("shown", "hidden")}
    if not all(one["online"] for one in found.values()):
        raise desktop.Failure(f"a poll of {services} services failed")
    return {how: one["milliseconds"] for how, one in found.items()}


def measure_on_x11(desk, minutes):
    """One run: {program: figures}, and those of the companion alone."""
    starts = start_times(desk, STARTS)
    both = {name: {"start": starts[name], **memory_after_opening(desk, command, minutes=minutes)}
            for name, command in PROGRAMS.items()}
    return both, {**timings(desk, "openings"), **poll_times(desk, USUAL_SERVICES, USUAL_POLLS)}


def measure_on_wayland(desk):
    return {name: memory_after_opening(desk, command, WITHOUT_EGL if name == "floor" else None)["pss"]
            for name, command in PROGRAMS.items()}


def measure_peer(desk):
    """The memory of the nearest program of the kind after its window was opened and closed; None without it."""
    if shutil.which(PEER) is None:
        return None
    (pathlib.Path(desk.env["XDG_CONFIG_HOME"]) / f"{PEER}.ini").write_text(PEER_SETTINGS)
    process, _ = start_until_registered(desk, [PEER, "qt-widgets-gui", "--single-instance"])
    open_and_close(desk, process)
    result = memory(process)["pss"]
    end(desk, process)
    return result


def measure(runs, minutes):
    """The runs on X11, with the memory in a Wayland session among the rest; the peer's memory; polls of many services."""
    with desktop.Desktop() as desk:
        start_bridge(desk)
        desk.start_window_manager()
        desk.start_xfce_panel()
        desk.wait_for(desk.status_notifier_host_is_there, "the tray")
        found = [measure_on_x11(desk, minutes) for _ in range(runs)]
        peer = measure_peer(desk)
        polls = {services: poll_times(desk, services, count) for services, count in POLLS}
    with wayland.WaylandDesktop(xwayland=False) as desk:
        start_bridge(desk)
        desk.start_waybar()
        desk.wait_for(desk.status_notifier_host_is_there, "the tray")
        for both, alone in found:
            for name, pss in measure_on_wayland(desk).items():
                both[name]["wayland"] = pss
            alone["wayland"] = both["companion"]["wayland"] * MB_PER_MIB
    return found, peer, polls


def ratios(runs, peer):
    def figure(label, digits, limit, ours, theirs):
        beside = tuple(f"{statistics.median(each):.{digits}f}" for each in (ours, theirs))
        return Figure(label, [one / other for one, other in zip(ours, theirs)], limit, beside=beside)

    def values(name, key):
        return [both[name][key] for both, _ in runs]

    for key, label, digits, limit in BESIDE_THE_FLOOR:
        yield figure(label, digits, limit, values("companion", key), values("floor", key))
    if peer:
        ours = values("companion", "pss")
        yield figure(f"the same on X11, beside `{PEER}` in place of the floor", 1, PEER_LIMIT, ours, [peer] * len(ours))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--minutes", type=float, default=0.5, help="how long each is watched in each run while idle")
    parser.add_argument("--runs", type=int, default=5)
    arguments = parser.parse_args()
    runs, peer, polls = measure(arguments.runs, arguments.minutes)
    beside = list(ratios(runs, peer))
    alone = [Figure(label, [own[key] for _, own in runs], limit, digits) for key, label, digits, limit in ALONE]
    print_table(("", "companion", "floor", "ratio", *HEADING), [one.cells() for one in beside])
    print_table(("", "companion", *HEADING), [one.cells() for one in alone])
    print_table(("services in the snapshot", "panel shown, ms", "panel hidden, ms", "hidden, µs a service"),
                [(f"{services:,}", f"{each['shown']:.2f}", f"{each['hidden']:.2f}",
                  f"{each['hidden'] * 1000 / services:.2f}") for services, each in polls.items()])
    print(f"\nMedians of {arguments.runs} runs; the noise is the spread of the middle ones. A budget is broken where the "
          "median is above it by more than the noise.")
    return any(one.is_broken for one in beside + alone)


if __name__ == "__main__":
    sys.exit(main())
