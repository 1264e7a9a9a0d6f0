"""Starts the companion and the floor on a desktop, and measures the whole of each process."""

import pathlib
import re
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

import desktop  # noqa: E402
import session_bus  # noqa: E402

RELEASE = ROOT / "build" / "release"
PROGRAMS = {"companion": [RELEASE / "vorna-companion"], "floor": [RELEASE / "benchmarks" / "floor"]}
SETTLE_SECONDS = 4.0
SECONDS_PER_MINUTE = 60


class ItemWatch:
    """Hears of items in the tray at the moment in which they register."""

    def __init__(self, desk):
        command = ["gdbus", "monitor", "--session", "--dest", session_bus.WATCHER]
        self._process = subprocess.Popen(command, env=desk.env, stdout=subprocess.PIPE, text=True)
        for _ in range(2):  # the second line, on who the watcher is, comes once the bus knows what is to be heard
            self._process.stdout.readline()

    def wait(self):
        for line in self._process.stdout:
            if "StatusNotifierItemRegistered" in line:
                return time.monotonic()
        raise desktop.Failure("the session bus went away")

    def stop(self):
        self._process.terminate()
        self._process.communicate()


def start_until_registered(desk, command, env=None):
    watch = ItemWatch(desk)
    try:
        began = time.monotonic()
        process = desk.start(command, env)
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


def end(desk, process):
    desk.stop(process)
    desk.wait_for(lambda: not desk.status_notifier_items(), "the item to go")


def check_is_alone(process):
    """The memory of a process says little while another program uses the same libraries."""
    mine = qt_of(process.pid)
    others = {int(folder.name) for folder in pathlib.Path("/proc").glob("[0-9]*")} - {process.pid}
    sharing = [pathlib.Path(f"/proc/{pid}/comm").read_text().strip() for pid in others if mine & qt_of(pid)]
    if sharing:
        raise desktop.Failure(f"other programs use the same Qt: {sharing}")


def qt_of(pid):
    """Qt's Core as a process has mapped it: device and inode."""
    try:
        maps = pathlib.Path(f"/proc/{pid}/maps").read_text()
    except OSError:
        return set()
    return set(re.findall(r"^\S+ \S+ \S+ (\S+ \d+) .*/libQt6Core\.so", maps, re.M))


def memory(process):
    check_is_alone(process)
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
    """The median of each program's starts in milliseconds, in turn; the first round, with cold caches, does not count."""
    times = {name: [] for name in PROGRAMS}
    for number in range(rounds + 1):
        for name, command in PROGRAMS.items():
            process, milliseconds = start_until_registered(desk, command)
            end(desk, process)
            if number > 0:
                times[name].append(milliseconds)
    return {name: statistics.median(each) for name, each in times.items()}


def memory_after_opening(desk, command, env=None, minutes=0):
    """Memory once its window was opened and closed; then what it does in a minute, watched for that many."""
    process, _ = start_until_registered(desk, command, env)
    open_and_close(desk, process)
    result = memory(process)
    if minutes:
        switches, milliseconds = activity(process)
        time.sleep(minutes * SECONDS_PER_MINUTE)
        later_switches, later_milliseconds = activity(process)
        result["switches"] = (later_switches - switches) / minutes
        result["cpu"] = (later_milliseconds - milliseconds) / minutes
    end(desk, process)
    return result
