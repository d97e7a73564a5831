"""The keys by which an X server breaks grabs, on a real one: Xorg, without a card."""
import re
import subprocess
import sys
import unittest

from case import DesktopCase

from rig.display import Outputs

BREAK_ACTIONS = ("ctrl+alt+KP_Multiply", "ctrl+alt+KP_Divide")
WORDS = re.compile("Lockdown Mode (is|was) not in force")
HAD, HELD_BY_ANOTHER = 0, 1

# Asks for the keyboard, says what came of it, and keeps it until the end of its input.
ASK_FOR_KEYBOARD = r"""
import ctypes, ctypes.util, sys
x = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
x.XOpenDisplay.restype = ctypes.c_void_p
x.XDefaultRootWindow.restype = ctypes.c_ulong
display = ctypes.c_void_p(x.XOpenDisplay(None))
root = ctypes.c_ulong(x.XDefaultRootWindow(display))
print(x.XGrabKeyboard(display, root, 0, 1, 1, ctypes.c_ulong(0)), flush=True)
sys.stdin.read()
"""


class BreakGrabs(DesktopCase):
    display = Outputs
    size = (1280, 1024)
    window_manager = None

    def setUp(self):
        super().setUp()
        self.desktop.call(["setxkbmap", "-option", "grab:break_actions"])

    def ask_for_keyboard(self):
        asking = subprocess.Popen([sys.executable, "-c", ASK_FOR_KEYBOARD], env=self.desktop.environment,
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(asking.communicate)
        return int(asking.stdout.readline()), asking

    def assert_that_the_keys_break_a_grab(self):
        answer, _ = self.ask_for_keyboard()
        self.assertEqual(answer, HAD)
        self.assertEqual(self.ask_for_keyboard()[0], HELD_BY_ANOTHER)
        self.desktop.key(BREAK_ACTIONS[0])
        answer, asking = self.ask_for_keyboard()
        self.assertEqual(answer, HAD)
        asking.communicate()

    def what_is_said_of_the_lock(self):
        names = {node.get_name() or "" for node in self.program.nodes()}
        return [name for name in names if WORDS.match(name) and self.program.look_for(name)]

    def test_break_no_grab_of_a_session_and_others_before_and_after(self):
        self.assert_that_the_keys_break_a_grab()
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False)
        for chord in BREAK_ACTIONS:
            self.desktop.key(chord)
            self.assertEqual(self.ask_for_keyboard()[0], HELD_BY_ANOTHER, chord)
        self.desktop.type("abc")
        self.program.wait_for_text(lambda text: text.endswith("abc"), "what is typed afterwards")
        self.assertEqual(self.what_is_said_of_the_lock(), [])
        self.leave()
        self.assertEqual(self.what_is_said_of_the_lock(), [], "it was not in force for a while")
        self.assert_that_the_keys_break_a_grab()


if __name__ == "__main__":
    unittest.main(verbosity=2)
