"""The test's view of the page that it shares with the library that is preloaded into the program: see FaultPoint.h."""
import mmap
import os
import struct
import time

LIBRARY = os.environ["TAPALONG_FAULT_LIBRARY"]

KILLED, BROKEN_MEMORY, STOPPED, TOOLKIT_CUT, OWN_CUT, STARVED, TERMINATE, INTERRUPT, HANG_UP, MEASURED = range(1, 11)

FIELDS = ("pid", "count", "at", "kind", "reached", "allocated", "reached_at")
LAYOUT = struct.Struct(f"={len(FIELDS)}I")


class FaultPoint:
    """One per desktop. Only the first process that is started with the environment after `reset` counts and falters."""

    def __init__(self, path):
        self.path = path
        with open(path, "w+b") as file:
            file.write(bytes(LAYOUT.size))
            file.flush()
            self._page = mmap.mmap(file.fileno(), LAYOUT.size)

    @property
    def environment(self):
        return {"LD_PRELOAD": LIBRARY, "TAPALONG_FAULT_POINT": self.path}

    def reset(self):
        self._page[:] = bytes(LAYOUT.size)

    def arm(self, kind, at):
        """Lets it happen before the `at`-th call from now; 0 only counts them."""
        for field, value in (("at", 0), ("count", 0), ("reached", 0), ("kind", kind), ("at", at)):
            self._set(field, value)

    @property
    def count(self):
        return self._get("count")

    @property
    def reached(self):
        return self._get("reached") != 0

    @property
    def reached_at(self):
        """By time.monotonic(): the moment before it happened."""
        now = time.monotonic()
        return now - (int(now * 1000) - self._get("reached_at")) % (1 << 32) / 1000

    @property
    def allocated(self):
        """Bytes, as of the last time that was armed with MEASURED."""
        return self._get("allocated")

    def _get(self, field):
        return struct.unpack_from("=I", self._page, 4 * FIELDS.index(field))[0]

    def _set(self, field, value):
        struct.pack_into("=I", self._page, 4 * FIELDS.index(field), value)
