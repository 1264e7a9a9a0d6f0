"""A real desktop without a screen, for tests: an X server, a session bus, a window manager, trays and a way to look.

    with desktop.Desktop() as desk:
        desk.start_window_manager()
        desk.start_xfce_panel()
        companion = desk.start(["build/vorna-companion"])
        desk.wait_for(desk.status_notifier_items, "an item in the tray")

Everything that a `Desktop` starts belongs to it and ends with it; nothing outside it is touched. Each has its own
display, session bus, home and configuration folder.
"""

import contextlib
import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

import psutil
from gi.repository import GLib

from session_bus import SessionBus
from x_screen import XScreen

NOTIFICATIONS, NOTIFICATIONS_PATH = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"
BAR_HEIGHT = 28
BAR_COLOUR = (0x20, 0x30, 0x40)
BAR = f"""<property name="configver" type="int" value="2"/>
<property name="panels" type="array"><value type="int" value="1"/><property name="panel-1" type="empty">
  <property name="position" type="string" value="p=6;x=0;y=0"/>
  <property name="length" type="uint" value="100"/>
  <property name="size" type="uint" value="{BAR_HEIGHT}"/>
  <property name="background-style" type="uint" value="1"/>
  <property name="background-rgba" type="array">
    {"".join(f'<value type="double" value="{part / 255}"/>' for part in (*BAR_COLOUR, 255))}
  </property>
  <property name="plugin-ids" type="array"><value type="int" value="1"/><value type="int" value="2"/></property>
</property></property>
<property name="plugins" type="empty">
  <property name="plugin-1" type="string" value="separator">
    <property name="expand" type="bool" value="true"/>
    <property name="style" type="uint" value="0"/>
  </property>
  <property name="plugin-2" type="string" value="systray"/>
</property>
"""
# A session of one program, which tells how the session is reached.
SESSION = """<property name="sessions" type="empty"><property name="Failsafe" type="empty">
  <property name="IsFailsafe" type="bool" value="true"/>
  <property name="Count" type="int" value="1"/>
  <property name="Client0_Command" type="array"><value type="string" value="sh"/><value type="string" value="-c"/>
    <value type="string" value="echo $SESSION_MANAGER &gt; {file}.part; mv {file}.part {file}; exec sleep 1000"/>
  </property>
</property></property>
"""
SESSION_MANAGER, SESSION_MANAGER_PATH = "org.xfce.SessionManager", "/org/xfce/SessionManager"
DUNST = ("[global]\nmonitor = 0\nhistory_length = 50\nstack_duplicates = false\nsticky_history = true\nmarkup = full\n"
         "enable_recursive_icon_lookup = true\nicon_theme = hicolor\n")
NOT_OURS = ("WAYLAND_DISPLAY", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION",
            "SESSION_MANAGER", "QT_QPA_PLATFORM")
FOLDERS = {"HOME": "home", "XDG_CONFIG_HOME": "home/.config", "XDG_CACHE_HOME": "home/.cache",
           "XDG_DATA_HOME": "home/.local/share", "XDG_RUNTIME_DIR": "run"}
NoAnswer = GLib.Error
AT_SPI_LAUNCHERS = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")


class Failure(AssertionError):
    """What a test expected did not come."""


def require(*programs):
    """Skips unless every program is installed."""
    missing = [program for program in programs if shutil.which(program) is None]
    if missing:
        raise unittest.SkipTest("not installed: " + ", ".join(missing))


def is_sanitized(program):
    """Whether a program was built with the address sanitizer: its memory is then the sanitizer's."""
    return b"__asan_init" in Path(program).read_bytes()


