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
HOST = {"hostname": "workstation", "cpu_load_1m": 1.5, "memory_used_pct": 60, "disk_used_pct": 70, "disk_free_gb": 138}
DETAILS = ("running", "answers on port 5432", "connection refused", "läuft · 稼働中 · يعمل", "3 of 4 replicas",
           "unix socket /run/a/rather/long/path/that/does/not/fit/into/one/line/of/the/panel.sock")


def answer(body, status="200 OK"):
    return f"HTTP/1.1 {status}\r\nContent-Length: {len(body)}\r\nConnection: close\r\n\r\n".encode() + body


def monitor(chance):
    """A document of the bridge's monitor, whatever it may say."""
    names = [f"service.{number}" for number in range(chance.randrange(20))]
    names += [name for name in ("caddy.process", "postgres") if chance.random() < 0.9]
    total = chance.randrange(9)
    return answer(json.dumps({
        "host": {key: chance.uniform(0, 100) if key != "hostname" else "h" * chance.randrange(60) for key in HOST},
        "caddy_sites_up": chance.randrange(total + 1), "caddy_sites_total": total,
        "services": [{"name": name, "ok": chance.random() < 0.8, "detail": chance.choice(DETAILS)} for name in names],
    }).encode())


# What it says while it is calm: every detail at once, so that each font has been needed.
CALM_MONITOR = answer(json.dumps({"host": HOST, "services": [
    {"name": f"service.{number}", "ok": number % 2 == 0, "detail": detail} for number, detail in enumerate(DETAILS)
]}).encode())
HEALTH = answer(b'{"status": "ok"}')
# What it sends before it closes; the others do more than that.
SENT = {"garbage": random.Random(0).randbytes(4096), "giant": b"HTTP/1.1 200 OK\r\n\r\n" + b"x" * (9 * 1024 * 1024),
        "deep": answer(b"[" * 100_000), "server_error": answer(b"{}", "500 Internal Server Error"), "silence": b""}
FAULTS = ("refuse", "stall", "drip", "reset", "half_close", *SENT)


class Peer:
    """Listens on the bridge's port from a thread of its own. Calm, it is healthy and always says the same."""

    def __init__(self, tick):
        self.calm = False
        self.polls = 0
        self.spoilt = collections.Counter()
        self.held = 0
        self._tick = tick
        self._spoils_monitor = None
        self._listens = threading.Event()
        self._thread = threading.Thread(target=lambda: asyncio.run(self._serve_until_stopped()), daemon=True)
        self._thread.start()
        self._listens.wait()

    def stop(self):
        self._loop.call_soon_threadsafe(self._end.set)
        self._thread.join()

    async def _serve_until_stopped(self):
        self._loop, self._end = asyncio.get_running_loop(), asyncio.Event()
        await self._listen()
        self._listens.set()
        await self._end.wait()

    async def _listen(self):
        self._server = await asyncio.start_server(self._serve, "127.0.0.1", PORT, reuse_address=True)

    async def _serve(self, reader, writer):
        try:
            target = (await reader.readuntil(b"\r\n\r\n")).split(b" ", 2)[1]
            well = HEALTH if target == b"/health" else CALM_MONITOR if self.calm else monitor(random.Random(self.polls))
            await self._spoil(self._fault(target), well, reader, writer)
            await writer.drain()
        except (OSError, asyncio.IncompleteReadError):
            pass
        finally:
            writer.close()

    def _fault(self, target):
        """What becomes of this question. Polls are counted by their first one, and only while it is not calm."""
        if target != b"/health":
            fault, self._spoils_monitor = self._spoils_monitor, None
            return fault
        self.polls += not self.calm
        number, rest = divmod(self.polls, SPOILS_EACH)
        if rest != 0 or self.calm:
            return None
        turn, which = divmod(number, len(FAULTS))
        fault = FAULTS[which]
        self.spoilt[fault] += 1
        if turn % 2 == 0 or fault == "refuse":
            return fault
        self._spoils_monitor = fault
        return None

    async def _spoil(self, fault, well, reader, writer):
        if fault == "refuse":  # healthy, and gone at once for a few polls
            self._server.close()
            writer.write(well)
            await writer.drain()
            writer.close()
            await asyncio.sleep(REFUSES_FOR * self._tick)
            await self._listen()
        elif fault == "stall":
            self.held += 1
            try:
                await reader.read()
            finally:
                self.held -= 1
        elif fault == "drip":
            for byte in answer(b"{}"):
                writer.write(bytes([byte]))
                await writer.drain()
                await asyncio.sleep(DRIP_SECONDS)
        elif fault == "reset":
            writer.get_extra_info("socket").setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            writer.transport.abort()
        elif fault == "half_close":
            writer.write(b"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{")
            writer.write_eof()
            await reader.read()
        else:
            writer.write(SENT.get(fault, well))
