"""Compiles the whole companion for arm64-apple-macos14, Objective-C++ with ARC, warnings as errors; links its bundle
against stubs, so that a capability without a file or a framework that is not named fails; and looks into the bundle.
Nothing of it runs."""

import pathlib
import plistlib
import re
import struct
import unittest

import kit

CONTENTS = kit.TARGET / "vorna.app" / "Contents"

MACH_O_64 = 0xFEEDFACF
ARM64 = 0x0100000C
EXECUTABLE = 2
SIZES = {b"icp4": 16, b"ic11": 32, b"icp5": 32, b"ic12": 64, b"ic07": 128}
SIZES |= {b"ic13": 256, b"ic08": 256, b"ic14": 512, b"ic09": 512, b"ic10": 1024}


def setUpModule():
    kit.need_packages()


def pictures_of(icon):
    """The types of the pictures of an icon file, each with its width and height."""
    kind, length = struct.unpack(">4sI", icon[:8])
    assert kind == b"icns" and length == len(icon)
    position = 8
    while position < length:
        kind, size = struct.unpack(">4sI", icon[position : position + 8])
        yield kind, struct.unpack(">II", icon[position + 24 : position + 32])
        position += size


class EveryCapability(unittest.TestCase):
    def test_has_one_file_and_every_file_is_compiled(self):
        files = [file for file in kit.SOURCES.iterdir() if file.suffix in {".mm", ".cpp"}]
        common = [file for file in kit.SOURCES.parent.glob("*.cpp")]
        for header in kit.SOURCES.parent.glob("*.h"):
            self.assertEqual([file.stem for file in files].count(header.stem), 1, header)
        sources = (kit.SOURCES / "Sources.cmake").read_text(encoding="utf-8")
        for file in files + common:
            self.assertIn(f"{file.relative_to(kit.PROJECT / 'src')}\n", sources)


class Bundle(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        kit.build_for_the_mac("vorna-companion")

    def test_program_is_for_this_machine(self):
        head = (CONTENTS / "MacOS" / "vorna").read_bytes()[:16]
        magic, machine, _, kind = struct.unpack("<IIII", head)
        self.assertEqual((magic, machine, kind), (MACH_O_64, ARM64, EXECUTABLE))

    def test_information_says_what_the_system_asks_for(self):
        project = (kit.PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
        expected = {
            "CFBundleIdentifier": "dev.vorna.companion",
            "CFBundleName": "vorna",
            "CFBundleExecutable": "vorna",
            "CFBundlePackageType": "APPL",
            "CFBundleIconFile": "vorna",
            "CFBundleShortVersionString": re.search(r"VERSION (\d+\.\d+\.\d+)", project)[1],
            "LSUIElement": True,
            "LSMultipleInstancesProhibited": True,
            "LSMinimumSystemVersion": "14.0",
            "NSHighResolutionCapable": True,
            "NSPrincipalClass": "NSApplication",
        }
        self.assertLessEqual(expected.items(), self.information().items())

    def test_what_is_signed_is_signed_again_when_it_changes(self):
        signatures = kit.WORK / "kit" / "signatures"
        signatures.write_text("", encoding="utf-8")
        number = str(1 - int(self.information()["CFBundleVersion"]))
        for _ in range(2):
            kit.build_for_the_mac("vorna-companion", definitions=[f"-DVORNA_BUILD_NUMBER={number}"])
        self.assertEqual(self.information()["CFBundleVersion"], number)
        self.assertEqual(signatures.read_text(encoding="utf-8"), f"--force --sign - {kit.TARGET}/vorna.app\n")

    @staticmethod
    def information():
        return plistlib.loads((CONTENTS / "Info.plist").read_bytes())

    def test_icon_has_every_size(self):
        icon = (CONTENTS / "Resources" / "vorna.icns").read_bytes()
        self.assertEqual(dict(pictures_of(icon)), {kind: (side, side) for kind, side in SIZES.items()})


if __name__ == "__main__":
    unittest.main()
