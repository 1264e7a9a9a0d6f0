"""Common development services, told by the port that they are known for."""

import asyncio
from typing import List, Optional, Sequence, Tuple

from .payload import ServiceProbe

SECONDS = 0.5
LOOPBACK = ("127.0.0.1", "::1")
KNOWN_PORTS = (
    ("redis.port", 6379),
    ("mysql.port", 3306),
    ("mongodb.port", 27017),
    ("rabbitmq.port", 5672),
    ("memcached.port", 11211),
    ("elasticsearch.port", 9200),
    ("nats.port", 4222),
    ("vite.port", 5173),
)


async def probe_listeners(ports: Sequence[Tuple[str, int]] = KNOWN_PORTS) -> List[ServiceProbe]:
    """Only those that listen: nobody is expected to run them all."""
    probes = await asyncio.gather(*(probe_listener(name, port) for name, port in ports))
    return [probe for probe in probes if probe is not None]


async def probe_listener(name: str, port: int) -> Optional[ServiceProbe]:
    listens = await asyncio.gather(*(connects(address, port) for address in LOOPBACK))
    return ServiceProbe(name=name, ok=True, detail=f"port {port} listens", category="service") if any(listens) else None


async def connects(address: str, port: int) -> bool:
    try:
        _, writer = await asyncio.wait_for(asyncio.open_connection(address, port), SECONDS)
    except (OSError, asyncio.TimeoutError):
        return False
    writer.close()
    return True
