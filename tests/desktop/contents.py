"""What the windows say: the panel as (role, name) of all in it that contains nothing else, in reading order."""

LABEL, BUTTON, CHOICE, TAB = "label", "button", "choice", "tab"
USABLE, SEEN = {"enabled", "sensitive"}, {"showing", "visible"}
DAYPARTS = ["Dawn", "Day", "Dusk", "Night"]
TOOL_BUTTONS = ["Desk backup now", "Sync via iCloud"]
BUTTONS_BEFORE_AUTO = ["Refresh", "Console", "Agents", "Facet", *TOOL_BUTTONS]
BUTTONS_AFTER_AUTO = [*DAYPARTS, "Test notification", "Settings & permissions", "Quit vorna"]
RUNNING = "Running vorna…"

HEARTBEAT = ["desktop", "heartbeat", "--json"]
BACKUP = ["desk", "backup"]

COPYABLE = ["http://127.0.0.1:43105", "vorna server start", "vorna services start",
            "Start bridge: vorna server start"]
TABS = ["Bridge", "Permissions", "Daypart", "About"]
OPEN = "Open System Settings"
FOLLOW = "Follow clock (auto)"
FOLLOWING = "Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"


def plain(name):
    """A name without what is different on each machine and at each time."""
    if name.startswith("v") and name.endswith(tuple(DAYPARTS)):
        return "version · " + name.rpartition(" · ")[2]
    return "Updated" if name.startswith("Updated ") else name


def well_rows(daypart="Day", result=(), auto=LABEL):
    """The panel with the usual snapshot: (role, name) of each; what is no control is a label."""
    names = ["vorna", "version · " + daypart, "ok", "Bridge", "online · :43105", "ok", "Caddy", "running · 3/4 sites",
             "ok", "Postgres", "answers on port 5432", "ok", "LOAD", "1.73", "MEMORY", "64%", "DISK",
             "71% · 138 GB free", "Updated", "SERVICES", "ok", "caddy.process", "running", "ok", "postgres",
             "answers on port 5432", *BUTTONS_BEFORE_AUTO[:4], "MAC → MAC", *TOOL_BUTTONS, *result, "DAYPART", "Auto",
             *BUTTONS_AFTER_AUTO]
    buttons = dict.fromkeys(BUTTONS_BEFORE_AUTO + BUTTONS_AFTER_AUTO, BUTTON)
    roles = {**buttons, **dict.fromkeys(DAYPARTS, CHOICE), "Auto": auto}
    return [(roles.get(name, LABEL), name) for name in names]
