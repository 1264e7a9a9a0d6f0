"""The stand-in bridge against a real Caddy and a real PostgreSQL, where they are installed."""

import sys

from stand_in import ROOT, StandInBridgeTest

sys.path.insert(0, str(ROOT / "tests" / "desktop"))

import services  # noqa: E402

SITES = """
http://plain.localhost:{port} {
    respond "hello"
}
http://broken.localhost:{port} {
    reverse_proxy 127.0.0.1:1
}
https://secret.localhost:SECRET_PORT {
    tls internal
    respond "hello"
}
"""


def setUpModule():
    services.skip_unless_installed()


class RealServices(StandInBridgeTest):
    def test_caddy_is_seen_with_its_sites_and_seen_to_be_gone(self):
        caddy = self.enterContext(services.Caddy(SITES.replace("SECRET_PORT", str(services.free_port()))))
        bridge = self.start(caddy_process=caddy.process_name, caddy_admin=caddy.admin)
        _, document = bridge.get("/monitor/desktop?probe_sites=true")
        seen = {probe["name"]: (probe["ok"], probe["detail"]) for probe in document["services"]}
        self.assertEqual(seen["caddy.process"], (True, "running"))
        self.assertTrue(seen["caddy.admin"][0])
        self.assertEqual(seen["site.plain.localhost"], (True, "HTTP 200"))
        self.assertEqual(seen["site.broken.localhost"], (False, "HTTP 502"))
        self.assertEqual(seen["site.secret.localhost"], (True, "HTTP 200"))
        self.assertEqual((document["caddy_sites_up"], document["caddy_sites_total"]), (2, 3))

        caddy.stop()
        probes = bridge.probes()
        self.assertEqual(probes["caddy.process"]["detail"], "not running")
        self.assertEqual(probes["caddy.admin"]["detail"], "connection refused")
        self.assertFalse([name for name in probes if name.startswith("site.")])

    def test_postgres_is_seen_without_a_trace_in_its_log_and_seen_to_be_gone(self):
        postgres = self.enterContext(services.Postgres())
        before = postgres.log()
        bridge = self.start(postgres_port=postgres.port)
        probe = bridge.probes()["postgres"]
        self.assertEqual((probe["ok"], probe["detail"]), (True, f"answers on port {postgres.port}"))
        self.assertEqual(postgres.log(), before)

        postgres.stop()
        probe = bridge.probes()["postgres"]
        self.assertEqual((probe["ok"], probe["detail"]), (False, "connection refused"))

    def test_postgres_port_is_taken_from_the_environment(self):
        postgres = self.enterContext(services.Postgres())
        bridge = self.start(postgres_port=None, environment={"PGPORT": str(postgres.port)})
        self.assertTrue(bridge.probes()["postgres"]["ok"])
