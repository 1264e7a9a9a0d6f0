"""The X screen of a desktop: the windows of a process and what it holds there, colours, pointer and keyboard."""

import collections
import contextlib

from Xlib import X, display, error, ext
from Xlib.ext import res

ext.__extensions__ = [("X-Resource", "res")]  # of the others some have events whose numbers clash on XWayland
GONE = (error.BadWindow, error.BadDrawable, error.BadMatch)


class XScreen:
    """What a desktop has of its X server."""

    _display = None

    @property
    def x(self):
        if self._display is None:
            self._display = display.Display(self.env["DISPLAY"])
        return self._display

    def let_go_of_x(self):
        if self._display is not None:
            with contextlib.suppress(error.ConnectionClosedError):
                self._display.close()

    @property
    def _root(self):
        return self.x.screen().root

    # Windows

    def _clients(self, pid):
        """The connections of a process to the X server, each with the numbers of what it has made."""
        owners = self.x.res_query_client_ids([{"client": 0, "mask": res.LocalClientPIDMask}]).ids
        bases = {one.spec.client for one in owners if pid in one.value}
        return [client for client in self.x.res_query_clients().clients
                if any(base & ~client.resource_mask == client.resource_base for base in bases)]

    def _windows(self, pid):
        """Every window of a process that is on the screen or was."""
        clients = self._clients(pid)
        waiting = [self._root]
        while waiting:
            window = waiting.pop()
            try:
                waiting += reversed(window.query_tree().children)
            except GONE:
                continue
            if any(window.id & ~client.resource_mask == client.resource_base for client in clients):
                yield window

    def windows(self, pid, hidden=False):
        """The top-level and embedded windows of a process that show: {window: (x, y, width, height)} on the screen.

        With `hidden`, those that do not show as well.
        """
        found = {}
        for window in self._windows(pid):
            try:
                shows = window.get_attributes().map_state == X.IsViewable
                if window.get_full_property(self.x.intern_atom("_NET_WM_PID"), X.AnyPropertyType) and (shows or hidden):
                    size, place = window.get_geometry(), self._root.translate_coords(window, 0, 0)
                    found[window] = (place.x, place.y, size.width, size.height)
            except GONE:
                continue
        return found

    def window_of(self, title):
        """The window manager's window of that title, or nothing."""
        for window in self.root_windows("_NET_CLIENT_LIST"):
            with contextlib.suppress(*GONE):
                if window.get_wm_name() == title:
                    return window

    def place_of(self, title):
        """Where the window of that title is on the screen, or nothing."""
        window = self.window_of(title)
        with contextlib.suppress(*GONE):
            if window:
                size, place = window.get_geometry(), self._root.translate_coords(window, 0, 0)
                return place.x, place.y, size.width, size.height

    def is_embedded(self, window):
        """Whether a window is inside another program's."""
        try:
            return window.query_tree().parent != self._root
        except GONE:
            return False

    def root_numbers(self, name):
        """The numbers that a property of the root window lists, such as "_NET_WORKAREA"."""
        found = self._root.get_full_property(self.x.intern_atom(name), X.AnyPropertyType)
        return list(found.value) if found else []

    def root_windows(self, name):
        """The windows that a property of the root window lists, such as "_NET_CLIENT_LIST"."""
        return [self.x.create_resource_object("window", number) for number in self.root_numbers(name)]

    def resources(self, pid):
        """How many of each kind a process holds on the server, and the bytes of its pixmaps."""
        found = collections.Counter()
        for client in self._clients(pid):
            for kind in self.x.res_query_client_resources(client.resource_base).types:
                found[self.x.get_atom_name(kind.resource_type)] += kind.count
            found["pixmap bytes"] += self.x.res_query_client_pixmap_bytes(client.resource_base).bytes
        return found

    # What is seen and done

    def pixels(self, x, y, width=1, height=1, window=None):
        """A rectangle of the screen or of a window, row by row as (red, green, blue); none where it is gone."""
        try:
            data = (window or self._root).get_image(x, y, width, height, X.ZPixmap, 0xffffffff).data
        except GONE:
            return []
        return list(zip(data[2::4], data[1::4], data[0::4]))

    def colours(self, x, y, width=1, height=1, window=None):
        """The colours that are in a rectangle."""
        return set(self.pixels(x, y, width, height, window))

    def _on_screen(self, *words):
        """Runs a program on this X server, whichever the desktop's programs use."""
        self.run("env", "DISPLAY=" + self.x.get_display_name(), *words)

    def click(self, x, y, button=1, times=1, pause_ms=1):
        """Moves the pointer there and clicks."""
        self._on_screen("xdotool", "mousemove", x, y, "click", "--repeat", times, "--delay", pause_ms, button)

    def move_pointer(self, x, y):
        self._on_screen("xdotool", "mousemove", x, y)

    def press(self, *keys):
        """Presses keys by their X names, such as "Escape" and "ctrl+q"."""
        self._on_screen("xdotool", "key", *keys)

    def screenshot(self, path):
        """A picture of the whole screen, as a PNG file."""
        self._on_screen("import", "-window", "root", path)
