"""Holds what src/platform/macos sends and names, and what tests/macos/headers declares, against the declarations of the
Mac's whole SDK. It sees a mistake that was made in a file and in our headers alike, which no compiler sees here."""

import concurrent.futures
import pathlib
import tempfile
import unittest

import kit
import mutants
import sdk


def setUpModule():
    kit.need_packages()
    if not sdk.TYPES.is_dir():
        kit.skip("the SDK's declarations were not fetched: script/bootstrap does it where npm is")


class RealSdk(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.sdk = sdk.Sdk()
        for done, said in (kit.configure_for_the_mac(kit.PROJECT, mutants.TARGET), kit.build(mutants.TARGET, "vorna_tray")):
            assert done, said[-6000:]
        cls.sources = sorted(mutants.SOURCES.glob("*.mm"))
        cls.headers = [file.read_text(encoding="utf-8") for file in (kit.HERE / "headers").rglob("*.h")]
        cls.words = {it: mutants.compile_command(mutants.TARGET, "vorna_tray", it) for it in cls.sources}

    def test_declarations_are_those_of_a_whole_sdk(self):
        self.assertGreater(len(self.sdk.members), 5000)
        self.assertGreater(len(self.sdk.enums), 2000)

    def test_everything_that_is_sent_or_declared_exists(self):
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            found = pool.map(lambda it: sdk.sent_by(self.words[it], mutants.TARGET), self.sources)
        sent = set().union(*found)
        declared = {it for text in self.headers for it in sdk.declared_in(text)}
        print(f"{len(sent)} messages, {len(declared)} declarations")
        self.assertGreater(len(sent), 80)
        self.assertGreater(len(declared), 30)
        self.assertEqual(self.sdk.unknown(sent | declared), [])

    def test_every_name_exists_and_has_its_value(self):
        texts = [*self.headers, *(file.read_text(encoding="utf-8") for file in mutants.SOURCES.iterdir())]
        names = set().union(*map(sdk.names_in, texts))
        values = sdk.values_of(self.sdk, names)
        print(f"{len(names)} names, {len(values)} values")
        self.assertEqual([name for name in sorted(names) if not self.sdk.knows_name(name)], [])
        self.assertGreater(len(values), 20)
        words = self.words[self.sources[0]]
        self.assertEqual(sdk.wrong_values(values, words, mutants.TARGET), [])
        another = {"NSEventMaskRightMouseDown": values["NSEventMaskRightMouseDown"] + 1}
        self.assertEqual(len(sdk.wrong_values(another, words, mutants.TARGET)), 1)

    def test_a_mistake_in_code_and_header_alike_is_seen(self):
        header = "@interface NSImage (Mistaken)\n- (void)setIsTemplate:(BOOL)flag;\n@end\n"
        with tempfile.TemporaryDirectory() as place:
            source = pathlib.Path(place) / "Mistake.mm"
            source.write_text(f"#import <AppKit/AppKit.h>\n{header}void f(NSImage* image) {{\n"
                              "    [image setIsTemplate:YES];\n}\n", encoding="utf-8")
            words = [word for word in self.words[self.sources[0]][:-1] if word != "-Werror"]
            sent = sdk.sent_by([*words, str(source)], mutants.TARGET)
        for found in (sent, set(sdk.declared_in(header))):
            self.assertEqual(self.sdk.unknown(found), ["-[NSImage setIsTemplate:]"])


if __name__ == "__main__":
    unittest.main()
