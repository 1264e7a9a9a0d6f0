"""A pointer and a keyboard for a Wayland compositor that has neither, plugged in for as long as this object lives.

Spoken over the compositor's socket: the protocols wlr-virtual-pointer-unstable-v1 and virtual-keyboard-unstable-v1.
"""

import array
import os
import socket
import struct
import time

DISPLAY = 1
SYNC, GET_REGISTRY = 0, 1
GLOBAL, DONE, ERROR = 0, 0, 0
BIND = 0
CREATE = 0
MOVE_TO, BUTTON, FRAME = 1, 2, 4
KEYMAP, KEY = 0, 1
XKB_V1 = 1
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}
KEYS = {"Escape": 1, "Tab": 15, "Return": 28, "space": 57, "Page_Down": 109}
KEYMAP_TEXT = b"""xkb_keymap {
    xkb_keycodes { include "evdev+aliases(qwerty)" };
    xkb_types { include "complete" };
    xkb_compat { include "complete" };
    xkb_symbols { include "pc+us+inet(evdev)" };
};
\0"""


def _text(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


def _now():
    return int(time.monotonic() * 1000) & 0xffffffff


class WaylandInput:
    """One pointer and one keyboard, on the compositor whose socket is at `path`; `size` is of all outputs together."""

    def __init__(self, path, size):
        self._size = size
        self._last = DISPLAY
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(10)
        self._socket.connect(str(path))
        self._registry = self._new(DISPLAY, GET_REGISTRY)
        self._globals = {}
        self._round_trip()
        seat = self._bind("wl_seat")
        self._pointer = self._new(self._bind("zwlr_virtual_pointer_manager_v1"), CREATE, struct.pack("=I", seat))
        self._keyboard = self._new(self._bind("zwp_virtual_keyboard_manager_v1"), CREATE, struct.pack("=I", seat))
        self._send_keymap()
        self._round_trip()

    def close(self):
        self._socket.close()

    def move(self, x, y):
        self._send(self._pointer, MOVE_TO, struct.pack("=5I", _now(), x, y, *self._size))
        self._send(self._pointer, FRAME)
        self._round_trip()

    def click(self, x, y, button=1):
        self.move(x, y)
        for pressed in (1, 0):
            self._send(self._pointer, BUTTON, struct.pack("=3I", _now(), BUTTONS[button], pressed))
            self._send(self._pointer, FRAME)
        self._round_trip()

    def press(self, *keys):
        for key in keys:
            for pressed in (1, 0):
                self._send(self._keyboard, KEY, struct.pack("=3I", _now(), KEYS[key], pressed))
        self._round_trip()

    # The wire

    def _send(self, target, opcode, payload=b"", descriptors=()):
        message = struct.pack("=II", target, (8 + len(payload)) << 16 | opcode) + payload
        rights = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", descriptors))] if descriptors else []
        self._socket.sendmsg([message], rights)

    def _new(self, target, opcode, before=b""):
        self._last += 1
        self._send(target, opcode, before + struct.pack("=I", self._last))
        return self._last

    def _bind(self, interface):
        return self._new(self._registry, BIND,
                         struct.pack("=I", self._globals[interface]) + _text(interface) + struct.pack("=I", 1))

    def _send_keymap(self):
        descriptor = os.memfd_create("keymap")
        os.write(descriptor, KEYMAP_TEXT)
        self._send(self._keyboard, KEYMAP, struct.pack("=II", XKB_V1, len(KEYMAP_TEXT)), [descriptor])
        os.close(descriptor)

    def _read(self, size):
        data = b""
        while len(data) < size:
            more = self._socket.recv(size - len(data))
            if not more:
                raise AssertionError("the compositor is gone")
            data += more
        return data

    def _round_trip(self):
        """Waits until the compositor has dealt with everything so far, and learns what it offers."""
        answer = self._new(DISPLAY, SYNC)
        while True:
            source, header = struct.unpack("=II", self._read(8))
            payload = self._read((header >> 16) - 8)
            opcode = header & 0xffff
            if (source, opcode) == (answer, DONE):
                return
            if (source, opcode) == (DISPLAY, ERROR):
                raise AssertionError(f"the compositor complains: {payload!r}")
            if (source, opcode) == (self._registry, GLOBAL):
                name, length = struct.unpack_from("=II", payload)
                self._globals[payload[8:8 + length - 1].decode()] = name
