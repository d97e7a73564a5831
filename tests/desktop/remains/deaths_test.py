"""However the program dies, and at whatever step of a session: within one second nothing of it is left."""
import os
import re
import signal
import subprocess
import sys
import time
import unittest

import fault_point as kinds
from faults import Campaign, is_long, is_stopped, reach
from stage import CORE_KEYBOARD, UNLOCKED, Stage, wait_until
from rig.figures import figure

DEATHS = (
    ("killed", kinds.KILLED),
    ("broken memory", kinds.BROKEN_MEMORY),
    ("stopped for 5 s, then killed", kinds.STOPPED),
    ("toolkit's connection cut", kinds.TOOLKIT_CUT),
    ("own connection cut", kinds.OWN_CUT),
    ("out of memory", kinds.STARVED),
)
ONE_SECOND = 1.0
# By what the desktop differs while the program rests in its settings window.
AT_REST = ("process ", "windows, from the lowest ", "focus of device ", "_NET_ACTIVE_WINDOW ",
           "_NET_CLIENT_LIST_STACKING ")
REFUSED = "memory must be had"
# As the X server counts.
SLAVE_POINTER, SLAVE_KEYBOARD = "3", "4"
SHIFT_LATCHED, CAPS_LOCKED = 1 << 0, 1 << 1


