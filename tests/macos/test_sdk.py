"""Holds what src/platform/macos sends and names, and what tests/macos/headers declares, against the declarations of the
Mac's whole SDK. It sees a mistake that was made in a file and in our headers alike, which no compiler sees here."""

import concurrent.futures
import pathlib
import shutil
import tempfile
import unittest

import kit
import mutants
import sdk

HEADERS = kit.HERE / "headers"


def setUpModule():
    kit.need_packages()
    if not sdk.TYPES.is_dir():
        kit.skip("the SDK's declarations were not fetched: script/bootstrap does it where npm is")


class RealSdk(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.sdk = sdk.Sdk()
        done, said = kit.configure_for_the_mac(kit.PROJECT, mutants.TARGET)
        assert done, said[-6000:]
        cls.sources = sorted(mutants.SOURCES.glob("*.mm"))
        cls.words = {source: cls.command(source) for source in cls.sources}

    @staticmethod
    def command(source):
        words = mutants.with_output(mutants.compile_command(source), "/dev/null")
        return [*(word for word in words if word not in ("-c", "-Werror", str(source))), str(source)]

    def test_declarations_are_those_of_a_whole_sdk(self):
        self.assertGreater(len(self.sdk.members), 5000)
        self.assertGreater(len(self.sdk.enums), 2000)

    def test_everything_that_is_sent_or_declared_exists(self):
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            found = list(pool.map(lambda source: sdk.uses(self.words[source], mutants.TARGET, source), self.sources))
        sent = set().union(*(uses for uses, _ in found))
        declared = set().union(*(declarations for _, declarations in found))
        print(f"{len(sent)} messages, {len(declared)} declarations")
        self.assertGreater(len(sent), 80)
        self.assertGreater(len(declared), 30)
        self.assertEqual(self.sdk.unknown(sent | declared), [])

    def test_every_name_exists_and_has_its_value(self):
        files = [*mutants.SOURCES.iterdir(), *(file for file in HEADERS.rglob("*.h"))]
        names = set().union(*(sdk.names_in(file.read_text(encoding="utf-8")) for file in files))
        wrong, compared = sdk.wrong_values(self.sdk, names, self.words[self.sources[0]], mutants.TARGET)
        print(f"{len(names)} names, {compared} values")
        self.assertEqual([name for name in sorted(names) if not self.sdk.knows_name(name)], [])
        self.assertGreater(compared, 20)
        self.assertEqual(wrong, [])

    def test_a_mistake_in_code_and_header_alike_is_seen(self):
        with tempfile.TemporaryDirectory() as place:
            source = pathlib.Path(place) / "Mistake.mm"
            source.write_text("#import <AppKit/AppKit.h>\n@interface NSImage (Mistaken)\n- (void)setIsTemplate:(BOOL)flag;"
                              "\n@end\nvoid f(NSImage* image) {\n    [image setIsTemplate:YES];\n}\n", encoding="utf-8")
            sent, _ = sdk.uses([*self.words[self.sources[0]][:-1], source], mutants.TARGET, source)
        self.assertEqual(self.sdk.unknown(sent), ["-[NSImage setIsTemplate:]"])

    def test_a_wrong_value_is_seen(self):
        with tempfile.TemporaryDirectory() as place:
            headers = pathlib.Path(place) / "headers"
            shutil.copytree(HEADERS, headers)
            file = headers / "AppKit" / "AppKit.h"
            text = file.read_text(encoding="utf-8")
            file.write_text(text.replace("RightMouseDown = 1ULL << 3", "RightMouseDown = 1ULL << 4"), encoding="utf-8")
            words = [w.replace(str(kit.HERE / "target" / ".." / "headers"), str(headers)) if not w.endswith("-arc") else w
                     for w in self.words[self.sources[0]]]
            wrong, _ = sdk.wrong_values(self.sdk, {"NSEventMaskRightMouseDown"}, words, mutants.TARGET)
        self.assertEqual(len(wrong), 1)


if __name__ == "__main__":
    unittest.main()
