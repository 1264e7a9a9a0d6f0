"""Reads and presses what a process shows, the way a screen reader does: over the accessibility bus alone.

It remembers nothing, so what it says is what the process says now. Roles are told by their numbers, since their names
differ from release to release.
"""

import contextlib
import dataclasses

from gi.repository import GLib

import session_bus

ACCESSIBLE, ACTION, COMPONENT = (f"org.a11y.atspi.{name}" for name in ("Accessible", "Action", "Component"))
REGISTRY, ROOT = "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"
STATE_CHANGES = "object:state-changed"
ROLES = {29: "label", 37: "tab", 43: "button", 44: "choice"}
STATES = {1: "active", 4: "checked", 8: "enabled", 11: "focusable", 12: "focused", 23: "selected", 24: "sensitive",
          25: "showing", 30: "visible"}
USABLE = {"enabled", "sensitive"}
PRESSING = {"press", "toggle"}
DESKTOP_COORDINATES = 0
ATTEMPTS = 5  # what goes away while it is read makes the reading fail


@dataclasses.dataclass
class Element:
    """One element that shows."""

    address: tuple  # service and path
    depth: int
    name: str
    role: str
    states: set
    children: list


class ScreenReader:
    """What one process shows; a `window` narrows a question to the window of that title."""

    def __init__(self, desk, pid):
        self._desk = desk
        self._pid = pid
        address, = desk.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress")
        self._bus = session_bus.connect(address)
        self._service = None

    def _ask(self, address, method, signature="()", *arguments):
        return session_bus.call(self._bus, *address, method, signature, *arguments)[0]

    def is_there(self):
        """Whether the process is on the accessibility bus at all, with windows or without."""
        if self._service is None:
            services = {service for service, _ in self._ask((REGISTRY, ROOT), ACCESSIBLE + ".GetChildren")}
            self._service = next((service for service in services if self._pid_of(service) == self._pid), None)
        return self._service is not None

    def _pid_of(self, service):
        try:
            return self._ask((session_bus.BUS, session_bus.BUS_PATH), session_bus.BUS + ".GetConnectionUnixProcessID",
                             "(s)", service)
        except GLib.Error:
            return None

    def _showing(self, addresses, depth):
        """Those of the elements that show, all asked at once."""
        questions = ((ACCESSIBLE + ".GetState", "()"), (session_bus.PROPERTIES + ".Get", "(ss)", ACCESSIBLE, "Name"),
                     (ACCESSIBLE + ".GetRole", "()"), (ACCESSIBLE + ".GetChildren", "()"))
        answers = session_bus.call_all(self._bus, [(*address, *question) for address in addresses
                                                   for question in questions])
        for number, address in enumerate(addresses):
            (bits, _), name, role, children = answers[4 * number : 4 * number + 4]
            states = {name for bit, name in STATES.items() if bits >> bit & 1}
            if "showing" in states:
                yield Element(address, depth, name, ROLES.get(role, role), states, children)

    def _windows(self):
        return list(self._showing(self._ask((self._service, ROOT), ACCESSIBLE + ".GetChildren"), 0))

    def _everything(self, window=None):
        """What shows, depth first, read level by level."""
        found = level = [one for one in self._windows() if window in (None, one.name)]
        while level:
            inner = list(self._showing([child for one in level for child in one.children], level[0].depth + 1))
            for one in level:
                place = found.index(one) + 1
                found[place:place] = [child for child in inner if child.address in one.children]
            level = inner
        return found

    def _read(self, read, *arguments):
        """What a question finds; nothing while the process is not there."""
        for attempt in range(ATTEMPTS):
            try:
                return read(*arguments) if self.is_there() else []
            except GLib.Error:
                if attempt == ATTEMPTS - 1:
                    raise

    def tree(self, window=None):
        """Everything that shows, depth first."""
        return self._read(self._everything, window)

    def windows(self):
        """The titles of the windows that show."""
        return [window.name for window in self._read(self._windows)]

    def texts(self, window=None):
        """The names of everything that shows and contains nothing else, in reading order."""
        return [element.name for element in self.tree(window) if not element.children and element.name]

    def _named(self, name, window):
        return [element for element in self.tree(window) if element.name == name]

    def focused(self, window=None):
        """The name of the innermost element that has the keyboard focus."""
        return next((element.name for element in reversed(self.tree(window)) if "focused" in element.states), None)

    def actions(self, elements):
        """The names of the actions of each of some elements."""
        interfaces = session_bus.call_all(self._bus, [(*element.address, ACCESSIBLE + ".GetInterfaces", "()")
                                                      for element in elements])
        return [[name.lower() for name, *_ in self._ask(element.address, ACTION + ".GetActions")]
                if ACTION in found else [] for element, found in zip(elements, interfaces)]

    def places(self, elements):
        """Where each of some elements is on the screen: (x, y, width, height)."""
        return session_bus.call_all(self._bus, [(*one.address, COMPONENT + ".GetExtents", "(u)", DESKTOP_COORDINATES)
                                                for one in elements])

    def place(self, name, window=None):
        """Where the first element of that name is."""
        return self._read(lambda: self.places(self._named(name, window)[:1])[0])

    def press(self, name, window=None, nth=0):
        """Presses the button, tab or choice of that name by its accessible action; fails where it has none."""
        usable = [element for element in self._named(name, window) if USABLE <= element.states]
        pressable = [(element.address, number) for element, actions in zip(usable, self.actions(usable))
                     for number, action in enumerate(actions) if action in PRESSING]
        if nth >= len(pressable):
            raise AssertionError(f"nothing that shows can be pressed as {name!r}")
        address, number = pressable[nth]
        self._ask(address, ACTION + ".DoAction", "(i)", number)

    @contextlib.contextmanager
    def announcements(self, window):
        """Yields a list of what the window announces from then on: (name, state, whether it is so)."""
        names = {element.address[1]: element.name for element in self.tree(window)}
        heard = []

        def hear(_bus, _sender, path, _interface, _signal, news):
            heard.append((names.get(path), news.unpack()[0], bool(news.unpack()[1])))

        session_bus.call(self._bus, REGISTRY, "/org/a11y/atspi/registry", REGISTRY + ".RegisterEvent", "(sass)",
                         STATE_CHANGES, [], "")
        number = self._bus.signal_subscribe(self._service, "org.a11y.atspi.Event.Object", "StateChanged", None, None, 0,
                                            hear)
        yield heard
        self._bus.signal_unsubscribe(number)

    def wait_for_text(self, text, window=None):
        """Waits until a text shows."""
        self._desk.wait_for(lambda: text in self.texts(window), f"the text {text!r}")

    def wait_for_window(self, window):
        """Waits until a window shows that has something in it."""
        self._desk.wait_for(lambda: self.texts(window), f"the window {window!r}")

    def wait_for_no_window(self, window):
        """Waits until no window of that title shows."""
        self._desk.wait_for(lambda: window not in self.windows(), f"the window {window!r} to go")
