"""What the two windows say, as (role, name) of everything in them that contains nothing else, in reading order."""

import platform

LABEL, BUTTON, CHOICE, TAB = "label", "button", "choice", "tab"
USABLE, SEEN = {"enabled", "sensitive"}, {"showing", "visible"}
DAYPARTS = ["Dawn", "Day", "Dusk", "Night"]
TOOL_BUTTONS = ["Desk backup now", "Sync via iCloud"]
BUTTONS_BEFORE_AUTO = ["Refresh", "Console", "Agents", "Facet", *TOOL_BUTTONS]
BUTTONS_AFTER_AUTO = [*DAYPARTS, "Test notification", "Settings & permissions", "Quit vorna"]
RUNNING = "Running vorna…"

HEARTBEAT = ["desktop", "heartbeat", "--json"]
BACKUP = ["desk", "backup"]
SYNC = ["desk", "sync", "push", "--via", "icloud"]
SIGN_IN = ["auth", "login", "--surface", "macos", "--yes"]

ARCHITECTURE = platform.machine().replace("aarch64", "arm64") + " · Linux"
COPYABLE = ["http://127.0.0.1:43105", "vorna server start", "vorna services start",
            "Start bridge: vorna server start"]
TABS = ["Bridge", "Permissions", "Daypart", "About"]
SIGN_IN_BUTTON = "Sign in with Google Workspace"
OPEN = "Open System Settings"
FOLLOW = "Follow clock (auto)"
FOLLOWING = "Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"
LINKS = {"Open Console": "/dashboard", "Open Agents": "/dashboard/agents", "Download page": "/download"}
SETTINGS_BUTTONS = ["Poll now", SIGN_IN_BUTTON, OPEN, FOLLOW, *LINKS]
UNKNOWN = "Check in System Settings"
PERMISSIONS = [
    ("Notifications", "Granted", "WARDEN alerts, vote requests, desk events"),
    ("Accessibility", UNKNOWN, "Optional UI automation (gated features only)"),
    ("Automation (Apple Events)", UNKNOWN, "Control iTerm / Terminal when recovering desk"),
    ("Full Disk Access", UNKNOWN, "Optional deep read of ~/dev/logs and protected paths"),
    ("Developer Tools", UNKNOWN, "Xcode CLT / debugging attach for agent tooling"),
    ("Local Network", UNKNOWN, "Talk to vorna bridge on 127.0.0.1 and .vorna.localhost"),
]
ONLINE = ("Online", "running · 3/4 sites", "answers on port 5432")


def plain(name):
    """A name without what is different on each machine and at each time."""
    if name.startswith("Updated "):
        return "Updated"
    if name.startswith("v") and name.endswith(tuple(DAYPARTS)):
        return "version · " + name.rpartition(" · ")[2]
    return "version (build)" if name.startswith("v") and "(build " in name else name


def rows(names, **roles):
    """(role, name) of each; what is no control is a label."""
    return [(roles.get(name, LABEL), name) for name in names]


def panel_rows(checks, services, error=(), result=(), auto=LABEL):
    names = [*checks, *error, "Updated", "SERVICES", *services, *BUTTONS_BEFORE_AUTO[:4], "MAC → MAC", *TOOL_BUTTONS,
             *result, "DAYPART", "Auto", *BUTTONS_AFTER_AUTO]
    buttons = dict.fromkeys(BUTTONS_BEFORE_AUTO + BUTTONS_AFTER_AUTO, BUTTON)
    return rows(names, **{**buttons, **dict.fromkeys(DAYPARTS, CHOICE), "Auto": auto})


def well_rows(daypart="Day", result=(), auto=LABEL):
    """The panel with the usual snapshot."""
    checks = ["vorna", "version · " + daypart, "ok", "Bridge", "online · :43105", "ok", "Caddy", "running · 3/4 sites",
              "ok", "Postgres", "answers on port 5432", "ok", "LOAD", "1.73", "MEMORY", "64%", "DISK",
              "71% · 138 GB free"]
    services = ["ok", "caddy.process", "running", "ok", "postgres", "answers on port 5432"]
    return panel_rows(checks, services, result=result, auto=auto)


def offline_rows(error):
    """The panel where no bridge answers."""
    checks = ["vorna", "version · Day", "unknown", "Bridge", "offline", "not ok", "Caddy", "bridge unreachable",
              "not ok", "Postgres", "—", "not ok", "LOAD", "—", "MEMORY", "—", "DISK", "—"]
    return panel_rows(checks, ["Start bridge: vorna server start"], error=[error])


def settings_rows(names):
    return [(TAB, tab) for tab in TABS] + rows(names, **dict.fromkeys(SETTINGS_BUTTONS, BUTTON),
                                               **dict.fromkeys(DAYPARTS, CHOICE))


def bridge_rows(state="Offline", caddy="—", postgres="—", account="Not signed in"):
    return settings_rows([
        "Local bridge", "URL", "http://127.0.0.1:43105", "Status", "ok" if state == "Online" else "not ok", state,
        "Caddy", caddy, "Postgres", postgres, "Poll now",
        "Account", "Desktop login", account, SIGN_IN_BUTTON,
        "After a successful login the web dashboard hides Download for Mac.",
        "Start bridge", "vorna server start", "or", "vorna services start",
        "Bridge is the Python FastAPI process on port 43105 (not the legacy 43003 default)."])


def permission_rows(linked=()):
    names = ["Grant only what you need for WARDEN, desk recover, and agent tooling."]
    for row in PERMISSIONS:
        names += [*row, OPEN] if row[0] in linked else row
    return settings_rows(names)


def daypart_rows(last=FOLLOWING):
    return settings_rows(["Appearance", "Daypart", *DAYPARTS, last])


ABOUT_ROWS = settings_rows([
    "App", "vorna for Linux", "Version", "version (build)", "Architecture", ARCHITECTURE,
    "Role", "Native menu bar companion for developer monitoring, notifications, and deep system permissions. "
    "Orchestration stays in the vorna CLI; agents live in ~/dev/agents.",
    "Links", *LINKS])
