"""A short day: what the companion holds at its end is what it held after its first half."""

import unittest

import soak

POLLS, OPENINGS, TICK = 300, 40, 0.02


class Soak(unittest.TestCase):
    def test_nothing_grows_with_polls_and_openings(self):
        checkpoints, day, status, complaints = soak.run(POLLS, OPENINGS, TICK, parts=(0.5, 1))
        figures, broken = soak.table(checkpoints)
        self.assertEqual(broken, [], figures)
        self.assertEqual((status, complaints), (0, ""))
        self.assertGreaterEqual(day.peer.polls, POLLS)
        self.assertGreaterEqual(len(day.peer.spoilt), len(soak.peer.Peer.FAULTS))
        for what in ("daypart", "action", "settings", "notifications"):
            self.assertGreater(day.counts[what], 0, what)


if __name__ == "__main__":
    unittest.main()
