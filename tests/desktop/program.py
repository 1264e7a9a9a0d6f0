"""Programs of ours that are driven by lines on their standard input and answer on their standard output."""

import subprocess
import threading


class Program:
    """A running program that says "ready" first, and the lines that it has printed."""

    def __init__(self, desk, command, env=None):
        self._desk = desk
        self.lines = []
        self.process = desk.start(command, env, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1)
        self.pid = self.process.pid
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self.expect("ready")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._desk.kill(self.process)
        self._reader.join()
        self.process.stdin.close()
        self.process.stdout.close()

    def _read(self):
        for line in self.process.stdout:
            self.lines.append(line.rstrip("\n"))

    def tell(self, command):
        """Sends a command and waits until it was obeyed."""
        before = self.lines.count("done " + command)
        self.process.stdin.write(command + "\n")
        self._desk.wait_for(lambda: self.lines.count("done " + command) > before, f"an answer to {command!r}")

    def expect(self, beginning):
        """Waits until it has printed a line that begins so."""
        self._desk.wait_for(lambda: any(line.startswith(beginning) for line in self.lines), f"a line {beginning!r}…")

    def ask(self, question):
        """The words that follow the question in the answer to it."""
        self.tell(question)
        return next(line for line in reversed(self.lines) if line.startswith(question + " ")).split()[1:]

    def complaints(self):
        """What it has written to its error stream."""
        return self._desk.output(self.process)
