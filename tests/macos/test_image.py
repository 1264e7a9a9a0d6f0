"""Runs packaging/macos/Deploy.cmake on an empty bundle, and script/run as on a Mac, with programs in the place of the
Mac's tools that say what those would say."""

import os
import pathlib
import socket
import tempfile
import unittest

import kit

DEPLOY = kit.PROJECT / "packaging" / "macos" / "Deploy.cmake"
PROGRAMS = ("MacOS/vorna", "PlugIns/platforms/libqcocoa.dylib")
OF_THE_SYSTEM = "\\t/usr/lib/libSystem.B.dylib\\n\\t@rpath/QtCore.framework/Versions/A/QtCore\\n"


class WithTools(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.place = pathlib.Path(place.name).resolve()

    def tool(self, name, says="", status=0):
        file = self.place / name
        file.parent.mkdir(exist_ok=True)
        file.write_text(f'#!/bin/sh\necho "{name} $*" >>{self.place}/asked\nprintf "{says}"\nexit {status}\n')
        file.chmod(0o755)
        return file

    def asked(self):
        return (self.place / "asked").read_text(encoding="utf-8").replace(f"{self.place}/", "").splitlines()


class Run(WithTools):
    def start(self, *words, runs):
        for name in ("script/bootstrap", "script/build", "bin/open", "bin/pkill"):
            self.tool(name)
        self.tool("bin/uname", "Darwin")
        self.tool("bin/pgrep", status=0 if runs else 1)
        script = (kit.PROJECT / "script" / "run").read_text(encoding="utf-8")
        with socket.create_server(("127.0.0.1", 0)) as bridge:
            port = f"BRIDGE_PORT={bridge.getsockname()[1]}"
            self.tool("script/run").write_text(script.replace("BRIDGE_PORT=43105", port), encoding="utf-8")
            surroundings = {"PATH": f"{self.place}/bin:{os.environ['PATH']}"}
            kit.run(self.place / "script" / "run", *words, env=surroundings, timeout=30)
        return [line.removeprefix("bin/") for line in self.asked() if line.startswith(("bin/open", "bin/pkill"))]

    def test_opens_the_bundle_and_ends_it(self):
        opens = "open -W -n build/release/vorna.app --args --settings"
        ends = "pkill -xf build/release/vorna.app/Contents/MacOS/vorna.*"
        self.assertEqual(self.start("--settings", runs=False), [opens, ends])

    def test_comes_back_to_the_one_that_runs(self):
        self.assertEqual(self.start(runs=True), ["open build/release/vorna.app"])


class Image(WithTools):
    def setUp(self):
        super().setUp()
        for file in (self.place / "vorna.app" / "Contents" / file for file in PROGRAMS):
            file.parent.mkdir(parents=True)
            file.touch()
        for folder in ("prefix/lib", "prefix/opt/qtbase/lib", "prefix/opt/qtsvg/lib", "prefix/opt/other/lib"):
            (self.place / folder).mkdir(parents=True)

    def deploy(self, macdeployqt="", otool=OF_THE_SYSTEM, codesign=0):
        signer = self.tool("codesign", status=codesign)
        done, said = kit.run(
            *("cmake", f"-DBUNDLE={self.place}/vorna.app", f"-DQT_PREFIX={self.place}/prefix"),
            *(f"-DMACDEPLOYQT={self.tool('macdeployqt', macdeployqt)}", f"-DOTOOL={self.tool('otool', otool)}"),
            *(f"-DCODESIGN={signer}", f"-DSIGN={signer};--force;--sign;somebody", "-P", DEPLOY),
        )
        return done, said, self.asked()

    def test_deploys_looks_and_signs_last(self):
        done, said, asked = self.deploy()
        self.assertTrue(done, said)
        libraries = [f"-libpath=prefix/{name}" for name in ("lib", "opt/qtbase/lib", "opt/qtsvg/lib")]
        signs = ["codesign --force --sign somebody --deep vorna.app", "codesign --verify --deep --strict vorna.app"]
        self.assertEqual(asked[0].split()[:4], ["macdeployqt", "vorna.app", "-verbose=1", "-no-codesign"])
        self.assertEqual(sorted(asked[0].split()[4:]), libraries)
        self.assertEqual(sorted(asked[1:3]), [f"otool -L vorna.app/Contents/{file}" for file in PROGRAMS])
        self.assertEqual(asked[3:], signs)

    def test_fails_where_a_library_was_not_found(self):
        done, said, _ = self.deploy(macdeployqt="ERROR: Cannot resolve rpath @rpath/QtPdf\\n")
        self.assertFalse(done)
        self.assertIn("would not start elsewhere", said)

    def test_fails_where_the_bundle_needs_the_machine_that_made_it(self):
        outside = "/opt/homebrew/opt/zstd/lib/libzstd.1.dylib"
        done, said, _ = self.deploy(otool=OF_THE_SYSTEM + f"\\t{outside}\\n")
        self.assertFalse(done)
        self.assertIn(outside, said)

    def test_a_library_may_have_the_name_that_it_had(self):
        own = "/opt/homebrew/plugins/libqcocoa.dylib"
        (self.place / "vorna.app" / "Contents" / "MacOS" / "vorna").unlink()
        done, said, _ = self.deploy(otool=f"file:\\n\\t{own} (1.0)\\n" + OF_THE_SYSTEM)
        self.assertTrue(done, said)

    def test_fails_where_it_cannot_be_signed(self):
        self.assertFalse(self.deploy(codesign=1)[0])
