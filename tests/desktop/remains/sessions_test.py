"""Many sessions in one run of the program leave no more than a few did."""
import collections
import glob
import os
import re
import time
import unittest

import witness as keys
from faults import is_long
from stage import Stage
from rig.figures import figure

FEW, MANY = (10, 100) if is_long() else (5, 15)


class Holdings(collections.namedtuple("Holdings", "resources files children threads wake_ups")):
    """What the program has, as counts that can be seen from outside."""

    def words(self):
        return "; ".join(f"{name} {value}" for name, value in self._asdict().items() if name != "wake_ups")


def holdings(stage):
    pid = stage.program.process.pid
    resources = tuple(stage.witness.ask("resources", pid))
    files = collections.Counter(kind_of_file(path) for path in glob.glob(f"/proc/{pid}/fd/*"))
    threads = glob.glob(f"/proc/{pid}/task/*")
    children = [other for other, _ in stage.processes() if other != pid]
    return Holdings(resources, tuple(sorted(files.items())), len(children), len(threads), wake_ups(pid))


def kind_of_file(path):
    """Sockets and pipes have numbers, which differ."""
    try:
        return re.sub(r"\d+", "N", os.readlink(path))
    except FileNotFoundError:
        return "gone"


def wake_ups(pid, seconds=3):
    """How often the main thread wakes in a while of rest: what a timer that was forgotten would show by."""
    def switches():
        with open(f"/proc/{pid}/task/{pid}/status", encoding="utf-8") as file:
            return int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", file.read(), re.M).group(1))
    before = switches()
    time.sleep(seconds)
    return switches() - before


def own_kilobytes(pid):
    """Memory that the process alone has: what it allocated and has written to, freed or not."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="utf-8") as file:
        return int(re.search(r"^Private_Dirty:\s+(\d+)", file.read(), re.M).group(1))


class Sessions(unittest.TestCase):
    def test_many_sessions_leave_what_few_did(self):
        with Stage() as stage:
            stage.start_program()
            kilobytes = self.hold(stage, FEW)
            few = holdings(stage)
            kilobytes += self.hold(stage, MANY - FEW)
            many = holdings(stage)
            stage.program.quit()
            self.assertEqual(stage.what_is_left_after(1), [])
        figure(f"after {FEW} and {MANY} sessions: wake-ups in 3 s {few.wake_ups}, {many.wake_ups}; {few.words()}")
        self.assertEqual(many._replace(wake_ups=0), few._replace(wake_ups=0))
        # A forgotten timer wakes at least twice a second for each session that is over.
        self.assertLess(many.wake_ups, few.wake_ups + 6)
        if is_long():
            self.assert_no_growth(kilobytes)

    @staticmethod
    def hold(stage, sessions):
        """What the program's own memory came to after each."""
        kilobytes = []
        for _ in range(sessions):
            stage.start_session()
            stage.witness.type(keys.A, keys.S, keys.D)
            stage.end_session()
            kilobytes.append(own_kilobytes(stage.program.process.pid))
        time.sleep(1)
        return kilobytes

    def assert_no_growth(self, kilobytes):
        """Of what the program has written to; within one in a hundred of what it was after the first few."""
        few, most = kilobytes[FEW - 1], max(kilobytes[FEW:])
        figure(f"own memory after {FEW} sessions {few} KiB, after {MANY} {kilobytes[-1]} KiB, at most {most} KiB")
        self.assertLess(most / few - 1, 0.01, kilobytes)


if __name__ == "__main__":
    unittest.main(verbosity=2)
