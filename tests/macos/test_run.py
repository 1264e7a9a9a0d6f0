"""Runs the real files of src/platform/macos on this machine, against stand-ins for the Mac's frameworks, under the
address and undefined-behaviour sanitizers; and plants a handful of mistakes in them, which that or the compiler for the
target must notice. `script/mutate platform/macos` plants all."""

import unittest

import kit
import mutants
from mutants import mutate

HANDFUL = ("StatusItem.mm", "ChildDescriptors.cpp", "SingleInstance.mm")


def setUpModule():
    kit.need_packages()


class Run(unittest.TestCase):
    def test_every_capability_does_what_its_header_says(self):
        kit.build_to_run()
        passed, said = kit.passes(kit.RUN / "TestMac", kit.RUN)
        self.assertTrue(passed, said[-6000:])
        print(next(line for line in said.splitlines() if "Totals:" in line))


class Mistakes(unittest.TestCase):
    def test_every_file_has_one(self):
        files = {file.name for file in kit.SOURCES.iterdir() if file.suffix in {".mm", ".cpp"}}
        self.assertLessEqual(files, {mistake.file.name for mistake in mutants.all_mistakes()})

    def test_they_are_noticed_and_what_changes_nothing_is_not(self):
        first = {mistake.file.name: mistake for mistake in reversed(mutants.all_mistakes())}
        nothing = mutate.Mistake(mutate.MAC / "ChildDescriptors.cpp", "namespace ChildD", "namespace  ChildD", "")
        planted = [*(first[name] for name in HANDFUL), nothing]
        self.assertEqual(mutants.Planter().plant(planted), ([nothing], []))
