"""Plants one mistake in each file of Objective-C++ and looks whether the other checks notice;
`script/mutate platform/macos` plants many."""

import unittest

import kit
import mutants


def setUpModule():
    kit.need_packages()


class Mutants(unittest.TestCase):
    def test_a_mistake_in_any_file_is_noticed(self):
        mutants.prepare()
        planted = mutants.one_mistake_a_file()
        missed = mutants.plant(planted)
        print(f"{len(planted) - len(missed)} of {len(planted)} caught")
        self.assertEqual(missed, [])

    def test_every_mistake_of_the_list_can_still_be_planted(self):
        for name, old, new in mutants.all_mistakes():
            with self.subTest(file=name, old=old):
                self.assertIn(old, (mutants.SOURCES / name).read_text(encoding="utf-8"))
                self.assertNotEqual(old, new)


if __name__ == "__main__":
    unittest.main()
