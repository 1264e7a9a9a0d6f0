"""PostgreSQL, by the first words of its own protocol."""

import asyncio
import struct

from .payload import ServiceProbe
from .reasons import reason

SECONDS = 1.0
SSL_REQUEST = struct.pack("!ii", 8, 80877103)
ANSWERS_OF_POSTGRES = (b"S", b"N")


async def probe_postgres(port: int) -> ServiceProbe:
    """Asks whether the server speaks TLS: every PostgreSQL answers yes or no with one byte, and its log stays clean."""
    ok = False
    try:
        answer = await asyncio.wait_for(ask(port), SECONDS)
        ok = answer in ANSWERS_OF_POSTGRES
        detail = f"answers on port {port}" if ok else f"port {port} does not speak PostgreSQL"
    except (OSError, asyncio.TimeoutError) as error:
        detail = reason(error)
    return ServiceProbe(name="postgres", ok=ok, detail=detail, category="database")


async def ask(port: int) -> bytes:
    reader, writer = await asyncio.open_connection("127.0.0.1", port)
    try:
        writer.write(SSL_REQUEST)
        return await reader.read(1)
    finally:
        writer.close()
