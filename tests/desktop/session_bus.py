"""The session bus of a desktop: calls of its programs, and the items in its tray."""

from gi.repository import Gio, GLib

BUS, BUS_PATH = "org.freedesktop.DBus", "/org/freedesktop/DBus"
WATCHER, WATCHER_PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"
TIMEOUT_MS = 5000


def connect(address):
    """A connection of its own to the bus at an address."""
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


def call(bus, name, path, method, signature="()", *arguments):
    """Calls "interface.Method" and returns the values of its answer; what it cannot get is a GLib.Error."""
    interface, _, member = method.rpartition(".")
    return bus.call_sync(name, path, interface, member, GLib.Variant(signature, arguments), None,
                         Gio.DBusCallFlags.NONE, TIMEOUT_MS, None).unpack()


def call_all(bus, requests):
    """Makes many calls at once, each (name, path, method, signature, arguments…); the first value of each answer."""
    answers = {}
    for number, (name, path, method, signature, *arguments) in enumerate(requests):
        interface, _, member = method.rpartition(".")
        bus.call(name, path, interface, member, GLib.Variant(signature, tuple(arguments)), None,
                 Gio.DBusCallFlags.NONE, TIMEOUT_MS, None, lambda _, answer, key: answers.update({key: answer}), number)
    while len(answers) < len(requests):
        GLib.MainContext.default().iteration(True)
    return [bus.call_finish(answers[number]).unpack()[0] for number in range(len(requests))]


def get(bus, name, path, interface, key):
    """A property of an object."""
    return call(bus, name, path, PROPERTIES + ".Get", "(ss)", interface, key)[0]


class SessionBus:
    """What a desktop has of its bus; an item in the tray is (service, path)."""

    _connection = None

    @property
    def bus(self):
        if self._connection is None:
            self._connection = connect(self.env["DBUS_SESSION_BUS_ADDRESS"])
        return self._connection

    def call(self, name, path, method, signature="()", *arguments):
        return call(self.bus, name, path, method, signature, *arguments)

    def bus_names(self):
        """Every name on the bus."""
        return self.call(BUS, BUS_PATH, BUS + ".ListNames")[0]

    def reload_services(self):
        """Makes the bus read again which programs it starts for whom."""
        self.call(BUS, BUS_PATH, BUS + ".ReloadConfig")

    def _watcher(self, key):
        """A property of the watcher, or nothing while there is none that answers."""
        try:
            return get(self.bus, WATCHER, WATCHER_PATH, WATCHER, key)
        except GLib.Error:
            return None

    def status_notifier_host_is_there(self):
        """Whether the watcher says that a host shows its items."""
        return bool(self._watcher("IsStatusNotifierHostRegistered"))

    def status_notifier_items(self):
        """The items that the watcher knows."""
        # GNOME's watcher has an "@" between the two.
        items = [item.replace("@", "").partition("/") for item in self._watcher("RegisteredStatusNotifierItems") or []]
        return [(service, "/" + (path or "StatusNotifierItem")) for service, _, path in items]

    def item_property(self, item, key):
        return get(self.bus, *item, ITEM, key)

    def item_meaning(self, item):
        """What hovering an item says."""
        return self.item_property(item, "ToolTip")[2]

    def activate_item(self, item):
        """The left click of a status notifier host."""
        self.call(*item, ITEM + ".Activate", "(ii)", 0, 0)

    def menu_entries(self, item):
        """The entries of an item's menu, as {label: id}, without those that have no label."""
        menu = self.item_property(item, "Menu")
        _, (_, _, entries) = self.call(item[0], menu, MENU + ".GetLayout", "(iias)", 0, -1, [])
        return {entry["label"].replace("_", ""): number for number, entry, _ in entries if "label" in entry}

    def choose_menu_entry(self, item, label):
        self.call(item[0], self.item_property(item, "Menu"), MENU + ".Event", "(isvu)", self.menu_entries(item)[label],
                  "clicked", GLib.Variant("i", 0), 0)
