"""A real desktop without a screen, for tests: an X server, a session bus, a window manager, trays and a way to look.

    with desktop.Desktop() as desk:
        desk.start_window_manager()
        panel = desk.start_xfce_panel()
        companion = desk.start(["build/vorna-companion"])
        desk.wait_for(desk.status_notifier_items, "an item in the tray")

Everything that a `Desktop` starts belongs to it and ends with it; nothing outside it is touched. Each has its own
display, session bus, home and configuration folder. A test that lacks a program calls `require()`, which prints the
line that the test runner takes for "skipped" and leaves.
"""

import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

NOTIFICATIONS = "org.freedesktop.Notifications"
STATUS_NOTIFIER_WATCHER = "org.kde.StatusNotifierWatcher"

PANEL_CHANNEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
"""


class Failure(AssertionError):
    """What a test expected did not come."""


def require(*programs):
    """Leaves as skipped unless every program is installed."""
    missing = [program for program in programs if shutil.which(program) is None]
    if missing:
        print("SKIPPED: not installed: " + ", ".join(missing))
        sys.exit(0)


def require_modules(*modules):
    """Leaves as skipped unless this Python has every module."""
    for module in modules:
        try:
            __import__(module)
        except ImportError:
            print(f"SKIPPED: this Python has no module {module}")
            sys.exit(0)


def is_sanitized(program):
    """Whether a program was built with the address sanitizer: its memory is then the sanitizer's."""
    return b"__asan_init" in Path(program).read_bytes()