class Desktop(SessionBus, XScreen):
    """One X server and one session bus, with what runs on them."""

    def __init__(self, size=(1280, 800)):
        self.size = size
        self.env = {key: value for key, value in os.environ.items() if key not in NOT_OURS}
        self._processes = []

    def __enter__(self):
        self.root = Path(tempfile.mkdtemp(prefix="vorna-desktop-"))
        for variable, folder in FOLDERS.items():
            (self.root / folder).mkdir(parents=True, exist_ok=True, mode=0o700)
            self.env[variable] = str(self.root / folder)
        try:
            self.begin()
        except BaseException:
            self.__exit__()
            raise
        return self

    def begin(self):
        self._start_x_server()
        self._start_bus()

    def __exit__(self, *_):
        self.let_go_of_x()
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
        process = subprocess.Popen([str(word) for word in command], start_new_session=True, cwd=self.root,
                                   env={**self.env, **(env or {})},
                                   **{"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log, **options})
        process.log = log
        self._processes.append(process)
        return process

    def process(self, name):
        """The last program of that name that was started and runs."""
        return [one for one in self._processes if one.args[0] == name and one.poll() is None][-1]

    def output(self, process):
        """What a started program has printed so far."""
        return Path(process.log.name).read_text(errors="replace")

    def stop(self, process, how=signal.SIGTERM):
        """Ends a started program with its children; by force if it does not go within three seconds."""
        for sign in (how, signal.SIGKILL):
            with contextlib.suppress(ProcessLookupError, subprocess.TimeoutExpired):
                os.killpg(process.pid, sign)
                process.wait(timeout=3)

    def kill(self, process):
        """Ends a started program as a crash does."""
        self.stop(process, signal.SIGKILL)

    def run(self, *command, timeout=30):
        """Runs a program to its end and returns what it printed."""
        result = subprocess.run([str(word) for word in command], env=self.env, capture_output=True, text=True,
                                timeout=timeout)
        if result.returncode != 0:
            raise Failure(f"{command[0]} failed: {result.stderr.strip()}")
        return result.stdout

    @staticmethod
    def wait_for(condition, what, within=30.0, every=0.02):
        """Waits until `condition()` is true and returns its value; else fails and says what did not come."""
        end = time.monotonic() + within
        while True:
            while GLib.MainContext.default().iteration(False):
                pass
            value = condition()
            if value:
                return value
            if time.monotonic() > end:
                raise Failure(f"not within {within:g} s: {what}")
            time.sleep(every)

    def cpu_seconds(self, process):
        """Processor time that a started program has used."""
        times = psutil.Process(process.pid).cpu_times()
        return times.user + times.system

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
        self.env["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={self.root}/run/bus"
        self.start(["dbus-daemon", "--session", "--nofork", f"--address={self.env['DBUS_SESSION_BUS_ADDRESS']}"])
        self.wait_for((self.root / "run/bus").exists, "the session bus")

    def start_window_manager(self, compositing=False):
        """xfwm4, ready when it has announced itself, and its compositor too."""
        self.start(["xfwm4", "--compositor=" + ("on" if compositing else "off")])
        self.wait_for(lambda: self.root_windows("_NET_SUPPORTING_WM_CHECK"), "the window manager")
        if compositing:
            self.wait_for(lambda: self.x.get_selection_owner(self.x.get_atom("_NET_WM_CM_S0")), "the compositor")

    def start_xfce_panel(self):
        """xfce4-panel along the upper edge with one tray, a host both for status notifiers and for XEmbed."""
        self._configure_xfce("xfce4-panel", BAR)
        return self.start(["xfce4-panel", "--disable-wm-check"])

    def _configure_xfce(self, program, properties):
        folder = Path(self.env["XDG_CONFIG_HOME"]) / "xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"{program}.xml").write_text(f'<channel name="{program}" version="1.0">\n{properties}</channel>\n')

    def start_session(self):
        """Xfce's session manager; what is to take part finds its address in the environment."""
        address = self.root / "session"
        self._configure_xfce("xfce4-session", SESSION.format(file=address))
        session = self.start(["xfce4-session"])
        self.wait_for(address.exists, "the session manager")
        self.env["SESSION_MANAGER"] = address.read_text().strip()
        return session

    def session_members(self):
        return len(self.call(SESSION_MANAGER, SESSION_MANAGER_PATH, "org.xfce.Session.Manager.ListClients")[0])

    def log_out(self):
        """Asks everybody to save, and ends the session once all have."""
        self.call(SESSION_MANAGER, SESSION_MANAGER_PATH, "org.xfce.Session.Manager.Logout", "(bb)", False, False)

    def start_tray(self):
        """The Xfce panel, once it shows status notifier items."""
        panel = self.start_xfce_panel()
        self.wait_for(self.status_notifier_host_is_there, "the panel's host")
        return panel

    def item_in_bar(self):
        """Where the only item in the Xfce panel is, once it is drawn there."""
        x, y = self.size[0] - BAR_HEIGHT // 2, BAR_HEIGHT // 2
        self.wait_for(lambda: len(self.colours(x - 4, y - 8, 8, 16)) > 1, "the item to be drawn in the panel")
        return x, y

    def start_trayer(self, align="right"):
        """trayer along the upper edge: a tray for XEmbed alone."""
        require("trayer")
        return self.start(["trayer", "--edge", "top", "--align", align, "--widthtype", "request", "--height",
                           BAR_HEIGHT, "--transparent", "true", "--alpha", "0", "--tint", "0x303030"])

    def start_notifications(self):
        """dunst, which keeps what it was told until it is asked to forget."""
        (self.root / "dunstrc").write_text(DUNST)
        self.start(["dunst", "-conf", self.root / "dunstrc"])
        self.wait_for(lambda: NOTIFICATIONS in self.bus_names(), "the notification server")

    def notifications(self):
        """Every notification, the first one first: (number, application, title, body). None stays on screen."""
        commands = "org.dunstproject.cmd0."
        self.call(NOTIFICATIONS, NOTIFICATIONS_PATH, commands + "NotificationCloseAll")
        entries = self.call(NOTIFICATIONS, NOTIFICATIONS_PATH, commands + "NotificationListHistory")[0]
        return sorted((entry["id"], entry["appname"], entry["summary"], entry["body"]) for entry in entries)

    def start_accessibility(self):
        """The accessibility bus; start it before the programs that a `ScreenReader` is to read."""
        launcher = next(filter(os.path.exists, AT_SPI_LAUNCHERS), None)
        if launcher is None:
            raise unittest.SkipTest("no accessibility bus")
        self.env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.start([launcher, "--launch-immediately"])
        self.wait_for(lambda: "org.a11y.Bus" in self.bus_names(), "the accessibility bus")
