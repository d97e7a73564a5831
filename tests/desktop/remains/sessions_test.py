"""Many sessions in one run of the program leave no more than a few did."""
import collections
import glob
import os
import re
import time
import unittest

import fault_point as kinds
import witness as keys
from faults import is_long
from stage import Stage
from rig.figures import figure

# Without the C library's small store of pieces that were freed, which it counts as allocated.
PLAIN_HEAP = {"GLIBC_TUNABLES": "glibc.malloc.tcache_count=0"}
FEW, MANY = (10, 100) if is_long() else (5, 15)


class Holdings(collections.namedtuple("Holdings", "resources files children threads wake_ups kilobytes")):
    """What the program has, as can be seen from outside."""

    def counts(self):
        return self._replace(wake_ups=0, kilobytes=0)

    def words(self):
        resources = sum(int(line.rpartition(" ")[2]) for line in self.resources)
        files = sum(number for _, number in self.files)
        return (f"{resources} X resources, {files} files, {self.threads} threads, {self.children} children, "
                f"{self.wake_ups} wake-ups in 3 s, {self.kilobytes} KiB of private memory")


def holdings(stage):
    pid = stage.program.process.pid
    resources = tuple(stage.witness.ask("resources", pid))
    files = collections.Counter(kind_of_file(path) for path in glob.glob(f"/proc/{pid}/fd/*"))
    threads = glob.glob(f"/proc/{pid}/task/*")
    children = [other for other, _ in stage.processes() if other != pid]
    return Holdings(resources, tuple(sorted(files.items())), len(children), len(threads), wake_ups(pid),
                    own_kilobytes(pid))


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
            # Each session types the same: the toolkit keeps what it has drawn, so a new emoji costs memory once.
            stage.start_program(PLAIN_HEAP, modifierKeysTypeEmoji=False)
            allocated = self.hold(stage, FEW)
            few = holdings(stage)
            allocated += self.hold(stage, MANY - FEW)
            many = holdings(stage)
            allocated += self.hold(stage, 1)
            stage.program.quit()
            self.assertEqual(stage.what_is_left_after(1), [])
        for number, held in ((FEW, few), (MANY, many)):
            figure(f"after {number} sessions: {held.words()}, {allocated[number]} bytes allocated")
        self.assertEqual(many.counts(), few.counts())
        # A forgotten timer wakes at least twice a second for each session that is over.
        self.assertLess(many.wake_ups, few.wake_ups + 6)
        # The least of five: now and then one is taken while something is under way, and is 60 kilobytes more.
        self.assertLess(min(allocated[-5:]) / min(allocated[FEW:FEW + 5]) - 1, 0.01, allocated)

    @staticmethod
    def hold(stage, sessions):
        """What was allocated at rest before each: at the first that the program says of it."""
        allocated = []
        for _ in range(sessions):
            stage.point.arm(kinds.MEASURED, 1)
            stage.start_session()
            allocated.append(stage.point.allocated)
            stage.point.arm(kinds.MEASURED, 0)  # what was reached would cut the waiting short
            stage.witness.type(keys.A, keys.S, keys.D)
            stage.end_session()
        time.sleep(1)
        return allocated


if __name__ == "__main__":
    unittest.main(verbosity=2)
