"""What the probes make of a configuration, and of the ports of this machine."""

import asyncio
import socket
import sys
import unittest

from stand_in import ROOT

sys.path.insert(0, str(ROOT / "devtools"))
sys.dont_write_bytecode = True

from bridge.caddy import Site, find_sites  # noqa: E402
from bridge.listeners import probe_listeners  # noqa: E402


def config(server, **http_members):
    return {"apps": {"http": {"servers": {"srv0": server}, **http_members}}}


def to_hosts(*hosts):
    return [{"match": [{"host": list(hosts)}]}]


class FindSites(unittest.TestCase):
    def check(self, document, *expected):
        self.assertEqual(find_sites(document), list(expected))

    def test_finds_nothing_where_there_is_no_server_or_no_host(self):
        for document in (None, {}, [], {"apps": None}, {"apps": {"tls": {}}}, {"apps": {"http": {}}}, config({})):
            self.check(document)
        self.check(config({"listen": [":80"], "routes": [{"handle": [{"handler": "file_server"}]}]}))
        self.check(config({"listen": [":80"], "routes": to_hosts("*.test", "{env.HOST}")}))

    def test_follows_nested_routes_keeps_the_order_and_names_a_host_once(self):
        nested = {"handle": [{"handler": "subroute", "routes": to_hosts("b.test", "a.test")}], **to_hosts("a.test")[0]}
        document = config({"listen": [":80"], "routes": [nested]})
        document["apps"]["http"]["servers"]["srv1"] = {"listen": [":81"], "routes": to_hosts("a.test")}
        self.check(document, *(Site(host, ("127.0.0.1", 80), False) for host in ("a.test", "b.test")))

    def test_reads_the_listener(self):
        for listen, address in {
            ":8080": ("127.0.0.1", 8080), "0.0.0.0:8080": ("127.0.0.1", 8080), "[::]:8080": ("127.0.0.1", 8080),
            "[::1]:8080": ("::1", 8080), "tcp/127.0.0.1:8080": ("127.0.0.1", 8080),
            "tcp4/:8080-8090": ("127.0.0.1", 8080), "udp/:8080": None, "unix//run/caddy.sock": None,
        }.items():
            with self.subTest(listen):
                server = {"listen": [listen], "routes": to_hosts("a.test"), "automatic_https": {"disable": True}}
                self.check(config(server), Site("a.test", address, False))

    def test_tells_where_tls_is_spoken(self):
        for name, server, http_members, tls in (
            ("standard port", {"listen": [":443"]}, {}, True),
            ("other port", {"listen": [":8443"]}, {}, True),
            ("http port", {"listen": [":80"]}, {}, False),
            ("http port of the configuration", {"listen": [":8080"]}, {"http_port": 8080}, False),
            ("switched off", {"listen": [":8443"], "automatic_https": {"disable": True}}, {}, False),
            ("every host skipped", {"listen": [":8443"], "automatic_https": {"skip": ["a.test"]}}, {}, False),
            ("policies given", {"listen": [":80"], "tls_connection_policies": [{}]}, {}, True),
        ):
            with self.subTest(name):
                document = config({**server, "routes": to_hosts("a.test")}, **http_members)
                self.assertEqual([site.tls for site in find_sites(document)], [tls])


class Listeners(unittest.TestCase):
    def test_names_only_the_ports_that_listen_on_either_loopback_address(self):
        for address, family in (("127.0.0.1", socket.AF_INET), ("::1", socket.AF_INET6)):
            try:
                here = socket.create_server((address, 0), family=family)
            except OSError:
                continue  # this machine has no IPv6 loopback
            with self.subTest(address), here:
                port = here.getsockname()[1]
                probes = asyncio.run(probe_listeners((("here.port", port), ("gone.port", 1))))
                said = [(probe.name, probe.ok, probe.detail) for probe in probes]
                self.assertEqual(said, [("here.port", True, f"port {port} listens")])
