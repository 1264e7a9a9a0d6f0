"""Caddy: its process, its admin interface, and the sites that its configuration names."""

import asyncio
from dataclasses import dataclass
from typing import Any, Iterator, List, Optional, Tuple

import httpx
import psutil

from .payload import ServiceProbe
from .reasons import reason

CATEGORY = "proxy"
ADMIN_SECONDS = 1.0
SITE_SECONDS = 2.0
FIRST_SERVER_ERROR = 500
DEFAULT_HTTP_PORT = 80
EVERY_ADDRESS = ("", "0.0.0.0", "::", "[::]")
FAILURES = (httpx.HTTPError, httpx.InvalidURL, OSError, asyncio.TimeoutError)


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


async def probe_caddy(process: str, admin: str, probe_sites: bool) -> CaddyReport:
    client = httpx.AsyncClient(
        verify=False, trust_env=False, follow_redirects=False, limits=httpx.Limits(max_connections=None)
    )
    async with client:
        running, (answers, config) = await asyncio.gather(
            asyncio.to_thread(probe_process, process), probe_admin(client, admin)
        )
        sites = find_sites(config) if probe_sites else []
        site_probes = await asyncio.gather(*(probe_site(client, site) for site in sites))
    return CaddyReport(probes=[running, answers], sites=list(site_probes))


def probe_process(name: str) -> ServiceProbe:
    alive = [
        process.pid
        for process in psutil.process_iter(["name", "status"])
        if process.info["name"] == name and process.info["status"] != psutil.STATUS_ZOMBIE
    ]
    detail = f"running, process {min(alive)}" if alive else "not running"
    return ServiceProbe(name="caddy.process", ok=bool(alive), detail=detail, category=CATEGORY)


async def probe_admin(client: httpx.AsyncClient, address: str) -> Tuple[ServiceProbe, Any]:
    """The probe, and the configuration that Caddy runs with (nothing when it did not say)."""
    config = None
    try:
        response = await asyncio.wait_for(client.get(f"http://{address}/config/"), ADMIN_SECONDS)
        ok, detail = response.status_code == httpx.codes.OK, f"HTTP {response.status_code} on {address}"
        if ok:
            config = response.json()
    except ValueError:
        ok, detail = False, f"{address} does not answer with a configuration"
    except FAILURES as error:
        ok, detail = False, reason(error)
    return ServiceProbe(name="caddy.admin", ok=ok, detail=detail, category=CATEGORY), config


async def probe_site(client: httpx.AsyncClient, site: Site) -> ServiceProbe:
    """A site is up when its listener answers for its host, with anything but a server error."""
    ok, detail = False, "no TCP listener"
    if site.address is not None:
        try:
            status = await asyncio.wait_for(fetch_status(client, site), SITE_SECONDS)
            ok, detail = status < FIRST_SERVER_ERROR, f"HTTP {status}"
        except (*FAILURES, ValueError) as error:
            detail = reason(error)
    return ServiceProbe(name=f"site.{site.host}", ok=ok, detail=detail, category="site")


async def fetch_status(client: httpx.AsyncClient, site: Site) -> int:
    address, port = site.address
    literal = f"[{address}]" if ":" in address else address
    url = f"{'https' if site.tls else 'http'}://{literal}:{port}/"
    request = {"headers": {"Host": site.host}, "extensions": {"sni_hostname": site.host}}
    async with client.stream("GET", url, **request) as response:
        return response.status_code


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
