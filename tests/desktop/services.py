"""A real Caddy and a real PostgreSQL for a test: unprivileged, in a temporary folder, on ports of their own."""

import contextlib
import glob
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import unittest
import urllib.request

READY_SECONDS = 20.0
GLOBAL_OPTIONS = """{{
    admin {admin}
    auto_https disable_redirects
    skip_install_trust
    storage file_system {{
        root {folder}/storage
    }}
}}
"""
_OPENER = urllib.request.build_opener(urllib.request.ProxyHandler({}))
CADDY = shutil.which("caddy")
# Debian keeps PostgreSQL's server programs off the search path, one folder a version.
POSTGRES = max(glob.glob("/usr/lib/postgresql/*/bin"), key=lambda folder: float(folder.split("/")[-2]), default=None)
UNPRIVILEGED = ["setpriv", "--reuid", "postgres", "--regid", "postgres", "--clear-groups"] if os.getuid() == 0 else []


def skip_unless_installed():
    missing = [name for name, found in (("Caddy", CADDY), ("PostgreSQL", POSTGRES)) if not found]
    if missing:
        raise unittest.SkipTest(" and ".join(missing) + " not installed; script/bootstrap ci installs both")


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


class _Service:
    """A process with a temporary folder of its own, as a context."""

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            self.folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="vorna-service-")))
            self.port = free_port()
            self._log = stack.enter_context(open(self.folder / "log.txt", "ab"))
            options = {"cwd": self.folder, "stdin": subprocess.DEVNULL, "stdout": self._log, "stderr": self._log,
                       "env": {"HOME": str(self.folder), "LC_ALL": "C.UTF-8", "PATH": os.environ["PATH"]}}
            self.process = subprocess.Popen(self.command(options), **options)
            stack.callback(self.stop)
            self._wait_until_ready()
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *_):
        self._stack.close()

    def stop(self):
        self.process.send_signal(signal.SIGINT)
        try:
            self.process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def _wait_until_ready(self):
        end = time.monotonic() + READY_SECONDS
        while not self.is_ready():
            if self.process.poll() is not None or time.monotonic() > end:
                raise AssertionError(f"{type(self).__name__} did not start:\n{self.log()}")
            time.sleep(0.02)

    def log(self):
        return (self.folder / "log.txt").read_text(errors="replace")


class Caddy(_Service):
    """Caddy under a process name of its own, so that another Caddy of this machine is not taken for it."""

    def __init__(self, caddyfile=""):
        """Takes site blocks; `{port}` and `{tls_port}` in them become ports of their own."""
        self._caddyfile = caddyfile
        self.process_name = f"caddy-{os.getpid()}"
        self.admin = f"127.0.0.1:{free_port()}"

    def command(self, _options):
        options = GLOBAL_OPTIONS.format(admin=self.admin, folder=self.folder)
        (self.folder / "Caddyfile").write_text(options + self._caddyfile.replace("{port}", str(self.port))
                                               .replace("{tls_port}", str(free_port())))
        (self.folder / self.process_name).symlink_to(CADDY)
        return [self.folder / self.process_name, "run", "--config", "Caddyfile", "--adapter", "caddyfile"]

    def is_ready(self):
        try:
            with _OPENER.open(f"http://{self.admin}/config/", timeout=1) as response:
                return response.status == 200
        except OSError:
            return False


class Postgres(_Service):
    """A fresh cluster that takes connections on `port` of the loopback interface."""

    def command(self, options):
        if UNPRIVILEGED:
            shutil.chown(self.folder, "postgres", "postgres")
        cluster = self.folder / "cluster"
        subprocess.run([*UNPRIVILEGED, f"{POSTGRES}/initdb", "--pgdata", cluster, "--auth", "trust", "--no-sync",
                        "--encoding", "UTF8"], check=True, **options)
        return [*UNPRIVILEGED, f"{POSTGRES}/postgres", "-D", cluster, "-p", str(self.port), "-h", "127.0.0.1", "-k",
                self.folder, "-F"]

    def is_ready(self):
        return "database system is ready" in self.log()
