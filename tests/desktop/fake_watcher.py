"""A watcher of status notifier items that says it has no host until it is told "host" on its standard input."""

import sys

from gi.repository import Gio, GLib

NAME = "org.kde.StatusNotifierWatcher"
NODE = Gio.DBusNodeInfo.new_for_xml(f"""
<node><interface name="{NAME}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <signal name="StatusNotifierHostRegistered"/>
  <signal name="StatusNotifierHostUnregistered"/>
</interface></node>""")


class Watcher:
    def __init__(self, bus):
        self.bus = bus
        self.host = False
        self.items = []
        bus.register_object("/StatusNotifierWatcher", NODE.interfaces[0], self.call, self.get, None)

    def call(self, _bus, sender, _path, _interface, _method, arguments, invocation):
        self.items.append(sender + "/StatusNotifierItem")
        invocation.return_value(None)
        print("registered", arguments.unpack()[0], flush=True)

    def get(self, _bus, _sender, _path, _interface, name):
        if name == "IsStatusNotifierHostRegistered":
            return GLib.Variant("b", self.host)
        return GLib.Variant("as", self.items)

    def obey(self, *_):
        word = sys.stdin.readline().strip()
        if not word:
            return False
        self.host = word == "host"
        signal = "StatusNotifierHostRegistered" if self.host else "StatusNotifierHostUnregistered"
        self.bus.emit_signal(None, "/StatusNotifierWatcher", NAME, signal, None)
        print("done", word, flush=True)
        return True


if __name__ == "__main__":
    connection = Gio.bus_get_sync(Gio.BusType.SESSION)
    watcher = Watcher(connection)
    Gio.bus_own_name_on_connection(connection, NAME, Gio.BusNameOwnerFlags.NONE,
                                   lambda *_: print("ready", flush=True), None)
    GLib.io_add_watch(sys.stdin.fileno(), GLib.IO_IN | GLib.IO_HUP, watcher.obey)
    GLib.MainLoop().run()
