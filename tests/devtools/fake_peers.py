"""Servers on real sockets that stand where Caddy, its sites and PostgreSQL would."""

import contextlib
import http.server
import json
import socketserver
import threading


@contextlib.contextmanager
def serving(server):
    """Runs a server in a thread; gives its port."""
    thread = threading.Thread(target=server.serve_forever, kwargs={"poll_interval": 0.01})
    thread.start()
    try:
        yield server.server_address[1]
    finally:
        server.shutdown()
        thread.join()
        server.server_close()


def caddy_admin(config):
    """Answers /config/ with a configuration, and everything else with 404."""
    body = config if isinstance(config, bytes) else json.dumps(config).encode()
    return http_server(lambda handler: (200, body) if handler.path == "/config/" else (404, b""))


def sites(status_by_host):
    """Answers with the status that belongs to the Host header, and 421 for a host that it does not know."""
    return http_server(lambda handler: (status_by_host.get(handler.headers["Host"], 421), b""))


def http_server(answer, port=0):
    """Answers each request with the status and the body that `answer` gives for its handler."""

    class Handler(http.server.BaseHTTPRequestHandler):
        def do_GET(self):
            status, body = answer(self)
            self.send_response(status)
            self.send_header("Content-Length", str(len(body)))
            self.end_headers()
            with contextlib.suppress(ConnectionError):
                self.wfile.write(body)

        def log_message(self, *arguments):
            pass

    return http.server.ThreadingHTTPServer(("127.0.0.1", port), Handler)


def answering(reply):
    """Reads something, then sends a fixed reply and closes; without one, it is silent until the peer goes away."""

    class Handler(socketserver.BaseRequestHandler):
        def handle(self):
            with contextlib.suppress(OSError):
                while self.request.recv(1024) and reply is None:
                    pass
                self.request.sendall(reply or b"")

    server = socketserver.ThreadingTCPServer(("127.0.0.1", 0), Handler)
    server.daemon_threads = True
    return server


def routes_to(port, hosts, **server_members):
    """A configuration with one server on `port` that routes to `hosts`."""
    server = {"listen": [f":{port}"], "routes": [{"match": [{"host": list(hosts)}]}], **server_members}
    return {"apps": {"http": {"servers": {"srv0": server}}}}
