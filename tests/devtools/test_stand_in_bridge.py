"""The stand-in bridge as a process of its own, against peers on real sockets."""

import contextlib
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import tempfile
import threading
import time
import unittest

import fake_peers
from fake_peers import serving
from stand_in import StandInBridge

NO_TLS = {"automatic_https": {"disable": True}}


class StandInBridgeTest(unittest.TestCase):
    def start(self, **options):
        bridge = StandInBridge(**options)
        self.addCleanup(bridge.stop)
        return bridge

    def serve(self, server):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        return stack.enter_context(serving(server))

    def start_with_sites(self, hosts_and_statuses, **server_members):
        port = self.serve(fake_peers.sites(hosts_and_statuses))
        config = fake_peers.routes_to(port, hosts_and_statuses, **{**NO_TLS, **server_members})
        admin = self.serve(fake_peers.caddy_admin(config))
        return self.start(caddy_admin=f"127.0.0.1:{admin}")


class Health(StandInBridgeTest):
    def test_answers_200_with_status_ok_and_an_unknown_path_404(self):
        bridge = self.start()
        self.assertEqual(bridge.get("/health"), (200, {"status": "ok"}))
        self.assertEqual(bridge.get("/nothing-here")[0], 404)


class MonitorDocument(StandInBridgeTest):
    def test_has_exactly_the_keys_and_types_of_the_format(self):
        status, document = self.start().get("/monitor/desktop?probe_sites=true")
        self.assertEqual(status, 200)
        self.assertEqual(set(document), {"host", "caddy_sites_up", "caddy_sites_total", "services"})
        texts = {"hostname", "platform"}
        figures = {"cpu_load_1m", "cpu_load_5m", "cpu_load_15m", "memory_used_pct", "disk_used_pct", "disk_free_gb"}
        types = {key: type(value) for key, value in document["host"].items()}
        self.assertEqual(types, {**dict.fromkeys(texts, str), **dict.fromkeys(figures, float)})
        self.assertEqual([type(document[key]) for key in ("caddy_sites_up", "caddy_sites_total")], [int, int])
        for probe in document["services"]:
            self.assertEqual([type(probe[key]) for key in ("name", "ok", "detail", "category")], [str, bool, str, str])
        names = [probe["name"] for probe in document["services"]]
        self.assertEqual(len(names), len(set(names)))

    def test_host_figures_are_those_of_this_machine(self):
        _, document = self.start().get("/monitor/desktop")
        host = document["host"]
        disk = shutil.disk_usage("/")
        self.assertEqual(host["hostname"], socket.gethostname())
        self.assertIn(os.uname().machine, host["platform"])
        self.assertAlmostEqual(host["cpu_load_15m"], os.getloadavg()[2], delta=1.0)
        self.assertAlmostEqual(host["disk_free_gb"], disk.free / 1e9, delta=2.0)
        self.assertTrue(0 < host["memory_used_pct"] < 100)
        self.assertTrue(0 < host["disk_used_pct"] <= 100)


class AbsentServices(StandInBridgeTest):
    def test_are_reported_as_not_ok_with_the_reason_and_leave_no_sites(self):
        _, document = self.start().get("/monitor/desktop?probe_sites=true")
        said = {probe["name"]: (probe["ok"], probe["detail"]) for probe in document["services"]}
        self.assertEqual(said["caddy.process"], (False, "not running"))
        self.assertEqual(said["caddy.admin"], (False, "connection refused"))
        self.assertEqual(said["postgres"], (False, "connection refused"))
        self.assertEqual((document["caddy_sites_up"], document["caddy_sites_total"]), (0, 0))


class CaddyProcess(StandInBridgeTest):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.program = pathlib.Path(folder.name) / f"cad-{os.getpid()}"
        self.program.symlink_to(shutil.which("sleep"))

    def test_is_seen_while_it_runs_and_not_after_it_ended(self):
        bridge = self.start(caddy_process=self.program.name)
        self.assertFalse(bridge.probes()["caddy.process"]["ok"])
        with subprocess.Popen([self.program, "60"]) as process:
            try:
                probe = bridge.probes()["caddy.process"]
            finally:
                process.kill()
        self.assertEqual((probe["ok"], probe["detail"]), (True, "running"))
        self.assertFalse(bridge.probes()["caddy.process"]["ok"])

    def test_is_not_ok_when_it_is_dead_but_not_yet_reaped(self):
        bridge = self.start(caddy_process=self.program.name)
        with subprocess.Popen([self.program, "60"]) as process:
            process.kill()
            os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOWAIT)
            self.assertEqual(bridge.probes()["caddy.process"]["detail"], "not running")


class CaddyAdmin(StandInBridgeTest):
    def test_is_ok_when_it_gives_its_configuration_as_json(self):
        cases = {
            "a configuration": (fake_peers.caddy_admin({}), True, "HTTP 200 on"),
            "none": (fake_peers.caddy_admin(None), True, "HTTP 200 on"),
            "not JSON": (fake_peers.caddy_admin(b"<html>"), False, "does not answer with a configuration"),
            "not HTTP": (fake_peers.answering(b"SSH-2.0-OpenSSH_9.2\r\n"), False, "the answer is not HTTP"),
            "silence": (fake_peers.stalling(), False, "no answer in time"),
        }
        for name, (server, ok, detail) in cases.items():
            with self.subTest(name):
                probe = self.start(caddy_admin=f"127.0.0.1:{self.serve(server)}").probes()["caddy.admin"]
                self.assertIs(probe["ok"], ok)
                self.assertIn(detail, probe["detail"])


