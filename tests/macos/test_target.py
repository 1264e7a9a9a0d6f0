"""Compiles the whole companion for arm64-apple-macos14, Objective-C++ with ARC, warnings as errors; links its bundle,
and looks into it. Nothing of it runs."""

import pathlib
import plistlib
import re
import struct
import unittest

import kit

CONTENTS = kit.TARGET / "vorna.app" / "Contents"

MACH_O_64, ARM64, EXECUTABLE = 0xFEEDFACF, 0x0100000C, 2
SIZES = {b"icp4": 16, b"ic11": 32, b"icp5": 32, b"ic12": 64, b"ic07": 128}
SIZES |= {b"ic13": 256, b"ic08": 256, b"ic14": 512, b"ic09": 512, b"ic10": 1024}


def setUpModule():
    kit.need_packages()


class Bundle(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        kit.build_for_the_mac("vorna-companion")

    def test_every_capability_has_a_file_and_every_framework_is_named(self):
        self.assertEqual(kit.missing_in(CONTENTS / "MacOS" / "vorna"), [])
        self.assertGreater(len(kit.missing_in(kit.TARGET / "src" / "libvorna_tray.a")), 5)
        named = (kit.SOURCES / "Sources.cmake").read_text(encoding="utf-8")
        texts = [file.read_text(encoding="utf-8") for file in kit.SOURCES.iterdir()]
        frameworks = {name for text in texts for name in re.findall(r"^#i\w+ <([A-Z]\w+)/\1\.h>", text, re.MULTILINE)}
        self.assertGreater(len(frameworks), 4)
        for name in frameworks - {"CoreServices"}:  # of that one constants are used, and nothing that is linked
            self.assertIn(f'"-framework {name}"', named)

    def test_program_is_for_this_machine(self):
        head = (CONTENTS / "MacOS" / "vorna").read_bytes()[:16]
        magic, machine, _, kind = struct.unpack("<IIII", head)
        self.assertEqual((magic, machine, kind), (MACH_O_64, ARM64, EXECUTABLE))
        image = (kit.TARGET / "CPackConfig.cmake").read_text(encoding="utf-8")
        self.assertRegex(image, r'set\(CPACK_PACKAGE_FILE_NAME "vorna-[\d.]+-arm64"\)')

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
        kind, length = struct.unpack(">4sI", icon[:8])
        self.assertEqual((kind, length), (b"icns", len(icon)))
        pictures, position = {}, 8
        while position < length:
            kind, size = struct.unpack(">4sI", icon[position : position + 8])
            pictures[kind] = struct.unpack(">II", icon[position + 24 : position + 32])
            position += size
        self.assertEqual(pictures, {kind: (side, side) for kind, side in SIZES.items()})
