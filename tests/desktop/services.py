"""A real Caddy and a real PostgreSQL for a test: unprivileged, in a temporary folder, on ports of their own."""

import contextlib
import glob
import os
import pathlib
import pwd
import shutil
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


def caddy_program():
    return shutil.which("caddy")


def postgres_programs():
    """The folder of PostgreSQL's server programs; Debian keeps them off the search path, one folder a version."""
    folders = sorted(glob.glob("/usr/lib/postgresql/*/bin"), key=lambda folder: float(folder.split("/")[-2]))
    if folders:
        return pathlib.Path(folders[-1])
    found = shutil.which("initdb")
    return pathlib.Path(found).parent if found else None


def skip_unless_installed():
    missing = [name for name, found in (("Caddy", caddy_program()), ("PostgreSQL", postgres_programs())) if not found]
    if missing:
        raise unittest.SkipTest(" and ".join(missing) + " not installed; script/bootstrap ci installs both")


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


def unprivileged_user():
    """PostgreSQL refuses to run as root: the account that it then runs as, else nothing."""
    if os.getuid() != 0:
        return None
    try:
        return pwd.getpwnam("postgres")
    except KeyError:
        return pwd.getpwnam("nobody")


class _Service:
    """A process with a temporary folder of its own, as a context."""

    process = None

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            self.folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="vorna-service-")))
            stack.callback(self.stop)
            self.start()
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *_):
        self._stack.close()

    def stop(self):
        if self.process is not None and self.process.poll() is None:
            self.process.send_signal(self.STOP_SIGNAL)
            try:
                self.process.wait(timeout=10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()

    def _run_in_background(self, command, **options):
        with open(self.folder / "log.txt", "ab") as log:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=subprocess.STDOUT,
                                            cwd=self.folder, **options)

    def _wait_until(self, ready):
        end = time.monotonic() + READY_SECONDS
        while not ready():
            if self.process.poll() is not None or time.monotonic() > end:
                raise AssertionError(f"{type(self).__name__} did not start:\n{self.log()}")
            time.sleep(0.02)

    def log(self):
        return (self.folder / "log.txt").read_text(errors="replace")


class Caddy(_Service):
    """Caddy under a process name of its own, so that another Caddy of this machine is not taken for it."""

    STOP_SIGNAL = 15

    def __init__(self, caddyfile=""):
        """Takes site blocks; `{port}` in them becomes the port that the sites listen on."""
        self._caddyfile = caddyfile
        self.process_name = f"caddy-{os.getpid()}"

    def start(self):
        self.port = free_port()
        self.admin = f"127.0.0.1:{free_port()}"
        options = GLOBAL_OPTIONS.format(admin=self.admin, folder=self.folder)
        (self.folder / "Caddyfile").write_text(options + self._caddyfile.replace("{port}", str(self.port)))
        program = self.folder / self.process_name
        program.symlink_to(caddy_program())
        self._run_in_background([program, "run", "--config", "Caddyfile", "--adapter", "caddyfile"],
                                env={"HOME": str(self.folder), "PATH": os.environ["PATH"]})
        self._wait_until(self._answers)

    def _answers(self):
        try:
            with _OPENER.open(f"http://{self.admin}/config/", timeout=1) as response:
                return response.status == 200
        except OSError:
            return False


class Postgres(_Service):
    """A fresh cluster that takes connections on `port` of the loopback interface."""

    STOP_SIGNAL = 2

    def start(self):
        programs = postgres_programs()
        self.port = free_port()
        user = unprivileged_user()
        options = {"env": {"LC_ALL": "C.UTF-8", "PATH": os.environ["PATH"]}}
        if user:
            options |= {"user": user.pw_uid, "group": user.pw_gid, "extra_groups": []}
            os.chown(self.folder, user.pw_uid, user.pw_gid)
        cluster = self.folder / "cluster"
        subprocess.run([programs / "initdb", "--pgdata", cluster, "--auth", "trust", "--no-sync", "--encoding", "UTF8"],
                       check=True, capture_output=True, cwd=self.folder, **options)
        self._run_in_background([programs / "postgres", "-D", cluster, "-p", str(self.port), "-h", "127.0.0.1", "-k",
                                 self.folder, "-F"], **options)
        self._wait_until(lambda: "database system is ready" in self.log())
