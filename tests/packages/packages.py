"""The packages under test, changed copies of them, and what apt and dpkg do with them in this root."""

import os
import pathlib
import re
import subprocess
import sys

import psutil

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))

FOLDER = pathlib.Path("/packages")
COMPANION, BRIDGE = "vorna-companion", "vorna-stand-in-bridge"
PROGRAM = pathlib.Path("/usr/bin") / COMPANION
NONE = "not-installed"
QUIET = {"DEBIAN_FRONTEND": "noninteractive", "LC_ALL": "C.UTF-8"}
# What apt and dpkg keep for themselves, and what belongs to everybody.
NOBODYS = ("/dev", "/packages", "/proc", "/run", "/sys", "/tmp", "/var/cache", "/var/lib/apt", "/var/lib/dpkg", "/var/log",
           "/vorna")


def package(name):
    found, = FOLDER.glob(name + "_*.deb")
    return found


def run(*command):
    """A command to its end, whatever that is; what it said is in `stdout`."""
    return subprocess.run([str(word) for word in command], env={**os.environ, **QUIET}, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=600)


def must(*command):
    outcome = run(*command)
    if outcome.returncode != 0:
        raise AssertionError(f"{command} ended with {outcome.returncode}:\n{outcome.stdout}")
    return outcome.stdout


def install(*files):
    """As a user does, without what is only recommended."""
    return must("apt-get", "install", "--yes", "--no-install-recommends", "--allow-downgrades", "--reinstall",
                *files)


def purge(*names):
    return must("apt-get", "purge", "--yes", *names)


def status(name):
    """What dpkg says of a package, such as "installed" or "unpacked"."""
    outcome = run("dpkg-query", "--show", "--showformat", "${db:Status-Status}", name)
    return outcome.stdout if outcome.returncode == 0 else NONE


def field(file, name):
    return must("dpkg-deb", "--field", file, name).strip()


def files():
    """Every file of this root that somebody could have left there."""
    found = set()
    for folder, folders, names in os.walk("/"):
        folders[:] = [name for name in folders if os.path.join(folder, name) not in NOBODYS]
        found.update(os.path.join(folder, name) for name in [*folders, *names])
    return found


def companions():
    return [process for process in psutil.process_iter(["name", "status"])
            if process.info["name"] == COMPANION and process.info["status"] != psutil.STATUS_ZOMBIE]


def changed(folder, control=lambda text: text, program=lambda content: content):
    """The companion's package with another control file or program."""
    original, tree = package(COMPANION), folder / "tree"
    must("dpkg-deb", "--raw-extract", original, tree)
    (tree / "DEBIAN/control").write_text(control((tree / "DEBIAN/control").read_text()))
    binary = tree / PROGRAM.relative_to("/")
    binary.write_bytes(program(binary.read_bytes()))
    must("dpkg-deb", "--build", "--root-owner-group", tree, folder / "changed.deb")
    return folder / "changed.deb"


def older(folder):
    """The companion as an earlier version: its package's and the one that it prints."""
    number = re.match(r"[0-9.]+", field(package(COMPANION), "Version"))[0]
    earlier = "0.0." + "9" * (len(number) - 4)

    def program(content):
        assert number.encode("utf-16-le") in content
        return content.replace(number.encode("utf-16-le"), earlier.encode("utf-16-le"))

    return changed(folder, lambda text: text.replace(f"Version: {number}", f"Version: {earlier}"), program), earlier
