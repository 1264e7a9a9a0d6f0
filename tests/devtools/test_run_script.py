"""script/run, with programs in place of what it builds: which program runs, and what becomes of the bridge."""

import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import unittest

import psutil
from stand_in import ROOT

ON_A_MAC = sys.platform == "darwin"
COMPANION = "build/release/" + ("vorna.app/Contents/MacOS/vorna" if ON_A_MAC else "vorna-companion")
NAME = pathlib.Path(COMPANION).name
BRIDGE_PORT = 43105
HELLO = f"""#!/bin/bash
echo "$(basename "$0")" "$@"
exec 3<>/dev/tcp/127.0.0.1/{BRIDGE_PORT} || echo "no bridge"
"""
STARTS_BRIDGE = f"No bridge answers on port {BRIDGE_PORT}: starting the stand-in bridge until the companion ends."


def bridge_answers():
    with socket.socket() as client:
        return client.connect_ex(("127.0.0.1", BRIDGE_PORT)) == 0


def setUpModule():
    if bridge_answers():
        raise unittest.SkipTest(f"a bridge runs on port {BRIDGE_PORT} already")


class RunScript(unittest.TestCase):
    def setUp(self):
        self.root = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        (self.root / COMPANION).parent.mkdir(parents=True)
        if (python := ROOT / "build" / "python").exists():
            (self.root / "build" / "python").symlink_to(python)
        (self.root / "script").mkdir()
        shutil.copy(ROOT / "script" / "run", self.root / "script")
        (self.root / "devtools").symlink_to(ROOT / "devtools")
        for name in ("script/bootstrap", "script/build"):
            self.place(name, "#!/bin/bash\n")
        self.place(COMPANION, HELLO + "exit 7\n")
        self.place("build/release/vorna-panel-picture", HELLO + 'echo "$QT_QPA_PLATFORM"\n')

    def place(self, name, text):
        (self.root / name).write_text(text)
        (self.root / name).chmod(0o755)

    def start(self, *arguments, display=True):
        env = {key: value for key, value in os.environ.items() if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        if display:
            env["DISPLAY"] = ":0"
        process = subprocess.Popen([self.root / "script" / "run", *arguments], env=env, cwd="/", text=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                   start_new_session=True)
        self.addCleanup(process.stdout.close)
        return process

    def run_to_the_end(self, *arguments, **options):
        """Its exit status and its lines; the bridge is to be gone afterwards."""
        process = self.start(*arguments, **options)
        output, _ = process.communicate(timeout=30)
        self.assertFalse(bridge_answers())
        return process.returncode, output.splitlines()

    def test_runs_the_companion_beside_a_bridge_and_passes_arguments_and_status_on(self):
        self.assertEqual(self.run_to_the_end("--a", "b c"), (7, [STARTS_BRIDGE, f"{NAME} --a b c"]))

    @unittest.skipIf(ON_A_MAC, "a Mac always has a display")
    def test_draws_the_panel_where_there_is_no_display(self):
        picture = f"vorna-panel-picture --output {self.root}/build/panel.png"
        self.assertEqual(self.run_to_the_end(display=False), (0, [STARTS_BRIDGE, picture, "offscreen"]))

    def test_leaves_a_bridge_alone_that_is_there(self):
        with socket.create_server(("127.0.0.1", BRIDGE_PORT)):
            process = self.start()
            self.assertEqual(process.communicate(timeout=30)[0].splitlines(), [NAME])
            self.assertTrue(bridge_answers())

    def test_asks_for_help_without_a_bridge(self):
        status, lines = self.run_to_the_end("--help")
        self.assertEqual((status, lines[0]), (7, f"{NAME} --help"))
        self.assertEqual(lines[-1], "no bridge")

    def test_signals_end_the_companion_and_the_bridge(self):
        for sign, whole_group in ((signal.SIGTERM, False), (signal.SIGINT, True), (signal.SIGHUP, False)):
            with self.subTest(sign):
                self.place(COMPANION, "#!/bin/bash\necho $$\nexec sleep 60\n")
                process = self.start()
                self.assertEqual(process.stdout.readline().strip(), STARTS_BRIDGE)
                companion = psutil.Process(int(process.stdout.readline()))
                self.assertTrue(bridge_answers())
                (os.killpg if whole_group else os.kill)(process.pid, sign)
                self.assertEqual(process.wait(timeout=10), 128 + sign)
                self.assertFalse(bridge_answers())
                psutil.wait_procs([companion], timeout=2)
                self.assertFalse(companion.is_running())
