"""One GET request over a connection of its own: the name in the request need not be the address that is dialled."""

import asyncio
import ssl
from typing import Optional, Tuple

import h11

CHUNK = 65536


def any_certificate() -> ssl.SSLContext:
    """Local certificates are seldom known to this Python; whether the site answers is the question, not who signed."""
    context = ssl.create_default_context()
    context.check_hostname = False
    context.verify_mode = ssl.CERT_NONE
    return context


async def get_status(address: Tuple[str, int], host: str, target: str, tls: Optional[ssl.SSLContext] = None) -> int:
    """The status of the answer; its body is left on the wire."""
    return (await get(address, host, target, tls, with_body=False))[0]


async def get(
    address: Tuple[str, int],
    host: str,
    target: str,
    tls: Optional[ssl.SSLContext] = None,
    with_body: bool = True,
) -> Tuple[int, bytes]:
    reader, writer = await asyncio.open_connection(*address, ssl=tls, server_hostname=host if tls else None)
    try:
        peer = h11.Connection(h11.CLIENT)
        headers = [("Host", host), ("Accept", "*/*"), ("Connection", "close")]
        writer.write(peer.send(h11.Request(method="GET", target=target, headers=headers)))
        status, body = 0, bytearray()
        while True:
            event = peer.next_event()
            if event is h11.NEED_DATA:
                peer.receive_data(await reader.read(CHUNK))
            elif isinstance(event, h11.Response):
                status = event.status_code
                if not with_body:
                    return status, b""
            elif isinstance(event, h11.Data):
                body += event.data
            elif isinstance(event, h11.EndOfMessage):
                return status, bytes(body)
    finally:
        writer.close()
