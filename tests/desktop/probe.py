"""A process of ours that is driven over its standard input: the tray probe, with nothing but an item in the tray."""

import os
import subprocess
import threading

import desktop

PROGRAM = os.environ.get("VORNA_TRAY_PROBE", "tray-probe")


class Probe:
    """One running probe and the lines that it has printed."""

    def __init__(self, desk, env=None, command=(PROGRAM,)):
        self._desk = desk
        self.lines = []
        self._log = open(desk.root / f"probe-{id(self)}.txt", "w+b")
        self.process = subprocess.Popen(command, env={**desk.env, **(env or {})}, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=self._log, text=True, bufsize=1)
        self.pid = self.process.pid
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self.expect("ready")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self._reader.join()
        for stream in (self.process.stdin, self.process.stdout, self._log):
            stream.close()

    def _read(self):
        for line in self.process.stdout:
            self.lines.append(line.rstrip("\n"))

    def tell(self, command):
        """Sends a command and waits until it was obeyed."""
        before = self.lines.count("done " + command)
        self.process.stdin.write(command + "\n")
        self._desk.wait_for(lambda: self.lines.count("done " + command) > before, f"an answer to {command!r}")

    def expect(self, line, times=1):
        """Waits until the probe has printed a line that often."""
        self._desk.wait_for(lambda: self.lines.count(line) >= times, f"the probe to say {line!r}")

    def anchor(self):
        """Where the probe believes its item to be."""
        self.tell("anchor")
        return tuple(int(word) for word in [line for line in self.lines if line.startswith("anchor")][-1].split()[1:])

    def compositing(self):
        """Whether the probe believes that windows are blended."""
        self.tell("compositing")
        return [line for line in self.lines if line.startswith("compositing")][-1].endswith("on")

    def check_alive(self):
        """Fails when the probe has ended or complained."""
        if self.process.poll() is not None:
            raise desktop.Failure(f"the probe ended with {self.process.returncode}: {self.complaints()}")

    def complaints(self):
        """What the probe has written to its error stream."""
        self._log.flush()
        with open(self._log.name, errors="replace") as log:
            return log.read()

    def quit(self):
        """Ends the probe the way a user does, and returns its exit status."""
        self.process.stdin.write("quit\n")
        return self.process.wait(timeout=5)