class CaddySites(StandInBridgeTest):
    def test_are_probed_by_their_host_name_and_counted(self):
        bridge = self.start_with_sites({"a.test": 200, "b.test": 404, "c.test": 502, "d.test": 308})
        _, document = bridge.get("/monitor/desktop?probe_sites=true")
        sites = {p["name"]: (p["ok"], p["detail"]) for p in document["services"] if p["name"].startswith("site.")}
        self.assertEqual(
            sites,
            {
                "site.a.test": (True, "HTTP 200"),
                "site.b.test": (True, "HTTP 404"),
                "site.c.test": (False, "HTTP 502"),
                "site.d.test": (True, "HTTP 308"),
            },
        )
        self.assertEqual((document["caddy_sites_up"], document["caddy_sites_total"]), (3, 4))

    def test_are_left_alone_unless_asked_for(self):
        bridge = self.start_with_sites({"a.test": 200})
        for query in ("", "?probe_sites=false"):
            _, document = bridge.get("/monitor/desktop" + query)
            self.assertFalse([p for p in document["services"] if p["name"].startswith("site.")])
            self.assertEqual((document["caddy_sites_up"], document["caddy_sites_total"]), (0, 0))

    def test_without_a_listener_are_down(self):
        admin = self.serve(fake_peers.caddy_admin(fake_peers.routes_to(1, ["a.test"], **NO_TLS)))
        probe = self.start(caddy_admin=f"127.0.0.1:{admin}").probes()["site.a.test"]
        self.assertEqual((probe["ok"], probe["detail"]), (False, "connection refused"))

    def test_that_should_speak_tls_and_do_not_are_down(self):
        bridge = self.start_with_sites({"a.test": 200}, automatic_https={}, tls_connection_policies=[{}])
        probe = bridge.probes()["site.a.test"]
        self.assertEqual((probe["ok"], probe["detail"]), (False, "TLS handshake failed"))


class Postgres(StandInBridgeTest):
    def test_is_ok_when_it_answers_in_its_protocol(self):
        cases = {
            "without TLS": (fake_peers.answering(b"N"), True, "answers on port"),
            "with TLS": (fake_peers.answering(b"S"), True, "answers on port"),
            "another protocol": (fake_peers.answering(b"HTTP/1.1 400 B\r\n\r\n"), False, "does not speak PostgreSQL"),
            "closed at once": (fake_peers.answering(b""), False, ""),
            "silence": (fake_peers.stalling(), False, "no answer in time"),
        }
        for name, (server, ok, detail) in cases.items():
            with self.subTest(name):
                probe = self.start(postgres_port=self.serve(server)).probes()["postgres"]
                self.assertIs(probe["ok"], ok)
                self.assertIn(detail, probe["detail"])


class Stalls(StandInBridgeTest):
    LONGEST_SNAPSHOT = 6.0

    def test_do_not_keep_a_snapshot_or_other_requests_waiting(self):
        stalled = self.serve(fake_peers.stalling())
        hosts = [f"site{number}.test" for number in range(60)]
        admin = self.serve(fake_peers.caddy_admin(fake_peers.routes_to(stalled, hosts, **NO_TLS)))
        bridge = self.start(caddy_admin=f"127.0.0.1:{admin}", postgres_port=stalled)

        answers = []
        began = time.monotonic()
        snapshot = threading.Thread(target=lambda: answers.append(bridge.get("/monitor/desktop?probe_sites=true")[1]))
        snapshot.start()
        health_began = time.monotonic()
        self.assertEqual(bridge.get("/health")[0], 200)
        self.assertLess(time.monotonic() - health_began, 1.0)
        self.assertTrue(snapshot.is_alive(), "the health request was to be asked during the snapshot")
        snapshot.join()
        self.assertLess(time.monotonic() - began, self.LONGEST_SNAPSHOT)
        self.assertEqual((answers[0]["caddy_sites_up"], answers[0]["caddy_sites_total"]), (0, len(hosts)))


class Life(StandInBridgeTest):
    def test_says_one_line_with_its_address(self):
        bridge = self.start()
        self.assertRegex(bridge.first_line, r"^stand-in bridge: http://127\.0\.0\.1:\d+$")
        bridge.probes()
        self.assertEqual(bridge.stop()[1], "")

    def test_ends_cleanly_on_sigterm_and_on_interrupt_with_a_client_connected(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            bridge = self.start()
            port = int(bridge.address.rpartition(":")[2])
            with socket.create_connection(("127.0.0.1", port)) as client:
                client.sendall(b"GET /health HTTP/1.1\r\nHost: bridge\r\n\r\n")
                self.assertTrue(client.recv(1024))
                bridge.process.send_signal(number)
                bridge.process.wait(timeout=5)
            status, rest = bridge.stop()
            self.assertIn(status, (0, -number))
            self.assertEqual(rest, "")

    def test_refuses_a_port_that_is_taken(self):
        with socket.create_server(("127.0.0.1", 0)) as other:
            port = other.getsockname()[1]
            bridge = self.start(port=port)
            self.assertEqual(bridge.process.wait(timeout=10), 1)
        self.assertIn(f"port {port}", bridge.first_line)

    def test_listens_on_the_loopback_interface_only(self):
        port = int(self.start().address.rpartition(":")[2])
        with self.assertRaises(OSError):
            socket.create_connection(("127.0.0.2", port), timeout=2)


if __name__ == "__main__":
    unittest.main()
