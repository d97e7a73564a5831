"""Asked to end by a signal, at whatever step of a session: the session ends in order and the program leaves."""
import json
import time
import unittest

import fault_point as kinds
from faults import Campaign, is_long, reach
from stage import LOCKED, SETTINGS, UNLOCKED, Stage, wait_until

SIGNALS = (("SIGTERM", kinds.TERMINATE), ("SIGINT", kinds.INTERRUPT), ("SIGHUP", kinds.HANG_UP))


class Signals(unittest.TestCase):
    def test_the_session_ends_in_order(self):
        number = 90 if is_long() else 9
        campaign = Campaign(self.leave)
        campaign.go("signals", SIGNALS, number)
        self.assertEqual(sum(campaign.done.values()), number)
        self.assertEqual(campaign.failures, [], "\n".join(campaign.failures))

    @staticmethod
    def leave(stage, fault):
        fewer_steps = reach(stage, fault)
        if fewer_steps is not None:
            stage.program.process.terminate()
        program = stage.program
        left = []
        wait_until(lambda: not program.is_running(), "the program's end")
        time.sleep(0.05)  # the threads that read its words are ours, and may be a little behind
        if program.process.returncode != 0:
            left.append(f"it ended with {program.process.returncode}, saying {program.errors}")
        # At the first steps the keys that ask for a session have come, and the session has not begun.
        if LOCKED in program.lines and UNLOCKED not in program.lines:
            left.append(f"a session that did not end, by its lines: {program.lines}")
        with open(stage.desktop.settings_file, encoding="utf-8") as file:
            if json.load(file) != SETTINGS:
                left.append("the settings changed")
        return fewer_steps, left + stage.what_is_left_after(1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
