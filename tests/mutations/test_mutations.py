"""Looks whether the tables of mistakes fit the sources, and plants a handful of them; `script/mutate` plants all."""

import pathlib
import unittest

import mutate


class Tables(unittest.TestCase):
    def test_every_mistake_can_be_planted(self):
        for mistake in mutate.read_tables():
            with self.subTest(str(mistake)):
                self.assertNotEqual(mistake.breaks, "")
                mistake.planted((mutate.PROJECT / mistake.file).read_text(encoding="utf-8"))


class Handful(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.planter = mutate.Planter(only={"TestDaypart", "TestDaypartController"})

    def test_a_mistake_in_each_file_is_noticed(self):
        first = {mistake.file: mistake for mistake in reversed(mutate.read_tables(["daypart"]))}
        self.assertGreater(len(first), 2)
        self.assertEqual(self.planter.plant(first.values()), ([], []))

    def test_what_changes_nothing_is_not_noticed(self):
        nothing = mutate.Mistake(pathlib.PurePosixPath("src/daypart/Daypart.cpp"), "struct Span {", "struct  Span {", "")
        self.assertEqual(self.planter.plant([nothing]), ([nothing], []))

    def test_what_does_not_compile_is_an_error_of_the_table(self):
        typo = mutate.Mistake(pathlib.PurePosixPath("src/daypart/Daypart.cpp"), "struct Span {", "struct Spam {", "")
        self.assertEqual(self.planter.plant([typo]), ([], [typo]))


if __name__ == "__main__":
    unittest.main()
