"""The two routes of the bridge."""

import asyncio
from dataclasses import dataclass
from typing import Tuple

from fastapi import FastAPI

from .caddy import probe_caddy
from .host import host_metrics
from .listeners import probe_listeners
from .payload import DesktopMonitor
from .postgres import probe_postgres


@dataclass(frozen=True)
class Settings:
    """What the probes look at."""

    caddy_process: str
    caddy_admin: Tuple[str, int]
    postgres_port: int


def create_application(settings: Settings) -> FastAPI:
    application = FastAPI(title="Stand-in bridge", openapi_url=None)

    @application.get("/health")
    async def health() -> dict:
        return {"status": "ok"}

    @application.get("/monitor/desktop", response_model=DesktopMonitor)
    async def monitor_desktop(probe_sites: bool = False) -> DesktopMonitor:
        host, caddy, postgres, listeners = await asyncio.gather(
            asyncio.to_thread(host_metrics),
            probe_caddy(settings.caddy_process, settings.caddy_admin, probe_sites),
            probe_postgres(settings.postgres_port),
            probe_listeners(),
        )
        return DesktopMonitor(
            host=host,
            caddy_sites_up=sum(site.ok for site in caddy.sites),
            caddy_sites_total=len(caddy.sites),
            services=[*caddy.probes, postgres, *listeners, *caddy.sites],
        )

    return application
