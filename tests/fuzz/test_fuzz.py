"""Every fuzz target accepts its seeds, and some thousands of inputs made from them: always the same ones."""

import subprocess
import tempfile
import unittest

import fuzz

RUNS = 20_000
MOST_SECONDS = 15
CAUGHT = {"stdout": subprocess.PIPE, "stderr": subprocess.STDOUT, "text": True, "errors": "replace"}


def setUpModule():
    if fuzz.compiler() is None:
        raise unittest.SkipTest("not installed: clang with libFuzzer")
    try:
        fuzz.build()
    except subprocess.CalledProcessError as failed:
        raise AssertionError(failed.stdout[-6000:]) from None


class Fuzz(unittest.TestCase):
    def test_inputs_made_from_the_seeds_are_accepted(self):
        self.assertEqual({folder.name for folder in (fuzz.HERE / "seeds").iterdir()}, set(fuzz.TARGETS))
        for target in fuzz.TARGETS:
            with self.subTest(target), tempfile.TemporaryDirectory() as corpus:
                self.check_accepted(fuzz.run(target, *fuzz.seeds(target), **CAUGHT))
                self.check_accepted(fuzz.try_more(target, RUNS, corpus, "-seed=1", f"-max_total_time={MOST_SECONDS}",
                                                  **CAUGHT))

    def check_accepted(self, done):
        self.assertEqual(done.returncode, 0, done.stdout[-6000:])
