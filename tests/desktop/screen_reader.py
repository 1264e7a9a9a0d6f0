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
        return [node["name"] for node in self.tree() if node["depth"] == 0]

    def tree(self, window=None):
        """Everything that shows, depth first: {"depth", "role", "name", "states", "children"}."""
        return self._ask("tree", window)

    def texts(self, window=None):
        """The names of everything that shows and contains nothing else, in reading order."""
        return self._ask("texts", window)

    def states(self, name, window=None):
        """The states of the first element of that name that shows, else nothing."""
        return next((set(node["states"]) for node in self.tree(window) if node["name"] == name), None)

    def is_enabled(self, name, window=None):
        """Whether the first button of that name can be pressed."""
        found = [node for node in self.tree(window) if node["name"] == name and node["role"] == "push button"]
        return bool(found) and "enabled" in found[0]["states"]

    def focused(self, window=None):
        """The name of the innermost element that has the keyboard focus."""
        names = [node["name"] for node in self.tree(window) if "focused" in node["states"]]
        return names[-1] if names else None

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

    def answer(self, request):
        if request["what"] == "presence":
            return any(True for _ in self._programs(request))
        found = self._read(request)
        if request["what"] == "tree":
            return [row for _, row in found]
        if request["what"] == "texts":
            return [row["name"] for _, row in found if row["name"] and row["children"] == 0]
        return self._press(request["name"], request["nth"], found)

    def _read(self, request):
        for attempt in range(ATTEMPTS):
            try:
                return [found for window in self._windows(request) for found in self._showing(window, 0)]
            except self._gone_meanwhile:
                if attempt == ATTEMPTS - 1:
                    raise

    def _programs(self, request):
        for program in self._desktop:
            if program is not None and program.get_process_id() == request["pid"]:
                yield program

    def _windows(self, request):
        for program in self._programs(request):
            for window in program:
                if window is not None and request["window"] in (None, window.name):
                    yield window

    def _showing(self, node, depth):
        states = [self._pyatspi.stateToString(state) for state in node.getState().getStates()]
        if "showing" not in states:
            return
        yield node, {"depth": depth, "role": node.getRoleName(), "name": node.name, "states": states,
                     "children": node.childCount}
        for child in node:
            if child is not None:
                yield from self._showing(child, depth + 1)

    @staticmethod
    def _press(name, nth, found):
        pressable = []
        for node, row in found:
            if row["name"] != name or "enabled" not in row["states"]:
                continue
            try:
                actions = node.queryAction()
            except NotImplementedError:
                continue
            pressable += [(actions, index) for index in range(actions.nActions)
                          if actions.getName(index).lower() in PRESSING]
        if nth >= len(pressable):
            raise LookupError(f"nothing that shows can be pressed as {name!r}")
        actions, index = pressable[nth]
        return actions.doAction(index)


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
