"""A real Caddy and a real PostgreSQL on a desktop: unprivileged, on ports of their own."""

import contextlib
import glob
import os
import shutil
import socket
import unittest
import urllib.request

OPTIONS = """{{
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


def start_caddy(desk, sites):
    """Caddy under a name of its own, so that another one is not taken for it: its process, that name, and its admin
    interface. A number in `sites`, such as {1}, becomes a port."""
    name, admin = f"caddy-{os.getpid()}", f"127.0.0.1:{free_port()}"
    (desk.root / "Caddyfile").write_text(OPTIONS.format(admin=admin, folder=desk.root)
                                         + sites.replace("{1}", str(free_port())).replace("{2}", str(free_port())))
    (desk.root / name).symlink_to(CADDY)
    process = desk.start([desk.root / name, "run", "--config", "Caddyfile", "--adapter", "caddyfile"])

    def answers():
        with contextlib.suppress(OSError), _OPENER.open(f"http://{admin}/config/", timeout=1) as response:
            return response.status == 200

    desk.wait_for(answers, "Caddy")
    return process, name, admin


def start_postgres(desk):
    """A fresh cluster that takes connections on the loopback interface: its process and its port."""
    cluster, port = desk.root / "cluster", free_port()
    desk.root.chmod(0o711)
    cluster.mkdir()
    if UNPRIVILEGED:
        shutil.chown(cluster, "postgres", "postgres")
    desk.run(*UNPRIVILEGED, f"{POSTGRES}/initdb", "--pgdata", cluster, "--auth", "trust", "--no-sync")
    process = desk.start([*UNPRIVILEGED, f"{POSTGRES}/postgres", "-D", cluster, "-p", port, "-h", "127.0.0.1", "-k",
                          cluster, "-F"], {"LC_ALL": "C.UTF-8"})
    desk.wait_for(lambda: "database system is ready" in desk.output(process), "PostgreSQL")
    return process, port
