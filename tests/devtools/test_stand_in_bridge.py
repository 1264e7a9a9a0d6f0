"""The stand-in bridge as a process of its own, against peers on real sockets."""

import os
import pathlib
import shutil
import signal
import socket
import subprocess
import tempfile
import threading
import time

import fake_peers
from fake_peers import serving
from stand_in import StandInBridgeTest

NO_TLS = {"automatic_https": {"disable": True}}


class BridgeTest(StandInBridgeTest):
    def serve(self, server):
        return self.enterContext(serving(server))

    def start_with_sites(self, hosts_and_statuses, **server_members):
        port = self.serve(fake_peers.sites(hosts_and_statuses))
        config = fake_peers.routes_to(port, hosts_and_statuses, **{**NO_TLS, **server_members})
        admin = self.serve(fake_peers.caddy_admin(config))
        return self.start(caddy_admin=f"127.0.0.1:{admin}")


class MonitorDocument(BridgeTest):
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
        details = {probe["name"]: probe["detail"] for probe in document["services"]}
        self.assertEqual(len(details), len(document["services"]))
        self.assertEqual({details["caddy.admin"], details["postgres"]}, {"connection refused"})

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


class CaddyProcess(BridgeTest):
    def test_is_seen_while_it_runs_and_neither_before_nor_as_a_zombie_nor_after(self):
        program = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())) / f"cad-{os.getpid()}"
        program.symlink_to(shutil.which("sh"))
        bridge = self.start(caddy_process=program.name)
        seen = lambda: (probe := bridge.probes()["caddy.process"]) and (probe["ok"], probe["detail"])
        self.assertEqual(seen(), (False, "not running"))
        with subprocess.Popen([program, "-c", "read line"], stdin=subprocess.PIPE) as process:
            try:
                self.assertEqual(seen(), (True, "running"))
            finally:
                process.kill()
            os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOWAIT)
            self.assertEqual(seen(), (False, "not running"))
        self.assertEqual(seen(), (False, "not running"))


class Answers(BridgeTest):
    """What a probe says of each answer that it gets."""

    def check(self, option, place, probe_name, cases):
        for name, server, ok, detail in cases:
            with self.subTest(name):
                probe = self.start(**{option: place(self.serve(server))}).probes()[probe_name]
                self.assertIs(probe["ok"], ok)
                self.assertIn(detail, probe["detail"])

    def test_caddy_admin_is_ok_when_it_gives_its_configuration_as_json(self):
        self.check("caddy_admin", "127.0.0.1:{}".format, "caddy.admin", (
            ("a configuration", fake_peers.caddy_admin({}), True, "HTTP 200 on"),
            ("none", fake_peers.caddy_admin(None), True, "HTTP 200 on"),
            ("not JSON", fake_peers.caddy_admin(b"<html>"), False, "does not answer with a configuration"),
            ("not HTTP", fake_peers.answering(b"SSH-2.0-OpenSSH_9.2\r\n"), False, "the answer is not HTTP"),
            ("silence", fake_peers.answering(None), False, "no answer in time"),
        ))

    def test_postgres_is_ok_when_it_answers_in_its_protocol(self):
        self.check("postgres_port", int, "postgres", (
            ("without TLS", fake_peers.answering(b"N"), True, "answers on port"),
            ("with TLS", fake_peers.answering(b"S"), True, "answers on port"),
            ("another protocol", fake_peers.answering(b"HTTP/1.1 400 B\r\n"), False, "does not speak PostgreSQL"),
            ("closed at once", fake_peers.answering(b""), False, ""),
            ("silence", fake_peers.answering(None), False, "no answer in time"),
        ))


class CaddySites(BridgeTest):
    def test_are_probed_by_their_host_name_and_counted(self):
        bridge = self.start_with_sites({"a.test": 200, "b.test": 404, "c.test": 502, "d.test": 308})
        _, document = bridge.get("/monitor/desktop?probe_sites=true")
        sites = {p["name"]: (p["ok"], p["detail"]) for p in document["services"] if p["name"].startswith("site.")}
        self.assertEqual(sites, {"site.a.test": (True, "HTTP 200"), "site.b.test": (True, "HTTP 404"),
                                 "site.c.test": (False, "HTTP 502"), "site.d.test": (True, "HTTP 308")})
        self.assertEqual((document["caddy_sites_up"], document["caddy_sites_total"]), (3, 4))

    def test_are_left_alone_unless_asked_for(self):
        bridge = self.start_with_sites({"a.test": 200})
        for query in ("", "?probe_sites=false"):
            _, document = bridge.get("/monitor/desktop" + query)
            self.assertFalse([p for p in document["services"] if p["name"].startswith("site.")])
            self.assertEqual((document["caddy_sites_up"], document["caddy_sites_total"]), (0, 0))

    def test_that_do_not_listen_or_should_speak_tls_and_do_not_are_down(self):
        for detail, server in (("connection refused", {"listen": [":1"]}),
                               ("TLS handshake failed", {"automatic_https": {}, "tls_connection_policies": [{}]})):
            probe = self.start_with_sites({"a.test": 200}, **server).probes()["site.a.test"]
            self.assertEqual((probe["ok"], probe["detail"]), (False, detail))


class Stalls(BridgeTest):
    """Sixty sites, of which each is given two seconds."""

    ONE_AFTER_ANOTHER = 120.0

    def test_do_not_keep_a_snapshot_or_other_requests_waiting(self):
        stalled = self.serve(fake_peers.answering(None))
        hosts = [f"site{number}.test" for number in range(60)]
        admin = self.serve(fake_peers.caddy_admin(fake_peers.routes_to(stalled, hosts, **NO_TLS)))
        bridge = self.start(caddy_admin=f"127.0.0.1:{admin}", postgres_port=stalled)

        answers = []
        began = time.monotonic()
        snapshot = threading.Thread(target=lambda: answers.append(
            bridge.get("/monitor/desktop?probe_sites=true", seconds=self.ONE_AFTER_ANOTHER)[1]))
        snapshot.start()
        self.assertEqual(bridge.get("/health"), (200, {"status": "ok"}))
        self.assertTrue(snapshot.is_alive(), "the health request was to be asked during the snapshot")
        snapshot.join()
        self.assertLess(time.monotonic() - began, self.ONE_AFTER_ANOTHER / 4)
        self.assertEqual((answers[0]["caddy_sites_up"], answers[0]["caddy_sites_total"]), (0, len(hosts)))


class Life(BridgeTest):
    def test_says_one_line_with_its_address_on_the_loopback_interface(self):
        bridge = self.start()
        self.assertRegex(bridge.first_line, r"^stand-in bridge: http://127\.0\.0\.1:\d+$")
        with self.assertRaises(OSError):
            socket.create_connection(("127.0.0.2", int(bridge.address.rpartition(":")[2])), timeout=2)
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
