"""The document behind /monitor/desktop."""

from typing import List, Optional

from pydantic import BaseModel


class HostMetrics(BaseModel):
    hostname: Optional[str] = None
    platform: Optional[str] = None
    cpu_load_1m: Optional[float] = None
    cpu_load_5m: Optional[float] = None
    cpu_load_15m: Optional[float] = None
    memory_used_pct: Optional[float] = None
    disk_used_pct: Optional[float] = None
    disk_free_gb: Optional[float] = None


class ServiceProbe(BaseModel):
    name: str
    ok: bool
    detail: str
    category: Optional[str] = None


class DesktopMonitor(BaseModel):
    host: Optional[HostMetrics] = None
    caddy_sites_up: int
    caddy_sites_total: int
    services: List[ServiceProbe]
