"""Runs the real files of src/platform/macos on this machine, against stand-ins for the Mac's frameworks, under the
address and undefined-behaviour sanitizers."""

import unittest

import kit

BUILD = kit.WORK / "run"


def setUpModule():
    kit.need_packages()


class Run(unittest.TestCase):
    def test_every_capability_does_what_its_header_says(self):
        for done, said in (
            kit.configure_for_a_run(kit.PROJECT, BUILD),
            kit.build(BUILD),
            kit.test(BUILD),
        ):
            if not done:
                self.fail(said[-6000:])
        print(said[said.index("tests passed") - 5 :].splitlines()[0])


if __name__ == "__main__":
    unittest.main()
