"""A bridge that spoils one poll in five, with each of its faults in turn, once in each of a poll's two questions."""

import asyncio
import collections
import json
import random
import socket
import struct
import threading

PORT = 43105
SPOILS_EACH = 5
REFUSES_FOR = 3
DRIP_SECONDS = 0.01
GARBAGE_BYTES = 4096
GIANT_BYTES = 9 * 1024 * 1024
PIECE = b"x" * (256 * 1024)
DEEP = b"[" * 100_000
DETAILS = ("running", "answers on port 5432", "connection refused", "läuft · 稼働中 · يعمل", "3 of 4 replicas",
           "unix socket /run/a/rather/long/path/that/does/not/fit/into/one/line/of/the/panel.sock")


def answer(body, status="200 OK"):
    return f"HTTP/1.1 {status}\r\nContent-Length: {len(body)}\r\nConnection: close\r\n\r\n".encode() + body


def snapshot(chance):
    """A document of the bridge's monitor, whatever it may say."""
    def probe(name):
        return {"name": name, "ok": chance.random() < 0.8, "detail": chance.choice(DETAILS), "category": "service"}

    names = [f"service.{number}" for number in range(chance.randrange(20))]
    names += [name for name in ("caddy.process", "postgres") if chance.random() < 0.9]
    total = chance.randrange(9)
    return json.dumps({
        "host": {"hostname": chance.choice(("workstation", "a-host-with-quite-a-long-name.example")),
                 "cpu_load_1m": chance.uniform(0, 30), "memory_used_pct": chance.uniform(0, 100),
                 "disk_used_pct": chance.uniform(0, 100), "disk_free_gb": chance.uniform(0, 900)},
        "caddy_sites_up": chance.randrange(total + 1), "caddy_sites_total": total,
        "services": [probe(name) for name in names],
    }).encode()


# What it says while it is calm: every detail at once, so that each font has been needed.
CALM_SNAPSHOT = json.dumps({
    "host": {"hostname": "workstation", "cpu_load_1m": 1.5, "memory_used_pct": 60, "disk_used_pct": 70,
             "disk_free_gb": 138},
    "services": [{"name": f"service.{number}", "ok": number % 2 == 0, "detail": detail}
                 for number, detail in enumerate(DETAILS)],
}).encode()


class Peer:
    """Listens on the bridge's port from a thread of its own. Calm, it is healthy and always says the same."""

    FAULTS = ("refuse", "stall", "drip", "reset", "half_close", "garbage", "giant", "deep", "server_error", "silence")

    def __init__(self, tick):
        self.calm = False
        self.polls = 0
        self.spoilt = collections.Counter()
        self.held = 0
        self._tick = tick
        self._spoils_monitor = None
        socket.create_server(("127.0.0.1", PORT)).close()
        self._listens = threading.Event()
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()
        self._listens.wait()

    def stop(self):
        self._loop.call_soon_threadsafe(self._end.set)
        self._thread.join()

    def _run(self):
        asyncio.run(self._serve_until_stopped())

    async def _serve_until_stopped(self):
        self._loop, self._end = asyncio.get_running_loop(), asyncio.Event()
        await self._listen()
        self._listens.set()
        await self._end.wait()

    async def _listen(self):
        self._server = await asyncio.start_server(self._serve, "127.0.0.1", PORT, reuse_address=True)

    async def _serve(self, reader, writer):
        try:
            target = (await reader.readuntil(b"\r\n\r\n")).split(b" ", 2)[1].decode()
            await self._fault(target)(reader, writer)
            await writer.drain()
        except (OSError, asyncio.IncompleteReadError):
            pass
        finally:
            writer.close()

    def _fault(self, target):
        """What becomes of this question. Polls are counted by their first one, and only while it is not calm."""
        if target != "/health":
            fault, self._spoils_monitor = self._spoils_monitor, None
            return fault or self._monitor
        if self.calm:
            return self._health
        self.polls += 1
        number, rest = divmod(self.polls, SPOILS_EACH)
        if rest != 0:
            return self._health
        turn, which = divmod(number, len(self.FAULTS))
        name = self.FAULTS[which]
        self.spoilt[name] += 1
        fault = getattr(self, "_" + name)
        if turn % 2 == 0 or fault == self._refuse:
            return fault
        self._spoils_monitor = fault
        return self._health

    async def _health(self, _, writer):
        writer.write(answer(b'{"status": "ok"}'))

    async def _monitor(self, _, writer):
        writer.write(answer(CALM_SNAPSHOT if self.calm else snapshot(random.Random(self.polls))))

    async def _refuse(self, reader, writer):
        """Healthy, and gone at once for a few polls."""
        self._server.close()
        await self._health(reader, writer)
        await writer.drain()
        writer.close()
        await asyncio.sleep(REFUSES_FOR * self._tick)
        await self._listen()

    async def _stall(self, reader, _):
        self.held += 1
        try:
            await reader.read()
        finally:
            self.held -= 1

    async def _drip(self, _, writer):
        for byte in answer(b"{}"):
            writer.write(bytes([byte]))
            await writer.drain()
            await asyncio.sleep(DRIP_SECONDS)

    async def _reset(self, _, writer):
        writer.get_extra_info("socket").setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        writer.transport.abort()

    async def _half_close(self, reader, writer):
        writer.write(b"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{")
        writer.write_eof()
        await reader.read()

    async def _garbage(self, _, writer):
        writer.write(random.randbytes(GARBAGE_BYTES))

    async def _giant(self, _, writer):
        writer.write(b"HTTP/1.1 200 OK\r\n\r\n")
        for _ in range(GIANT_BYTES // len(PIECE)):
            writer.write(PIECE)
            await writer.drain()

    async def _deep(self, _, writer):
        writer.write(answer(DEEP))

    async def _server_error(self, _, writer):
        writer.write(answer(b"{}", "500 Internal Server Error"))

    async def _silence(self, _, writer):
        pass
