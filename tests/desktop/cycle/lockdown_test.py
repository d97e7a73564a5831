"""Sessions in Lockdown Mode: nothing typed reaches another program, and the adult gets out by the keyboard."""
import unittest

from case import PASSWORD, WitnessCase, wait_until


class Lockdown(WitnessCase):
    def focus_witness(self):
        self.desktop.focus("witness")

    def test_the_password_is_typed_on_the_locked_keyboard(self):
        program = self.start_session(kioskMode=True)
        program.wait_for_line("✅ CGEventTap active — all keyboard input intercepted")
        self.assertIsNone(program.look_for("Lockdown Mode is off"))
        self.desktop.type("abc")
        self.wait_text("abc")
        self.open_overlay()
        self.desktop.type(PASSWORD)
        self.assertEqual(program.typed_text(), "abc", "a part of the password showed in the session")
        self.desktop.key("Return")
        program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()
        self.assertIn("🔓 CGEventTap deactivated — normal input restored", program.lines)
        self.assertEqual(self.keys_seen_by_others(), [])

    def test_chords_of_the_desktop_reach_nothing_and_come_back_afterwards(self):
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False)
        for chord in ("alt+Tab", "alt+F4", "super+e", "ctrl+alt+Right", "alt+space", "ctrl+Escape"):
            self.desktop.key(chord)
        self.desktop.type("k")
        self.program.wait_for_text(lambda text: text.endswith("k"), "the last key")
        self.leave()
        self.focus_witness()
        self.desktop.type("after")
        wait_until(lambda: self.keys_seen_by_others()[-5:] == list("after"), "keys to reach other programs again")
        self.assertEqual(self.keys_seen_by_others(), list("after"))

    def test_with_the_focus_in_another_window_keys_still_come_to_the_session(self):
        self.start_session(kioskMode=True)
        self.focus_witness()
        self.desktop.type("mine")
        self.wait_text("mine")
        self.assertEqual(self.keys_seen_by_others(), [])

    def test_a_wrong_password_then_cancel_then_the_right_one(self):
        self.start_session(kioskMode=True)
        self.open_overlay()
        self.desktop.type("wrong")
        self.desktop.key("Return")
        self.program.find("Incorrect password")
        self.program.click("Cancel")
        self.program.wait_gone("Exit Tapalong")
        self.desktop.type("again")
        self.wait_text("again")
        self.leave()

    def test_a_window_that_takes_the_focus_from_the_overlay_does_not_keep_the_adult_in(self):
        self.start_session(kioskMode=True)
        self.open_overlay()
        self.focus_witness()
        self.desktop.settle()
        self.program.click("Enter exit password")
        self.program.wait_for_focus("Enter exit password")
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()
        self.assertEqual(self.keys_seen_by_others(), [])

    def test_the_keyboard_is_free_after_the_program_is_killed(self):
        self.start_session(kioskMode=True)
        self.program.process.kill()
        self.program.process.wait()
        self.focus_witness()
        self.desktop.type("free")
        wait_until(lambda: self.keys_seen_by_others() == list("free"), "keys to reach other programs")

    def test_caps_lock_types_an_emoji_and_locks_letters(self):
        self.start_session(kioskMode=True)
        self.desktop.key("Caps_Lock")
        self.program.wait_for_text(lambda text: len(text) >= 1, "an emoji for Caps Lock")
        self.desktop.key("a")
        self.program.wait_for_text(lambda text: text.endswith("A"), "a capital")
        self.desktop.key("Caps_Lock")
        self.desktop.key("a")
        self.program.wait_for_text(lambda text: text.endswith("a"), "a small letter")


if __name__ == "__main__":
    unittest.main(verbosity=2)
