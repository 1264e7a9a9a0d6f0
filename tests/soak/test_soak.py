"""A short day: what the companion holds at its end is what it held at half of it."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))

import companion  # noqa: E402
import soak  # noqa: E402

POLLS, OPENINGS, TICK = 300, 40, 0.02
# At half of so short a day not everything that is taken once is there.
TIMES_THE_BOUNDS = 2

setUpModule = companion.skip_unless_possible


class Soak(unittest.TestCase):
    def test_nothing_grows_with_polls_and_openings(self):
        checkpoints, day, status, complaints = soak.run(POLLS, OPENINGS, TICK, parts=(0.5, 1))
        self.assertEqual(soak.broken_bounds(*checkpoints.values(), TIMES_THE_BOUNDS), [], soak.table(checkpoints))
        self.assertEqual((status, complaints), (0, ""))
        self.assertGreaterEqual(day.peer.polls, POLLS)
        self.assertEqual(sorted(day.peer.spoilt), sorted(soak.peer.FAULTS))
        for what in ("daypart", "action", "settings", "notifications"):
            self.assertGreater(day.counts[what], 0, what)