class Desktop:
    """One X server (unless `display` is False) and one session bus (unless `bus` is False), with what runs on them."""

    def __init__(self, size=(1280, 800), display=True, bus=True):
        self.size = size
        self.env = {key: value for key, value in os.environ.items()
                    if key not in ("WAYLAND_DISPLAY", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_CURRENT_DESKTOP",
                                   "DESKTOP_SESSION", "SESSION_MANAGER", "QT_QPA_PLATFORM")}
        self._wants_display = display
        self._wants_bus = bus
        self._processes = []
        self.root = None

    def __enter__(self):
        self.root = Path(tempfile.mkdtemp(prefix="vorna-desktop-"))
        for variable, folder in (("HOME", "home"), ("XDG_CONFIG_HOME", "home/.config"),
                                 ("XDG_CACHE_HOME", "home/.cache"), ("XDG_DATA_HOME", "home/.local/share"),
                                 ("XDG_RUNTIME_DIR", "run")):
            (self.root / folder).mkdir(parents=True, exist_ok=True, mode=0o700)
            self.env[variable] = str(self.root / folder)
        try:
            if self._wants_display:
                self._start_x_server()
            if self._wants_bus:
                self._start_bus()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            self.stop(process)
            process.log.close()
        reports = [output for output in map(self.output, self._processes) if "Sanitizer: " in output]
        shutil.rmtree(self.root, ignore_errors=True)
        if reports:
            raise Failure("a sanitizer reported\n" + "\n".join(reports))

    # Processes

    def start(self, command, env=None, **options):
        """Starts a program on this desktop; its output goes to a file that `output()` reads."""
        log = open(self.root / f"output-{len(self._processes)}.txt", "w+b")
        process = subprocess.Popen([str(word) for word in command], env={**self.env, **(env or {})}, stdout=log,
                                   stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, start_new_session=True,
                                   cwd=self.root, **options)
        process.log = log
        self._processes.append(process)
        return process

    def output(self, process):
        """What a started program has printed so far."""
        return Path(self.root / os.path.basename(process.log.name)).read_text(errors="replace")

    def stop(self, process, how=signal.SIGTERM):
        """Ends a started program with its children; by force if it does not go within three seconds."""
        for sign in (how, signal.SIGKILL):
            try:
                os.killpg(process.pid, sign)
            except ProcessLookupError:
                pass
            try:
                process.wait(timeout=3)
            except subprocess.TimeoutExpired:
                continue
            break
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass

    def kill(self, process):
        """Ends a started program as a crash does."""
        self.stop(process, signal.SIGKILL)

    def run(self, *command, check=True, timeout=10):
        """Runs a program to its end and returns what it printed."""
        result = subprocess.run([str(word) for word in command], env=self.env, capture_output=True, text=True,
                                timeout=timeout)
        if check and result.returncode != 0:
            raise Failure(f"{command[0]} failed: {result.stderr.strip()}")
        return result.stdout

    @staticmethod
    def wait_for(condition, what, within=10.0, every=0.03):
        """Waits until `condition()` is true and returns its value; else fails and says what did not come."""
        end = time.monotonic() + within
        while True:
            value = condition()
            if value:
                return value
            if time.monotonic() > end:
                raise Failure(f"not within {within:g} s: {what}")
            time.sleep(every)

    def cpu_seconds(self, process):
        """Processor time that a started program has used."""
        fields = Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def voluntary_switches(self, process):
        """How often the main thread of a started program has gone to sleep: its wake-ups."""
        status = Path(f"/proc/{process.pid}/status").read_text()
        return int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", status, re.M).group(1))

    # The desktop's own parts

    def x_server(self):
        """The command that starts an X server, but for what all X servers are told."""
        return ["Xvfb", "-screen", "0", f"{self.size[0]}x{self.size[1]}x24"]

    def _start_x_server(self):
        reading, writing = os.pipe()
        self.start([*self.x_server(), "-displayfd", str(writing), "-nolisten", "tcp", "-noreset"], pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise Failure("the X server did not start")
        self.env["DISPLAY"] = ":" + number
        self.env["QT_QPA_PLATFORM"] = "xcb"

    def _start_bus(self):
        address = f"unix:path={self.root}/run/bus"
        self.start(["dbus-daemon", "--session", "--nofork", f"--address={address}"])
        self.env["DBUS_SESSION_BUS_ADDRESS"] = address
        self.wait_for(lambda: (self.root / "run/bus").exists(), "the session bus")

    def start_window_manager(self, compositing=False):
        """xfwm4, ready when it has announced itself."""
        process = self.start(["xfwm4", "--compositor=" + ("on" if compositing else "off")])
        self.wait_for(lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                      "the window manager")
        return process

    def start_xfce_panel(self):
        """xfce4-panel along the upper edge with one tray, a host both for status notifiers and for XEmbed."""
        channels = Path(self.env["XDG_CONFIG_HOME"]) / "xfce4/xfconf/xfce-perchannel-xml"
        channels.mkdir(parents=True, exist_ok=True)
        (channels / "xfce4-panel.xml").write_text(PANEL_CHANNEL)
        return self.start(["xfce4-panel", "--disable-wm-check"])

    def start_trayer(self):
        """trayer along the upper edge: a tray for XEmbed alone."""
        return self.start(["trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "28",
                           "--transparent", "true", "--alpha", "0", "--tint", "0x303030"])

    def start_notifications(self):
        """dunst, which keeps what it was told until it is asked to forget."""
        settings = self.root / "dunstrc"
        settings.write_text("[global]\n    monitor = 0\n    font = Sans 10\n    history_length = 50\n"
                            "    stack_duplicates = false\n    sticky_history = true\n")
        process = self.start(["dunst", "-conf", settings])
        self.wait_for(lambda: NOTIFICATIONS in self.bus_names(), "the notification server")
        return process

    def notifications(self):
        """Every notification, the first one first: {"number", "application", "title", "body"}. None stays on screen."""
        self.run("dunstctl", "close-all")
        entries = [{key: value["data"] for key, value in entry.items()}
                   for entry in json.loads(self.run("dunstctl", "history"))["data"][0]]
        return [{"number": entry["id"], "application": entry["appname"], "title": entry["summary"],
                 "body": entry["body"]} for entry in sorted(entries, key=lambda entry: entry["id"])]

    # The session bus

    def call(self, service, path, method, *arguments, check=True):
        """Calls a method with gdbus and returns its printed answer."""
        return self.run("gdbus", "call", "--session", "--timeout", "5", "--dest", service, "--object-path", path,
                        "--method", method, *arguments, check=check)

    def bus_names(self):
        """Every name on the session bus."""
        answer = self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.ListNames")
        return re.findall(r"'([^']+)'", answer)

    def status_notifier_host_is_there(self):
        """Whether the watcher says that a host shows its items."""
        if STATUS_NOTIFIER_WATCHER not in self.bus_names():
            return False
        return "true" in self.call(STATUS_NOTIFIER_WATCHER, "/StatusNotifierWatcher",
                                   "org.freedesktop.DBus.Properties.Get", STATUS_NOTIFIER_WATCHER,
                                   "IsStatusNotifierHostRegistered", check=False)

    def status_notifier_items(self):
        """The items that the watcher knows, each as (service, path)."""
        if STATUS_NOTIFIER_WATCHER not in self.bus_names():
            return []
        answer = self.call(STATUS_NOTIFIER_WATCHER, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties.Get",
                           STATUS_NOTIFIER_WATCHER, "RegisteredStatusNotifierItems", check=False)
        items = re.findall(r"'([^']+)'", answer)
        return [(item.partition("/")[0], "/" + (item.partition("/")[2] or "StatusNotifierItem")) for item in items]

    def item_property(self, item, name):
        """One property of a status notifier item, as gdbus prints it."""
        return self.call(item[0], item[1], "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem", name)

    def activate_item(self, item, x=0, y=0):
        """The left click of a status notifier host."""
        self.call(item[0], item[1], "org.kde.StatusNotifierItem.Activate", str(x), str(y))

    def menu_entries(self, item):
        """The entries of an item's menu, as {label: id}, without those that have no label."""
        path = re.search(r"'(/[^']*)'", self.item_property(item, "Menu")).group(1)
        layout = self.call(item[0], path, "com.canonical.dbusmenu.GetLayout", "0", "--", "-1", "[]")
        return {label.replace("_", ""): int(number)
                for number, label in re.findall(r"\((\d+), \{[^}]*'label': <'([^']*)'>", layout)}

    def choose_menu_entry(self, item, label):
        """Chooses an entry of an item's menu."""
        path = re.search(r"'(/[^']*)'", self.item_property(item, "Menu")).group(1)
        self.call(item[0], path, "com.canonical.dbusmenu.Event", str(self.menu_entries(item)[label]), "clicked",
                  "<int32 0>", "0")

    # Windows, pointer and keyboard

    def windows(self, pid, hidden=False):
        """Every visible top-level or embedded window of a process: {id: (x, y, width, height)} on the screen.

        With `hidden`, those that do not show as well.
        """
        # A window that goes while the tree is read makes the reading fail.
        tree = self.wait_for(lambda: self.run("xwininfo", "-root", "-tree", check=False), "the tree of windows")
        found = {}
        for window in dict.fromkeys(re.findall(r"^\s+(0x[0-9a-f]+)", tree, re.M)):
            owner = self.run("xprop", "-id", window, "_NET_WM_PID", check=False)
            if not re.search(rf"= {pid}$", owner.strip()):
                continue
            info = self.run("xwininfo", "-id", window, check=False)
            if "IsViewable" in info or (hidden and "Map State" in info):
                found[window] = tuple(int(re.search(rf"{label}:\s+(-?\d+)", info).group(1)) for label in
                                      ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        return found

    def parent_of(self, window):
        """The id of a window's parent, "root" for the root window."""
        tree = self.run("xwininfo", "-id", window, "-tree", check=False)
        parent = re.search(r"Parent window id: (0x[0-9a-f]+)( \(the root window\))?", tree)
        return None if parent is None else "root" if parent.group(2) else parent.group(1)

    def click(self, x, y, button=1):
        """Moves the pointer there and clicks."""
        self.run("xdotool", "mousemove", x, y, "click", button)

    def press(self, *keys):
        """Presses keys by their X names, such as "Escape"."""
        self.run("xdotool", "key", *keys)

    def screenshot(self, path):
        """A picture of the whole screen, as a PNG file."""
        self.run("import", "-window", "root", path, timeout=30)
        return path

    # Accessibility

    def start_accessibility(self):
        """The accessibility bus; start it before the programs that a `ScreenReader` is to read."""
        self.env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        launcher = next((path for path in ("/usr/libexec/at-spi-bus-launcher",
                                           "/usr/lib/at-spi2-core/at-spi-bus-launcher") if os.path.exists(path)), None)
        if launcher is None:
            print("SKIPPED: no accessibility bus")
            sys.exit(0)
        process = self.start([launcher, "--launch-immediately"])
        self.wait_for(lambda: "org.a11y.Bus" in self.bus_names(), "the accessibility bus")
        return process
