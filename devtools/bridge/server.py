"""Command line and life of the stand-in bridge."""

import argparse
import os
import socket
import sys
from typing import Tuple

import uvicorn

from .application import Settings, create_application

ADDRESS = "127.0.0.1"
DEFAULT_PORT = 43105
LAST_PORT = 65535


def port_number(text: str) -> int:
    number = int(text)
    if not 0 <= number <= LAST_PORT:
        raise ValueError(text)
    return number


def host_and_port(text: str) -> Tuple[str, int]:
    host, _, port = text.rpartition(":")
    return host or ADDRESS, port_number(port)


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        description="Answers /health and /monitor/desktop on the loopback interface with this machine's real figures.",
    )
    parser.add_argument("--port", type=port_number, default=DEFAULT_PORT, help="port to listen on; 0 takes a free one")
    parser.add_argument("--caddy-process", default="caddy", metavar="NAME", help="name of Caddy's process")
    parser.add_argument(
        "--caddy-admin",
        type=host_and_port,
        default="127.0.0.1:2019",
        metavar="HOST:PORT",
        help="its admin interface",
    )
    parser.add_argument(
        "--postgres-port",
        type=port_number,
        default=os.environ.get("PGPORT") or "5432",
        metavar="PORT",
        help="port of PostgreSQL, also taken from PGPORT",
    )
    return parser.parse_args()


def listen(port: int) -> socket.socket:
    listener = socket.socket()
    listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    listener.bind((ADDRESS, port))
    listener.listen()
    return listener


def main() -> int:
    """Serves until SIGTERM or Ctrl-C."""
    arguments = parse_arguments()
    try:
        listener = listen(arguments.port)
    except OSError as error:
        print(f"stand-in bridge: port {arguments.port}: {error.strerror}", file=sys.stderr)
        return 1
    settings = Settings(arguments.caddy_process, arguments.caddy_admin, arguments.postgres_port)
    config = uvicorn.Config(
        create_application(settings), log_config=None, access_log=False, lifespan="off", ws="none"
    )
    print(f"stand-in bridge: http://{ADDRESS}:{listener.getsockname()[1]}", flush=True)
    try:
        uvicorn.Server(config).run(sockets=[listener])
    except KeyboardInterrupt:
        pass
    return 0
