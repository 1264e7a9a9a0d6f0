"""A bridge that answers at once with as many services as it is told to, so that what is timed is the companion."""

import http.server
import json
import threading

HEALTHY = b'{"status": "ok"}'


class Peer:
    """Serves on a port of its own until it is stopped. Every second snapshot differs, so that there is work to do."""

    def __init__(self, services):
        bodies = [snapshot(services, load) for load in (1.25, 2.5)]
        asked = 0

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                nonlocal asked
                body = HEALTHY
                if self.path.startswith("/monitor/desktop"):
                    asked += 1
                    body = bodies[asked % 2]
                self.send_response(200)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self._thread = threading.Thread(target=self._server.serve_forever, args=[0.05], daemon=True)
        self._thread.start()
        self.address = "http://127.0.0.1:%d" % self._server.server_port

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._thread.join()
        self._server.server_close()


def snapshot(services, load):
    """What a bridge says that probes that many services, as bytes."""
    return json.dumps({
        "host": {"hostname": "workstation", "cpu_load_1m": load, "memory_used_pct": 63.6 + load,
                 "disk_used_pct": 71.2, "disk_free_gb": 138.0},
        "caddy_sites_up": 3,
        "caddy_sites_total": 4,
        "services": [{"name": "caddy.process", "ok": True, "detail": f"load {load}"},
                     {"name": "postgres", "ok": True, "detail": f"{load} ms"}]
        + [{"name": f"service-{number}", "ok": True, "detail": f"{load} ms"} for number in range(services - 2)],
    }).encode()
