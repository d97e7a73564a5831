"""Every chord against a session in Lockdown Mode, and against a window that lets them through."""
import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, ".."), os.path.join(HERE, "..", "cycle")]

from case import PASSWORD, DesktopCase  # noqa: E402  pylint: disable=wrong-import-position

from chords import combinations, spaced  # noqa: E402  pylint: disable=wrong-import-position
from managers import LONG, Composed, under_each  # noqa: E402  pylint: disable=wrong-import-position
from sweep import Sweep  # noqa: E402  pylint: disable=wrong-import-position
from windows import Windows  # noqa: E402  pylint: disable=wrong-import-position

SAMPLE = 200
DAEMONS = ("core", "slaves")
FIVE_SHIFTS = "five Shifts"


class Siege(Composed):
    """One sweep under one window manager; a case of it for each follows below."""

    def chords(self, keyboard):
        if not LONG:
            return [*keyboard.sample(self.desktop.size, SAMPLE), *keyboard.every_click(self.desktop.size, [()])]
        return [*keyboard.every_chord(), *keyboard.every_click(self.desktop.size, combinations())]

    def slow_chords(self, keyboard):
        if not LONG:
            return keyboard.sample(self.desktop.size, 60)[::10]
        hard = keyboard.hard_chords()
        return hard + keyboard.sample(self.desktop.size, 450)[len(hard)::10]

    def tearDown(self):
        super().tearDown()
        with Sweep(self.desktop) as sweep:
            sweep.hot_keys("off")

    def play_hot_keys(self, sweep):
        sweep.play(FIVE_SHIFTS, sweep.keyboard.shifts(5))
        if LONG:
            sweep.play("Shift_L held for nine seconds", sweep.keyboard.shift_held(9))

    def title(self, of):
        return f"{of}, {self.name()}"

    def test_nothing_gets_out_of_a_session(self):
        with Sweep(self.desktop, DAEMONS) as sweep:
            sweep.hot_keys("on")
            program = self.start_session(kioskMode=True)
            self.desktop.settle()
            sweep.guard()
            sweep.listen()
            for name, tokens in self.chords(sweep.keyboard):
                sweep.play(name, tokens)
            self.play_hot_keys(sweep)
            for name, tokens in self.slow_chords(sweep.keyboard):
                sweep.play(f"slowly {name}", spaced(tokens, 40))
            for seed in range(50 if LONG else 4):
                sweep.play(f"mashing, seed {seed}", sweep.keyboard.mashing(100, seed=seed))
            for modifier in ("Super_L", "Alt_L"):
                sweep.play(f"{modifier} held", sweep.keyboard.typing_while_held(modifier, 60 if LONG else 2))
            # Whatever answers late.
            sweep.play("afterwards", [], watch_ms=500)
            sweep.report(self.title("a session in Lockdown Mode"))
            self.assertEqual(sweep.escapes, {})
        self.desktop.move(640, 600)
        # The keys did come, to the session alone; and the way out is still there.
        program.wait_for_text(lambda text: len(text) > 50, "what was typed")
        self.leave()

    def test_nothing_gets_out_while_the_password_is_asked_for(self):
        with Sweep(self.desktop, DAEMONS) as sweep:
            program = self.start_session(kioskMode=True)
            self.open_overlay()
            sweep.guard()
            sweep.listen()
            for name, tokens in sweep.keyboard.sample_of_keys(SAMPLE):
                sweep.play(name, tokens)
            sweep.play("afterwards", [], watch_ms=500)
            sweep.report(self.title("the question for the password"))
            self.assertEqual(sweep.escapes, {})
        # All of it was for the field, and none of it has done away with the question.
        self.assertEqual(program.typed_text(), "")
        program.wait_for_focus("Enter exit password")
        self.desktop.key("Return")  # a wrong password empties the field
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()

    def test_a_window_that_grabs_nothing_lets_chords_through(self):
        with Sweep(self.desktop, DAEMONS) as sweep:
            sweep.open_plain_window()
            for name, tokens in sweep.keyboard.sample(self.desktop.size, SAMPLE):
                sweep.play_and_restore(name, tokens)
            sweep.report(self.title("a window that grabs nothing"), say=print)
            self.assertGreater(len(sweep.escapes), 40)
            self.assertIn("Super_L", sweep.escapes)
            self.assertIn("Alt_L+Tab", sweep.escapes)

    def test_an_unmanaged_window_that_grabs_nothing_leaves_keys_and_clicks_to_a_listener(self):
        with Sweep(self.desktop) as sweep, Windows(self.desktop) as windows:
            sweep.listen()
            windows.ask("open 300 unmanaged")
            heard = sweep.play("while it was open", [])
            for what in ("key 38", "button 3"):
                self.assertIn(f"a client listening to each device got {what}", heard)

    def test_the_servers_hot_keys_work_for_a_window_that_grabs_nothing(self):
        """The last by its name: mutter takes what they have switched on for the user's wish, and switches it on again
        when it next sees a lock, be it in a session."""
        with Sweep(self.desktop) as sweep:
            sweep.hot_keys("on")
            sweep.open_plain_window()
            self.play_hot_keys(sweep)
            self.assertIn("the keyboard's controls changed", sweep.escapes[FIVE_SHIFTS])


class WithoutLockdownMode(DesktopCase):
    def test_without_lockdown_mode_the_desktops_own_shortcuts_work(self):
        with Sweep(self.desktop, ("core",)) as sweep:
            program = self.start_session(kioskMode=False, modifierKeysTypeEmoji=False)
            self.desktop.settle()
            sweep.guard()
            shortcuts = ("XF86AudioMute", "Super_L", "Print")
            for name in shortcuts:
                sweep.play(*sweep.keyboard.named(name), watch_ms=50)
            self.assertEqual(tuple(sweep.escapes), shortcuts)
            sweep.escapes.clear()
            for name in "hi":
                sweep.play(*sweep.keyboard.named(name))
            self.assertEqual(sweep.escapes, {})
        program.wait_for_text(lambda text: text.endswith("hi"), "the keys that are no shortcuts")
        self.leave()


globals().update(under_each(Siege, DesktopCase))

if __name__ == "__main__":
    unittest.main(verbosity=2)
