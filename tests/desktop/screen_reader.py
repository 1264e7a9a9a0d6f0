"""Reads and presses what a process shows, the way a screen reader does: over the accessibility bus alone.

    desk.start_accessibility()
    companion = desk.start(["build/dev/vorna-companion"])
    with ScreenReader(desk, companion.pid) as reader:
        reader.wait_for_text("offline")
        reader.press("Refresh")

Run as a program it is the reader's other half, which lives in the desktop's environment: it takes requests as lines
of JSON and answers each with one line.
"""

import json
import subprocess
import sys

PYTHON = "/usr/bin/python3"
PRESSING = ("press", "toggle")
DESKTOP_COORDINATES = 0
ATTEMPTS = 5  # what goes away while it is read makes the reading fail


class ScreenReader:
    """What one process shows; a `window` narrows a question to the window of that title."""

    def __init__(self, desk, pid):
        self._desk = desk
        self._pid = pid
        self._driver = subprocess.Popen([PYTHON, "-B", __file__], env=desk.env, text=True, bufsize=1,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self._driver.kill()
        self._driver.communicate()

    def _ask(self, what, window=None, **details):
        request = {"what": what, "pid": self._pid, "window": window, **details}
        self._driver.stdin.write(json.dumps(request) + "\n")
        line = self._driver.stdout.readline()
        if not line:
            raise AssertionError("the accessibility bus is gone")
        answer = json.loads(line)
        if "error" in answer:
            raise AssertionError(answer["error"])
        return answer["value"]

    def is_there(self):
        """Whether the process is on the accessibility bus at all, with windows or without."""
        return self._ask("presence")

    def windows(self):
        """The titles of the windows that show."""
        return self._ask("windows")

    def tree(self, window=None):
        """Everything that shows, depth first: {"depth", "role", "name", "states"}."""
        return self._ask("tree", window)

    def details(self, window=None):
        """The tree, and of each element also {"place", "actions", "children"}; the last is a number."""
        return self._ask("details", window)

    def texts(self, window=None):
        """The names of everything that shows and contains nothing else, in reading order."""
        return self._ask("texts", window)

    def states(self, name, window=None):
        """The states of the first element of that name that shows, else nothing."""
        return next((set(node["states"]) for node in self.tree(window) if node["name"] == name), None)

    def is_enabled(self, name, window=None):
        """Whether a button of that name shows and can be pressed."""
        return any(node["role"] == "push button" and node["name"] == name and "enabled" in node["states"]
                   for node in self.tree(window))

    def focused(self, window=None):
        """The name of the innermost element that has the keyboard focus."""
        return self._ask("focused", window)

    def place(self, name, window=None):
        """Where the first element of that name is on the screen: x, y, width, height."""
        return self._ask("place", window, name=name)

    def press(self, name, window=None, nth=0):
        """Presses the button, tab or choice of that name by its accessible action; fails where it has none."""
        self._ask("press", window, name=name, nth=nth)

    def wait_for_text(self, text, window=None, within=10.0):
        """Waits until a text shows."""
        self._desk.wait_for(lambda: text in self.texts(window), f"the text {text!r}", within)

    def wait_for_window(self, window, within=10.0):
        """Waits until a window shows that has something in it."""
        self._desk.wait_for(lambda: self.texts(window), f"the window {window!r}", within)

    def wait_for_no_window(self, window, within=10.0):
        """Waits until no window of that title shows."""
        self._desk.wait_for(lambda: window not in self.windows(), f"the window {window!r} to go", within)


class Element:
    """One element that shows, asked over the bus for no more than is needed."""

    def __init__(self, node, depth, states, children):
        self.node = node
        self.depth = depth
        self.states = states
        self.children = children

    @property
    def name(self):
        return self.node.name

    def description(self):
        return {"depth": self.depth, "role": self.node.getRoleName(), "name": self.name, "states": self.states}

    def details(self):
        return {**self.description(), "place": self.place(), "actions": self.actions(), "children": self.children}

    def actions(self):
        try:
            actions = self.node.queryAction()
        except NotImplementedError:
            return []
        return [actions.getName(index) for index in range(actions.nActions)]

    def place(self):
        extents = self.node.queryComponent().getExtents(DESKTOP_COORDINATES)
        return [extents.x, extents.y, extents.width, extents.height]

    def pressing(self):
        """The element's actions that press it."""
        try:
            actions = self.node.queryAction()
        except NotImplementedError:
            return []
        return [(actions, index) for index in range(actions.nActions) if actions.getName(index).lower() in PRESSING]


class Driver:
    """Answers the requests of one reader."""

    def __init__(self):
        import pyatspi
        from gi.repository import Atspi, GLib

        self._pyatspi = pyatspi
        self._gone_meanwhile = (GLib.Error, RuntimeError)
        self._desktop = pyatspi.Registry.getDesktop(0)
        # What is remembered goes stale here: no event loop runs that would hear of changes.
        self._desktop.set_cache_mask(Atspi.Cache.NONE)
        self._program = None
        self._answers = {
            "presence": lambda request: self._find_program(request) is not None,
            "windows": lambda request: [element.name for element in self._windows(request)],
            "tree": lambda request: [element.description() for element in self._everything(request)],
            "details": lambda request: [element.details() for element in self._everything(request)],
            "texts": lambda request: [name for element in self._everything(request) if element.children == 0
                                      and (name := element.name)],
            "focused": lambda request: next((element.name for element in reversed(list(self._everything(request)))
                                             if "focused" in element.states), None),
            "place": lambda request: self._first(request).place(),
        }

    def answer(self, request):
        if request["what"] == "press":
            actions, index = self._reading(self._pressing, request)
            return actions.doAction(index)
        return self._reading(self._answers[request["what"]], request)

    def _reading(self, read, request):
        for attempt in range(ATTEMPTS):
            try:
                return read(request)
            except self._gone_meanwhile:
                if attempt == ATTEMPTS - 1:
                    raise

    def _find_program(self, request):
        if self._program is None:
            self._program = next((program for program in self._desktop
                                  if program is not None and program.get_process_id() == request["pid"]), None)
        return self._program

    def _windows(self, request):
        program = self._find_program(request)
        windows = [] if program is None else self._showing_children(program, program.childCount, 0)
        return [window for window in windows if request["window"] in (None, window.name)]

    def _showing_children(self, node, count, depth):
        for index in range(count):
            child = node.getChildAtIndex(index)
            if child is None:
                continue
            states = [self._pyatspi.stateToString(state) for state in child.getState().getStates()]
            if "showing" in states:
                yield Element(child, depth, states, child.childCount)

    def _everything(self, request):
        waiting = list(self._windows(request))[::-1]
        while waiting:
            element = waiting.pop()
            yield element
            waiting += list(self._showing_children(element.node, element.children, element.depth + 1))[::-1]

    def _first(self, request):
        for element in self._everything(request):
            if element.name == request["name"]:
                return element
        raise LookupError(f"nothing that shows is called {request['name']!r}")

    def _pressing(self, request):
        ways = [way for element in self._everything(request)
                if "enabled" in element.states and element.name == request["name"] for way in element.pressing()]
        if request["nth"] >= len(ways):
            raise LookupError(f"nothing that shows can be pressed as {request['name']!r}")
        return ways[request["nth"]]


def main():
    driver = Driver()
    for line in sys.stdin:
        try:
            answer = {"value": driver.answer(json.loads(line))}
        except LookupError as problem:
            answer = {"error": str(problem.args[0])}
        except Exception as problem:
            answer = {"error": repr(problem)}
        print(json.dumps(answer), flush=True)


if __name__ == "__main__":
    main()
