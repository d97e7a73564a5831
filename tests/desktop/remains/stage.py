"""A desktop on which the program lives and dies, and what is left of it afterwards."""
import glob
import os
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))

from rig.desktop import Desktop, wait_until  # noqa: E402  pylint: disable=wrong-import-position
from rig.program import Program  # noqa: E402  pylint: disable=wrong-import-position

import witness as keys  # noqa: E402  pylint: disable=wrong-import-position
from fault_point import FaultPoint  # noqa: E402  pylint: disable=wrong-import-position
from witness import Witness  # noqa: E402  pylint: disable=wrong-import-position

PROGRAM = os.environ["TAPALONG_PROGRAM"]
SETTINGS = {"exitPassword": "asdf", "useTouchID": False, "kioskMode": True, "hotCornerDwellTime": 0.5}
PASSWORD = (keys.A, keys.S, keys.D, keys.F)

# Keys whose effect outlasts them, for the locks, the layout and the accessibility features.
WHAT_STAYS = (keys.NUM_LOCK, keys.RIGHT_CONTROL, keys.CAPS_LOCK, *5 * (keys.SHIFT,))

CORE_KEYBOARD = 0x100  # as the server's keyboard extension calls what all programs share

LOCKED = "✅ CGEventTap active — all keyboard input intercepted"
UNLOCKED = "🔓 CGEventTap deactivated — normal input restored"

# Said of what is left when nothing is, and said alone.
LATE = "nothing is left, but that is sure only after"


