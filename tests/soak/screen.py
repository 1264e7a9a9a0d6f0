"""What the X server knows of one process, and a user's hands: keys and clicks."""

import collections

from Xlib import XK, X, Xatom, display, error
from Xlib.ext import res, xtest


class Screen:
    """The windows and resources of one process, to be named with `follow()`."""

    def __init__(self, name):
        self._display = display.Display(name)
        self._root = self._display.screen().root
        self._clients = []

    def follow(self, pid):
        """From now on it is about this process, which has to be on the screen already."""
        specs = [{"client": 0, "mask": res.LocalClientPIDMask}]
        owners = self._display.res_query_client_ids(specs).ids
        bases = [one.spec.client for one in owners if pid in one.value]
        self._clients = [client for client in self._display.res_query_clients().clients
                         if any(base & ~client.resource_mask == client.resource_base for base in bases)]

    def close(self):
        self._display.close()

    def resources(self):
        """How many of each kind the process holds on the server, and the bytes of its pixmaps."""
        found = collections.Counter()
        for client in self._clients:
            for kind in self._display.res_query_client_resources(client.resource_base).types:
                found[self._display.get_atom_name(kind.resource_type)] += kind.count
            answer = self._display.res_query_client_pixmap_bytes(client.resource_base)
            found["pixmap bytes"] += answer.bytes
        return found

    def popup(self):
        """The process's window on the screen that no window manager manages and that has a title, or nothing."""
        for window in self._root.query_tree().children:
            try:
                if (self._is_ours(window.id) and window.get_attributes().map_state == X.IsViewable
                        and window.get_wm_name()):
                    return window
            except error.BadWindow:
                continue
        return None

    def managed(self):
        """The process's first window in the window manager's list, or nothing."""
        return next((self._display.create_resource_object("window", number)
                     for number in self._windows("_NET_CLIENT_LIST") if self._is_ours(number)), None)

    def has_keyboard(self, window):
        return self._windows("_NET_ACTIVE_WINDOW")[:1] == [window.id]

    @staticmethod
    def is_painted(window, within):
        """Whether there is the window, and a rectangle of it shows more than one colour."""
        if window is None:
            return False
        try:
            pixels = window.get_image(*within, X.ZPixmap, 0xffffffff).data
        except (error.BadMatch, error.BadDrawable):
            return False
        return len({pixels[at:at + 4] for at in range(0, len(pixels), 4)}) > 1

    def press(self, name):
        code = self._display.keysym_to_keycode(XK.string_to_keysym(name))
        self._send((X.KeyPress, code), (X.KeyRelease, code))

    def click(self, x, y):
        xtest.fake_input(self._display, X.MotionNotify, x=x, y=y)
        self._send((X.ButtonPress, 1), (X.ButtonRelease, 1))

    def _send(self, *events):
        for kind, detail in events:
            xtest.fake_input(self._display, kind, detail)
        self._display.sync()

    def _is_ours(self, number):
        return any(number & ~client.resource_mask == client.resource_base for client in self._clients)

    def _windows(self, name):
        found = self._root.get_full_property(self._display.intern_atom(name), Xatom.WINDOW)
        return list(found.value) if found else []
