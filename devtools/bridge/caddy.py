"""Caddy: its process, its admin interface, and the sites that its configuration names."""

import asyncio
import json
import ssl
from dataclasses import dataclass
from typing import Any, Iterator, List, Optional, Tuple

import h11
import psutil

from .http_get import any_certificate, get, get_status
from .payload import ServiceProbe
from .reasons import reason

CATEGORY = "proxy"
ADMIN_SECONDS = 1.0
SITE_SECONDS = 2.0
OK = 200
FIRST_SERVER_ERROR = 500
DEFAULT_HTTP_PORT = 80
EVERY_ADDRESS = ("", "0.0.0.0", "::", "[::]")
FAILURES = (OSError, asyncio.TimeoutError, h11.ProtocolError)


@dataclass(frozen=True)
class Site:
    """A host that a server of the configuration answers for, and where that server listens."""

    host: str
    address: Optional[Tuple[str, int]]
    tls: bool


@dataclass(frozen=True)
class CaddyReport:
    probes: List[ServiceProbe]
    sites: List[ServiceProbe]


async def probe_caddy(process: str, admin: Tuple[str, int], probe_sites: bool) -> CaddyReport:
    running, (answers, config) = await asyncio.gather(asyncio.to_thread(probe_process, process), probe_admin(*admin))
    sites = find_sites(config) if probe_sites else []
    certificate = any_certificate() if any(site.tls for site in sites) else None
    site_probes = await asyncio.gather(*(probe_site(site, certificate) for site in sites))
    return CaddyReport(probes=[running, answers], sites=list(site_probes))


def probe_process(name: str) -> ServiceProbe:
    runs = any(
        process.info["name"] == name and process.info["status"] != psutil.STATUS_ZOMBIE
        for process in psutil.process_iter(["name", "status"])
    )
    return ServiceProbe(name="caddy.process", ok=runs, detail="running" if runs else "not running", category=CATEGORY)


async def probe_admin(host: str, port: int) -> Tuple[ServiceProbe, Any]:
    """The probe, and the configuration that Caddy runs with (nothing when it did not say)."""
    config = None
    name = f"{host}:{port}"
    try:
        status, body = await asyncio.wait_for(get((host, port), name, "/config/"), ADMIN_SECONDS)
        ok, detail = status == OK, f"HTTP {status} on {name}"
        if ok:
            config = json.loads(body)
    except FAILURES as error:
        ok, detail = False, reason(error)
    except ValueError:
        ok, detail = False, f"{name} does not answer with a configuration"
    return ServiceProbe(name="caddy.admin", ok=ok, detail=detail, category=CATEGORY), config


async def probe_site(site: Site, certificate: Optional[ssl.SSLContext]) -> ServiceProbe:
    """A site is up when its listener answers for its host, with anything but a server error."""
    ok, detail = False, "no TCP listener"
    if site.address is not None:
        try:
            request = get_status(site.address, site.host, "/", certificate if site.tls else None)
            status = await asyncio.wait_for(request, SITE_SECONDS)
            ok, detail = status < FIRST_SERVER_ERROR, f"HTTP {status}"
        except (*FAILURES, ValueError) as error:
            detail = reason(error)
    return ServiceProbe(name=f"site.{site.host}", ok=ok, detail=detail, category="site")


def find_sites(config: Any) -> List[Site]:
    """Every concrete host of the HTTP servers, once, in the order of the configuration."""
    http = member(member(config, "apps"), "http")
    found = {}
    for server in (member(http, "servers") or {}).values():
        hosts = [host for host in route_hosts(member(server, "routes")) if "*" not in host and "{" not in host]
        address = listen_address(member(server, "listen"))
        for host in hosts:
            found.setdefault(host, Site(host, address, uses_tls(http, server, address, hosts)))
    return list(found.values())


def member(value: Any, key: str) -> Any:
    return value.get(key) if isinstance(value, dict) else None


def route_hosts(routes: Any) -> Iterator[str]:
    for route in routes or []:
        for matcher in member(route, "match") or []:
            yield from member(matcher, "host") or []
        for handler in member(route, "handle") or []:
            yield from route_hosts(member(handler, "routes"))


def listen_address(listen: Any) -> Optional[Tuple[str, int]]:
    """Where to reach the first TCP listener from this machine: `[network/][address]:port[-last port]`."""
    for entry in listen or []:
        network, _, rest = entry.rpartition("/")
        address, _, port = rest.rpartition(":")
        first_port = port.partition("-")[0]
        if network.startswith(("udp", "unix")) or not first_port.isdigit():
            continue
        return ("127.0.0.1" if address in EVERY_ADDRESS else address.strip("[]"), int(first_port))
    return None


def uses_tls(http: Any, server: Any, address: Optional[Tuple[str, int]], hosts: List[str]) -> bool:
    """Caddy adds TLS by itself to a server with a host to certify, off the HTTP port, unless told otherwise."""
    if member(server, "tls_connection_policies"):
        return True
    automatic = member(server, "automatic_https")
    if member(automatic, "disable") or address is None:
        return False
    if address[1] == (member(http, "http_port") or DEFAULT_HTTP_PORT):
        return False
    return any(host not in (member(automatic, "skip") or []) for host in hosts)