class Stage:
    """Use as a context."""

    def __init__(self):
        self.desktop = Desktop(size=(1024, 768), accessibility=False)
        self.witness = None
        self.point = None
        self.program = None
        self.before = None
        self.took = None

    def __enter__(self):
        self.desktop.__enter__()
        try:
            self._furnish()
        except BaseException:
            self.desktop.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *rest):
        self.desktop.__exit__(*rest)

    def arrange(self):
        """Everything differs from what a server starts with: who puts back what is usual shall be found out."""
        self.desktop.call(["setxkbmap", "-layout", "us,de", "-option", "", "-option",
                           "terminate:ctrl_alt_bksp,compose:menu,grp:rctrl_toggle"])
        self.desktop.call(["xset", "r", "rate", "310", "27", "s", "333", "77", "b", "31", "444", "55", "m", "3/2", "5"])
        self.desktop.call(["xset", "-r", "100"])

    def _furnish(self):
        self.arrange()
        self.desktop.xdotool("key", "Num_Lock")
        for name in ("lower", "upper"):
            self.desktop.run_beside(["xev", "-name", name, "-geometry", "200x100+20+20"])
            self.desktop.window(name)
        self.witness = Witness(self.desktop)
        self.witness.ask("change-device", "hot-keys", CORE_KEYBOARD, 1)
        self.point = FaultPoint(self.desktop.path("fault-point"))
        wait_until(lambda: self.witness.says("gets-keys"), "a key in the witness's window")
        self.focus_as_before()
        self.desktop.settle()
        self.before = self.witness.server_state()

    def focus_as_before(self):
        """A window that the window manager manages has the focus: it gives it back when the program's has gone."""
        self.desktop.xdotool("search", "--name", "^upper$", "windowactivate", "--sync")

    # The program's life.

    def start_program(self, environment=None, **settings):
        self.point.reset()
        self.witness.ask("move", 300, 600)
        self.program = Program(self.desktop, PROGRAM, settings=SETTINGS | settings,
                               environment=self.point.environment | (environment or {}))
        windows = "_NET_CLIENT_LIST_STACKING"
        wait_until(lambda: self.current(windows) != self.before[windows], "the settings window")
        self.wait_for_rest()

    def current(self, name):
        return dict(line.split(":", 1) for line in self.witness.ask("state"))[name]

    def ask_for_session(self):
        self.witness.ask("chord", keys.CONTROL, keys.ALT, keys.SUPER, keys.T)

    def start_session(self):
        done = self.program.lines.count(LOCKED)
        self.ask_for_session()
        self.wait_for_session(done + 1)

    def wait_for_session(self, number=1):
        wait_until(lambda: self.program.lines.count(LOCKED) >= number and self.witness.says("covered"), "a session")
        self.wait_for_rest()

    def mash_what_stays(self):
        """In a session, which is to undo it."""
        self.witness.type(*WHAT_STAYS)
        for name in ("modifiers", "group"):
            wait_until(lambda name=name: self.current(name) != self.before[name], f"other {name} than before")
        self.wait_for_rest()

    def mash_what_stays_at_once(self):
        """While a session starts: from the moment at which what there was is noted, earlier keys being the desktop's.
        Not at all when a fault comes before that."""
        wait_until(lambda: self.point.reached or self.witness.says("tap-once-noted", *WHAT_STAYS),
                   "the note of what there was", interval=0)

    def type_password(self):
        """With Caps Lock on."""
        for key in PASSWORD:
            self.witness.ask("chord", keys.SHIFT, key)

    def ask_for_the_way_out(self):
        self.witness.ask("move", 1023, 0)
        self.pause(1.2)  # the corner is looked at four times a second, and half a second there counts
        self.witness.ask("move", 300, 600)

    def wait_for_the_question(self):
        self.pause(0.8)  # it fades in, and takes the keyboard

    def pause(self, seconds):
        """Not for longer than until a fault has happened: what is left of it is looked for at once."""
        end = time.monotonic() + seconds
        while not self.point.reached and time.monotonic() < end:
            time.sleep(0.005)

    def end_session(self):
        """By the corner and the password, and once more where the machine was too slow for the first."""
        done = self.program.lines.count(UNLOCKED)
        for _ in range(3):
            self.ask_for_the_way_out()
            self.wait_for_the_question()
            self.witness.type(*PASSWORD, keys.ENTER)
            time.sleep(0.3)
            if self.program.lines.count(UNLOCKED) != done:
                break
        wait_until(lambda: not self.witness.says("covered"), "the session's window to go")
        self.wait_for_rest()

    def wait_for_rest(self):
        """Until the program has said nothing for as long as it says nothing between the looks at the corner."""
        count = None
        while count != self.point.count:
            count = self.point.count
            time.sleep(0.12)

    # Its death.

    def what_is_left(self):
        """What differs from the time before the program, in words; empty when nothing does."""
        return self._what_differs() + self._what_is_kept()

    def _what_differs(self):
        left = [f"process {pid} runs: {command}" for pid, command in self.processes()]
        now = self.witness.server_state()
        for name in sorted(self.before.keys() | now.keys()):
            if self.before.get(name) != now.get(name):
                left.append(difference(name, self.before.get(name), now.get(name)))
        return left

    def _what_is_kept(self):
        return [] if self.witness.says("gets-keys") else ["keys do not reach other programs"]

    def what_is_left_after(self, seconds, since=None):
        """As soon as nothing is left, or when that time is over. `self.took` says how long it lasted until nothing was
        left, and is never less than that: it is taken when a look has ended, and what a look sees was so before."""
        since = time.monotonic() if since is None else since
        while True:
            is_last = time.monotonic() - since >= seconds
            left = self._what_differs()
            # To find out takes the focus for a moment, which is among what is compared.
            if not left or is_last:
                left += self._what_is_kept()
            self.took = time.monotonic() - since
            if not left and self.took > seconds:
                return [f"{LATE} {self.took:.2f} s"]
            if not left or is_last:
                return left
            time.sleep(0.02)

    def processes(self):
        """Of the program and of whatever it started: all that have its fault point in their environment, or are in its
        session."""
        found = []
        mark = f"TAPALONG_FAULT_POINT={self.point.path}".encode()
        for folder in glob.glob("/proc/[0-9]*"):
            try:
                with open(folder + "/environ", "rb") as file:
                    is_marked = mark in file.read().split(b"\0")
                with open(folder + "/stat", encoding="utf-8", errors="replace") as file:
                    stat = file.read().rpartition(")")[2].split()
                with open(folder + "/cmdline", "rb") as file:
                    command = file.read().replace(b"\0", b" ").decode(errors="replace")
            except OSError:
                continue
            in_session = self.program is not None and int(stat[3]) == self.program.process.pid
            if (is_marked or in_session) and stat[0] not in "ZX":
                found.append((int(os.path.basename(folder)), command.strip()))
        return found

    def clear(self):
        """After a failure, for the sake of the next test."""
        for pid, _ in self.processes():
            os.kill(pid, 9)
        if self.program is not None:
            self.program.process.wait()


def difference(name, before, now):
    if before is None or now is None:
        return f"{name} was {before!r} and is {now!r}"
    old, new = before.splitlines(), now.splitlines()
    lines = [f"- {line}" for line in old if line not in new] + [f"+ {line}" for line in new if line not in old]
    return f"{name} changed: " + " | ".join(line.strip() for line in lines[:6])
