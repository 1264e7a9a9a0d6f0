"""Compiles the whole companion for arm64-apple-macos14, Objective-C++ with ARC, warnings as errors; links its bundle
against stubs, so that a capability without a file or a framework that is not named fails; and looks into the bundle.
Nothing of it runs."""

import pathlib
import plistlib
import re
import struct
import unittest

import kit

BUILD = kit.WORK / "target"
CONTENTS = BUILD / "vorna.app" / "Contents"
PLATFORM = kit.PROJECT / "src" / "platform"

MACH_O_64 = 0xFEEDFACF
ARM64 = 0x0100000C
EXECUTABLE = 2
SIZES = {b"icp4": 16, b"ic11": 32, b"icp5": 32, b"ic12": 64, b"ic07": 128}
SIZES |= {b"ic13": 256, b"ic08": 256, b"ic14": 512, b"ic09": 512, b"ic10": 1024}


def setUpModule():
    kit.need_packages()


def of_cmake(pattern):
    return re.search(pattern, (kit.PROJECT / "CMakeLists.txt").read_text(encoding="utf-8"))[1]


def pictures_of(icon):
    """The types of the pictures of an icon file, each with its width and height."""
    kind, length = struct.unpack(">4sI", icon[:8])
    assert kind == b"icns" and length == len(icon)
    pictures = {}
    position = 8
    while position < length:
        kind, size = struct.unpack(">4sI", icon[position : position + 8])
        pictures[kind] = struct.unpack(">II", icon[position + 24 : position + 32])
        position += size
    return pictures


class EveryCapability(unittest.TestCase):
    def test_has_one_file_that_is_compiled(self):
        sources = (PLATFORM / "macos" / "Sources.cmake").read_text(encoding="utf-8")
        for header in PLATFORM.glob("*.h"):
            files = [file for file in (PLATFORM / "macos").glob(f"{header.stem}.*") if file.suffix in {".mm", ".cpp"}]
            with self.subTest(header.name):
                self.assertEqual(len(files), 1)
                self.assertIn(f"platform/macos/{files[0].name}\n", sources)

    def test_has_no_file_that_is_not_compiled(self):
        sources = (PLATFORM / "macos" / "Sources.cmake").read_text(encoding="utf-8")
        for file in (PLATFORM / "macos").iterdir():
            if file.suffix in {".mm", ".cpp"}:
                self.assertIn(f"platform/macos/{file.name}\n", sources)


class Bundle(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        for done, said in (kit.configure_for_the_mac(kit.PROJECT, BUILD), kit.build(BUILD, "vorna-companion")):
            if not done:
                raise AssertionError(said[-6000:])

    def test_program_is_for_this_machine(self):
        head = (CONTENTS / "MacOS" / "vorna").read_bytes()[:16]
        magic, machine, _, kind = struct.unpack("<IIII", head)
        self.assertEqual((magic, machine, kind), (MACH_O_64, ARM64, EXECUTABLE))

    def test_information_says_what_the_system_asks_for(self):
        information = plistlib.loads((CONTENTS / "Info.plist").read_bytes())
        version = of_cmake(r"VERSION (\d+\.\d+\.\d+)")
        expected = {
            "CFBundleIdentifier": "dev.vorna.companion",
            "CFBundleName": "vorna",
            "CFBundleExecutable": "vorna",
            "CFBundlePackageType": "APPL",
            "CFBundleIconFile": "vorna",
            "CFBundleShortVersionString": version,
            "CFBundleVersion": of_cmake(r"VORNA_BUILD_NUMBER (\d+)"),
            "LSUIElement": True,
            "LSMultipleInstancesProhibited": True,
            "LSMinimumSystemVersion": "14.0",
            "NSHighResolutionCapable": True,
            "NSPrincipalClass": "NSApplication",
        }
        self.assertLessEqual(expected.items(), information.items())

    def test_what_is_signed_is_signed_again_when_it_changes(self):
        signatures = kit.WORK / "kit" / "signatures"
        signatures.write_text("", encoding="utf-8")
        for number in ("2", "2", "1"):
            done, said = kit.configure_for_the_mac(kit.PROJECT, BUILD, f"-DVORNA_BUILD_NUMBER={number}")
            self.assertTrue(done, said)
            done, said = kit.build(BUILD, "vorna-companion")
            self.assertTrue(done, said)
            self.assertEqual(plistlib.loads((CONTENTS / "Info.plist").read_bytes())["CFBundleVersion"], number)
        bundle = f"--force --sign - {BUILD}/vorna.app"
        self.assertEqual(signatures.read_text(encoding="utf-8").splitlines(), [bundle] * 2)

    def test_icon_has_every_size(self):
        icon = (CONTENTS / "Resources" / "vorna.icns").read_bytes()
        self.assertEqual(pictures_of(icon), {kind: (side, side) for kind, side in SIZES.items()})


if __name__ == "__main__":
    unittest.main()
