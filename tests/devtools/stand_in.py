"""Starts the stand-in bridge for a test, and asks it."""

import json
import os
import pathlib
import subprocess
import sys
import unittest
import urllib.request

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = ROOT / "devtools" / "stand-in-bridge"
ABSENT = {"port": 0, "caddy_process": "no-such-process", "caddy_admin": "127.0.0.1:1", "postgres_port": 1}
_OPENER = urllib.request.build_opener(urllib.request.ProxyHandler({}))


class StandInBridge:
    """A running stand-in bridge; by default everything that it looks at is absent."""

    def __init__(self, environment=None, **options):
        command = [sys.executable, "-B", PROGRAM]
        for option, value in (ABSENT | options).items():
            if value is not None:
                command += ["--" + option.replace("_", "-"), str(value)]
        env = {**os.environ, **(environment or {})}
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, env=env)
        self.first_line = self.process.stdout.readline().rstrip("\n")
        self.address = self.first_line.rpartition(" ")[2]

    def get(self, path, seconds=8.0):
        """Status and decoded body."""
        try:
            with _OPENER.open(self.address + path, timeout=seconds) as response:
                return response.status, json.load(response)
        except urllib.error.HTTPError as error:
            with error:
                return error.code, None

    def probes(self, probe_sites=True):
        """The probes of one snapshot by name."""
        _, document = self.get(f"/monitor/desktop?probe_sites={'true' if probe_sites else 'false'}")
        return {probe["name"]: probe for probe in document["services"]}

    def stop(self):
        """Ends it as a user's shell would; its exit status and what it said after its first line."""
        if self.process.poll() is None:
            self.process.terminate()
        rest, _ = self.process.communicate(timeout=10)
        return self.process.returncode, rest


class StandInBridgeTest(unittest.TestCase):
    def start(self, **options):
        bridge = StandInBridge(**options)
        self.addCleanup(bridge.stop)
        return bridge
