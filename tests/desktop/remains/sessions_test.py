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
from rig.beside import Services, wishes
from rig.figures import figure
from rig.sound import SoundServer

# Without the C library's small store of pieces that were freed, which it counts as allocated.
PLAIN_HEAP = {"GLIBC_TUNABLES": "glibc.malloc.tcache_count=0"}
FEW, MANY = (10, 100) if is_long() else (5, 15)


class Holdings(collections.namedtuple("Holdings", "resources files children threads streams wake_ups kilobytes")):
    """What the program has, as can be seen from outside."""

    def counts(self):
        return self._replace(wake_ups=0, kilobytes=0)

    def words(self):
        resources = sum(int(line.rpartition(" ")[2]) for line in self.resources)
        files = sum(number for _, number in self.files)
        return (f"{resources} X resources, {files} files, {self.threads} threads, {self.children} children, "
                f"{self.streams} sound stream, {self.wake_ups} wake-ups in 3 s, {self.kilobytes} KiB of private memory")


class FurnishedStage(Stage):
    """With what a session takes part in beside the X server: sound, the desktop's services and the login service."""

    def __enter__(self):
        super().__enter__()
        try:
            self.desktop.start_system_bus()
            self.sound, self.services = SoundServer(self.desktop), Services(self.desktop)
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def session(self):
        """With sounds and all inhibitors, which is seen here. What was allocated at rest before it: at the first that
        the program says of it."""
        self.point.arm(kinds.MEASURED, 1)
        self.start_session()
        allocated = self.point.allocated
        self.point.arm(kinds.MEASURED, 0)  # what was reached would cut the waiting short
        self.services.wait_held(*wishes())
        self.sound.forget()
        # Each types the same: the toolkit keeps what it has drawn, so a new emoji costs memory once.
        self.witness.type(keys.A, keys.S, keys.D)
        self.sound.wait_for_sound()
        self.end_session()
        self.services.wait_held()
        return allocated

    def holdings(self):
        pid = self.program.process.pid
        resources = tuple(self.witness.ask("resources", pid))
        files = collections.Counter(kind_of_file(path) for path in glob.glob(f"/proc/{pid}/fd/*"))
        threads = glob.glob(f"/proc/{pid}/task/*")
        children = [other for other, _ in self.processes() if other != pid]
        return Holdings(resources, tuple(sorted(files.items())), len(children), len(threads), self.sound.streams(),
                        wake_ups(pid), own_kilobytes(pid))


def kind_of_file(path):
    """Sockets and pipes have numbers, which differ."""
    try:
        return re.sub(r"\d+", "N", os.readlink(path))
    except FileNotFoundError:
        return "gone"


def wake_ups(pid, seconds=3):
    """How often its threads wake in a while of rest: what a timer that was forgotten would show by, or a sound stream
    that was not paused."""
    def switches():
        total = 0
        for path in glob.glob(f"/proc/{pid}/task/*/status"):
            with open(path, encoding="utf-8") as file:
                total += int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", file.read(), re.M).group(1))
        return total
    before = switches()
    time.sleep(seconds)
    return switches() - before


def own_kilobytes(pid):
    """Memory that the process alone has: what it allocated and has written to, freed or not."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="utf-8") as file:
        return int(re.search(r"^Private_Dirty:\s+(\d+)", file.read(), re.M).group(1))


class Sessions(unittest.TestCase):
    def test_many_sessions_leave_what_few_did(self):
        with FurnishedStage() as stage:
            stage.start_program(PLAIN_HEAP, modifierKeysTypeEmoji=False, soundEnabled=True)
            allocated = self.hold(stage, FEW)
            few = stage.holdings()
            allocated += self.hold(stage, MANY - FEW)
            many = stage.holdings()
            allocated += self.hold(stage, 1)
            wishes_granted = sum(line.startswith("+") for line in stage.services.lines)
            stage.program.quit()
            self.assertEqual(stage.what_is_left_after(1), [])
        for number, held in ((FEW, few), (MANY, many)):
            figure(f"after {number} sessions: {held.words()}, {allocated[number]} bytes allocated")
        figure(f"{wishes_granted} inhibitors were held and given back, those included that are tried between sessions")
        self.assertEqual(few.streams, 1)
        self.assertEqual(many.counts(), few.counts())
        # A forgotten timer wakes at least twice a second for each session that is over.
        self.assertLess(many.wake_ups, few.wake_ups + 6)
        # The least of five: now and then one is taken while something is under way, and is 60 kilobytes more.
        self.assertLess(min(allocated[-5:]) / min(allocated[FEW:FEW + 5]) - 1, 0.01, allocated)

    @staticmethod
    def hold(stage, sessions):
        allocated = [stage.session() for _ in range(sessions)]
        time.sleep(1)
        return allocated


if __name__ == "__main__":
    unittest.main(verbosity=2)
