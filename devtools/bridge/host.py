"""The figures of this machine."""

import platform
import socket

import psutil

from .payload import HostMetrics

BYTES_PER_GB = 1_000_000_000


def host_metrics() -> HostMetrics:
    load_1m, load_5m, load_15m = psutil.getloadavg()
    disk = psutil.disk_usage("/")
    return HostMetrics(
        hostname=socket.gethostname(),
        platform=f"{platform.system()} {platform.release()} {platform.machine()}",
        cpu_load_1m=load_1m,
        cpu_load_5m=load_5m,
        cpu_load_15m=load_15m,
        memory_used_pct=psutil.virtual_memory().percent,
        disk_used_pct=disk.percent,
        disk_free_gb=round(disk.free / BYTES_PER_GB, 1),
    )
