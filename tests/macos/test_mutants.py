"""Plants a handful of mistakes in the Mac's files; `script/mutate platform/macos` plants all."""

import itertools
import unittest

import kit
import mutants
from mutants import mutate

HANDFUL = ("StatusItem.mm", "ChildDescriptors.cpp", "SingleInstance.mm")


def setUpModule():
    kit.need_packages()


class Table(unittest.TestCase):
    def test_every_file_has_a_mistake(self):
        files = {file.name for file in mutants.SOURCES.iterdir() if file.suffix in {".mm", ".cpp"}}
        self.assertEqual({mistake.file.name for mistake in mutants.all_mistakes()}, files)


class Handful(unittest.TestCase):
    def test_mistakes_are_noticed_and_what_changes_nothing_is_not(self):
        first = {mistake.file.name: mistake for mistake in reversed(mutants.all_mistakes())}
        nothing = mutate.Mistake(mutate.MAC / "ChildDescriptors.cpp", "namespace ChildD", "namespace  ChildD", "")
        planted = [*(first[name] for name in HANDFUL), nothing]
        self.assertEqual(mutants.Planter().plant(planted), ([nothing], []))
        self.assertTrue(all(noticed for _, noticed in itertools.islice(mutants.link_mistakes(), 2)))


if __name__ == "__main__":
    unittest.main()
