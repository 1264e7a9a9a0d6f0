"""The whole on a real desktop: the companion in a real tray, a bridge with real figures, and real services to see."""

import desktop
import services
from companion import BRIDGE_PORT, PANEL, DesktopTest, skip_unless_possible
from stand_in import StandInBridge

SITES = """
http://plain.localhost:{1} {
    respond "hello"
}
http://broken.localhost:{1} {
    reverse_proxy 127.0.0.1:1
}
https://secret.localhost:{2} {
    tls internal
    respond "hello"
}
"""
FIGURES = {"LOAD": r"^\d+\.\d\d$", "MEMORY": r"^\d+%$", "DISK": r"^\d+% · \d+ GB free$"}


def setUpModule():
    skip_unless_possible()
    services.skip_unless_installed()


class PanelOnADesktop(DesktopTest):
    def setUp(self):
        self.desk = self.enterContext(desktop.Desktop())
        self.desk.start_window_manager()
        self.desk.start_accessibility()

    def start_real_services(self):
        self.caddy, name, admin = services.start_caddy(self.desk, SITES)
        self.postgres, self.port = services.start_postgres(self.desk)
        self.log_before = self.desk.output(self.postgres)
        self.bridge = StandInBridge(port=BRIDGE_PORT, caddy_process=name, caddy_admin=admin, postgres_port=None,
                                    environment={"PGPORT": str(self.port)})
        self.addCleanup(self.bridge.stop)

    def after(self, label):
        """What follows a label in the panel, up to two texts."""
        texts = self.reader.texts(PANEL)
        return texts[texts.index(label) + 1 :][:2] if label in texts else []

    def wait_for_row(self, label, value, state):
        self.wait_for_equal(lambda: self.after(label), [value, state], label)

    def header_state(self):
        """What the dot of the header says; it follows the two texts at the top."""
        return self.reader.texts(PANEL)[2]

    def check_figures(self):
        for title, pattern in FIGURES.items():
            self.assertRegex(self.after(title)[0], pattern)

    def test_what_stops_is_seen_to_stop(self):
        """All is well, then Caddy stops, then PostgreSQL, then the bridge."""
        self.start_real_services()
        self.desk.start_tray()
        self.start_companion()
        self.desk.activate_item(self.item())
        self.check_within(self.wait_for_panel(), (0, 0, *self.desk.size))
        self.check_all_is_well()
        self.photograph("panel-well")

        self.desk.stop(self.caddy)
        self.wait_for_row("Caddy", "not running", "not ok")
        self.assertEqual(self.header_state(), "down")
        self.assertEqual(self.after("Postgres")[1], "ok")
        self.assertEqual(self.desk.output(self.postgres), self.log_before)
        self.desk.stop(self.postgres)
        self.wait_for_row("Postgres", "connection refused", "not ok")
        self.photograph("panel-stopped")

        free = self.after("DISK")[0].partition(" ")[2]
        self.bridge.stop()
        self.wait_for_row("Caddy", "bridge unreachable", "not ok")
        self.assertEqual(self.after("Bridge"), ["offline", "not ok"])
        self.assertEqual(self.header_state(), "unknown")
        self.check_figures()
        self.assertEqual(self.after("DISK")[0].partition(" ")[2], free)
        self.reader.wait_for_text("Start bridge: vorna server start", PANEL)
        self.photograph("panel-bridge-stopped")

        self.desk.activate_item(self.item())
        self.wait_for(lambda: not self.panels(), "the panel to close")
        self.check_alive()

    def check_all_is_well(self):
        self.wait_for_row("Bridge", "online · :43105", "ok")
        self.wait_for_row("Caddy", "running · 2/3 sites", "ok")
        self.wait_for_row("Postgres", f"answers on port {self.port}", "ok")
        self.assertEqual(self.header_state(), "ok")
        self.check_figures()
        texts = self.reader.texts(PANEL)
        self.assertLessEqual({"caddy.process", "caddy.admin", "postgres"}, set(texts))
        self.assertFalse([text for text in texts if text.startswith("site.")])