class Deaths(unittest.TestCase):
    def test_nothing_is_left_after_any_death(self):
        number = 300 if is_long() else 30
        self.refused, self.rested = [], []  # several desktops add to them at a time
        campaign = Campaign(self.die)
        campaign.go("deaths", DEATHS, number)
        figure(f"{len(self.refused)} for want of memory by the program's last words, {len(self.rested)} of them when it "
               "was asked for another session: the last was over, and it rested")
        self.assertEqual(sum(campaign.done.values()), number)
        self.assertEqual(campaign.failures, [], "\n".join(campaign.failures))
        self.assertLessEqual(sum(campaign.missed.values()), number // 5)

    def die(self, stage, fault):
        fewer_steps = reach(stage, fault)
        process = stage.program.process
        if fewer_steps is None and fault.kind == kinds.STARVED:
            return fewer_steps, self.starve(stage)
        if fewer_steps is None and fault.kind != kinds.STOPPED:
            return fewer_steps, stage.what_is_left_after(ONE_SECOND, stage.point.reached_at)
        if fewer_steps is None:
            wait_until(lambda: is_stopped(process), "the stop")
            time.sleep(5)
        since = time.monotonic()
        process.kill()
        return fewer_steps, stage.what_is_left_after(ONE_SECOND, since)

    def starve(self, stage):
        """At the last steps of a session's end the program may come to rest before it needs any memory: nothing has
        been refused then, and it is to have put everything back and to end when it needs some."""
        left = stage.what_is_left_after(ONE_SECOND, stage.point.reached_at)
        has_ended = UNLOCKED in stage.program.lines
        if left and has_ended and stage.program.is_running() and all(each.startswith(AT_REST) for each in left):
            self.rested.append(stage)
            since = time.monotonic()
            stage.ask_for_session()
            left = stage.what_is_left_after(ONE_SECOND, since)
        time.sleep(0.05)  # the thread that reads its last words is ours, and may be a little behind
        if any(REFUSED in line for line in stage.program.errors):
            self.refused.append(stage)
        return left


class KilledWithItsGuard(unittest.TestCase):
    """Nobody is left then to put back what outlasts both."""

    def test_the_next_start_puts_back_what_they_left(self):
        with Stage() as stage:
            stage.start_program()
            stage.start_session()
            stage.mash_what_stays()
            guard = next(pid for pid, command in stage.processes() if command == "x11-keys-guard")
            stage.program.process.send_signal(signal.SIGSTOP)  # or it is quick enough to start another guard
            os.kill(guard, signal.SIGKILL)
            stage.program.process.kill()
            stage.program.process.wait()
            left = " ".join(stage.what_is_left_after(1))
            for expected in ("keymap with actions", "modifiers", "group", "focus of device", "buttons of device",
                             "_TAPALONG_SERVER_KEYS"):
                self.assertIn(expected, left)
            for foreign in ("process", "keys do not reach", "windows", "enabled controls"):
                self.assertNotIn(foreign, left)
            stage.start_program()
            stage.program.quit()
            self.assertEqual(stage.what_is_left_after(1), [])


class WhatWouldBeNoticed(unittest.TestCase):
    """The deaths prove nothing unless what is left behind is seen."""

    @classmethod
    def setUpClass(cls):
        cls.stage = Stage()
        cls.stage.__enter__()
        cls.addClassCleanup(cls.stage.__exit__, None, None, None)

    def tearDown(self):
        self.assertEqual(self.stage.what_is_left_after(5), [])

    def assert_noticed(self, word):
        wait_until(lambda: any(word in each for each in self.stage.what_is_left()), f"{word!r} among what is left")

    def test_a_control_that_differs(self):
        for change, name in (
                (["xset", "-r"], "keyboard"),
                (["xset", "r", "rate", "311", "27"], "repeat, slow, debounce"),
                (["xset", "r", "100"], "keys that repeat"),
                (["xset", "s", "0"], "screen saver"),
                (["xset", "m", "2/1", "5"], "pointer"),
                (["setxkbmap", "-option", ""], "keymap")):
            with self.subTest(" ".join(change)):
                self.stage.desktop.call(change)
                self.assert_noticed(name)
                self.stage.desktop.call(["xset", "r"])
                self.stage.arrange()
                self.assertEqual(self.stage.what_is_left_after(5), [])

    def test_a_state_that_differs(self):
        for change, back, name in (
                ("key Num_Lock", "key Num_Lock", "modifiers"),
                ("keydown Shift_L", "keyup Shift_L", "modifiers"),
                ("set_desktop 1", "set_desktop 0", "_NET_CURRENT_DESKTOP")):
            with self.subTest(change):
                self.stage.desktop.xdotool(*change.split())
                self.stage.desktop.settle()
                self.assert_noticed(name)
                self.stage.desktop.xdotool(*back.split())
                self.assertEqual(self.stage.what_is_left_after(5), [])

    def test_one_keyboard_that_differs(self):
        """By itself, which is no matter of the one that all programs share."""
        for device in self.devices(SLAVE_KEYBOARD):
            state = self.stage.before
            _, _, latches, locks = map(int, state[f"modifiers of device {device}"].split())
            for what, before, other, name in (
                    ("focus", int(state[f"focus of device {device}"]), 0, "focus"),
                    ("locks", locks, locks ^ CAPS_LOCKED, "modifiers"),
                    ("latches", latches, latches ^ SHIFT_LATCHED, "modifiers"),
                    ("hot-keys", 1, 0, "enabled controls")):
                self.change_device(what, device, before, other, f"{name} of device {device} ")

    def test_one_mouse_that_differs(self):
        for device in self.devices(SLAVE_POINTER):
            middle = bytes.fromhex(self.stage.before[f"buttons of device {device}"])[1]
            self.change_device("middle-button", device, middle, 0, f"buttons of device {device} ")

    def test_a_latched_modifier_of_all_keyboards_together(self):
        self.change_device("latches", CORE_KEYBOARD, 0, SHIFT_LATCHED, "modifiers changed")

    def change_device(self, what, device, before, other, name):
        with self.subTest(f"{what} of device {device}"):
            self.stage.witness.ask("change-device", what, device, other)
            self.assert_noticed(name)
            self.stage.witness.ask("change-device", what, device, before)
            self.assertEqual(self.stage.what_is_left_after(5), [])

    def devices(self, kind):
        """Those by themselves, the first of which the test's own input comes from."""
        devices = [name.split()[-1] for name, value in self.stage.before.items()
                   if re.fullmatch(r"device \d+", name) and value.split()[0] == kind]
        self.assertGreaterEqual(len(devices), 2)
        return devices

    def test_another_window_that_has_the_focus(self):
        for change, name in (("windowfocus", "focus of device"), ("windowactivate", "_NET_ACTIVE_WINDOW")):
            with self.subTest(change):
                self.stage.desktop.xdotool("search", "--name", "^lower$", change)
                self.assert_noticed(name)
                self.stage.focus_as_before()
                self.assertEqual(self.stage.what_is_left_after(5), [])

    def test_a_note_that_is_still_there(self):
        note = "_TAPALONG_SERVER_KEYS"
        self.stage.desktop.call(["xprop", "-root", "-f", note, "8s", "-set", note, ""])
        self.assert_noticed(note)
        self.stage.desktop.call(["xprop", "-root", "-remove", note])

    def test_a_keyboard_that_is_still_held(self):
        holder = subprocess.Popen([sys.executable, "-c", HOLD_KEYBOARD], env=self.stage.desktop.environment,
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(holder.kill)
        self.assertEqual(holder.stdout.readline(), b"held\n")
        self.assert_noticed("keys do not reach other programs")
        holder.stdin.close()
        holder.wait()

    def test_a_process_that_is_still_there(self):
        left_over = subprocess.Popen(["sleep", "60"], env=self.stage.desktop.environment | {
            "TAPALONG_FAULT_POINT": self.stage.point.path}, start_new_session=True)
        self.addCleanup(left_over.kill)
        self.assert_noticed("sleep 60")
        left_over.kill()
        left_over.wait()

    def test_a_window_that_is_still_there(self):
        window = self.stage.desktop.run_beside(["xev", "-name", "forgotten"])
        self.stage.desktop.window("forgotten")
        self.stage.desktop.settle()
        self.assert_noticed("windows, from the lowest")
        window.terminate()
        window.wait()


HOLD_KEYBOARD = r"""
import ctypes, ctypes.util, sys
x = ctypes.CDLL(ctypes.util.find_library("X11"))
x.XOpenDisplay.restype = ctypes.c_void_p
display = ctypes.c_void_p(x.XOpenDisplay(None))
x.XDefaultRootWindow.restype = ctypes.c_ulong
status = x.XGrabKeyboard(display, ctypes.c_ulong(x.XDefaultRootWindow(display)), 0, 1, 1, ctypes.c_ulong(0))
x.XSync(display, 0)
print("held" if status == 0 else "refused", flush=True)
sys.stdin.read()
"""

if __name__ == "__main__":
    unittest.main(verbosity=2)
