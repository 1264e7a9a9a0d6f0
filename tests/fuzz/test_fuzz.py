"""Every fuzz target accepts its seeds, and some thousands of inputs made from them: always the same ones."""

import subprocess
import tempfile
import unittest

import fuzz

RUNS = 20_000
MOST_SECONDS = 15


def setUpModule():
    missing = fuzz.missing_packages()
    if missing:
        reason = "not installed: " + ", ".join(missing)
        print(f"SKIPPED: {reason}", flush=True)
        raise unittest.SkipTest(reason)
    try:
        fuzz.build()
    except subprocess.CalledProcessError as failed:
        raise AssertionError(failed.stdout[-6000:]) from None


class Fuzz(unittest.TestCase):
    def test_targets_have_seeds_and_a_dictionary(self):
        for folder in (fuzz.HERE / "seeds").iterdir():
            self.assertIn(folder.name, fuzz.TARGETS)
        for target in fuzz.TARGETS:
            with self.subTest(target):
                self.assertGreater(len(fuzz.try_seeds(target)), len(fuzz.command(target)))
                self.assertTrue((fuzz.HERE / f"{target}.dict").read_bytes())

    def test_seeds_are_accepted(self):
        for target in fuzz.TARGETS:
            with self.subTest(target):
                self.accepts(fuzz.try_seeds(target))

    def test_inputs_made_from_the_seeds_are_accepted(self):
        for target in fuzz.TARGETS:
            with self.subTest(target), tempfile.TemporaryDirectory() as corpus:
                self.accepts(fuzz.try_more(target, RUNS, corpus, "-seed=1", f"-max_total_time={MOST_SECONDS}"))

    def accepts(self, command):
        done = subprocess.run(
            command, env=fuzz.environment(), stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace"
        )
        self.assertEqual(done.returncode, 0, done.stdout[-6000:])


if __name__ == "__main__":
    unittest.main()
