"""A session with Lockdown Mode off, from the settings window and back to it."""
import unittest

from case import PASSWORD, DesktopCase, wait_until


class Session(DesktopCase):
    def test_configure_start_type_exit_and_back_to_the_settings(self):
        self.launch(exitPassword="", modifierKeysTypeEmoji=False)
        self.program.find("Set an exit password before starting a session")
        self.program.click("Start Session")
        self.desktop.settle()
        self.assertIsNone(self.program.typed_text(), "a session started without a password")
        self.program.click("Exit Password")
        self.desktop.type(PASSWORD)
        self.program.wait_gone("Set an exit password before starting a session")
        self.program.click("Start Session")
        self.program.find("Lockdown Mode is off")
        self.desktop.type("hello World")
        self.wait_text("hello World")
        self.program.wait_gone("Lockdown Mode is off")
        self.leave()

    def test_every_kind_of_key_types_what_it_should(self):
        self.start_session(modifierKeysTypeEmoji=False)
        self.desktop.key("a", "space", "Return", "Tab", "b")
        self.wait_text("a \n    b")
        self.desktop.key("BackSpace", "Delete")
        self.wait_text("a \n   ")
        self.desktop.key("Escape", "Left", "Right", "Up", "Down")
        self.wait_text("a \n   🚀←→↑↓")
        self.desktop.key("F1")
        self.program.wait_for_text(lambda text: len(text) > len("a \n   🚀←→↑↓"), "a piece of the sky")

    def test_the_notice_returns_when_all_is_deleted(self):
        self.start_session()
        self.desktop.type("ab")
        self.program.wait_gone("Lockdown Mode is off")
        self.desktop.key("BackSpace", "BackSpace")
        self.wait_text("")
        self.program.find("Lockdown Mode is off")

    def test_modifier_keys_type_emoji(self):
        self.start_session()
        self.desktop.key("Shift_L")
        self.program.wait_for_text(lambda text: len(text) >= 1, "an emoji")
        before = self.program.typed_text()
        self.desktop.key("Super_L", "Alt_L", "Control_L")
        self.program.wait_for_text(lambda text: len(text) >= len(before) + 3, "three more")

    def test_holding_delete_wipes_the_screen_after_five_seconds(self):
        self.start_session()
        self.desktop.call(["xset", "r", "rate", "200", "20"])
        self.desktop.type("x" * 150, delay_ms=5)
        self.wait_text("x" * 150)
        self.desktop.xdotool("keydown", "BackSpace")
        try:
            wait_until(lambda: 0 < len(self.program.typed_text()) < 150, "the first characters to go")
            wait_until(lambda: self.program.typed_text() == "", "the wipe", seconds=12)
        finally:
            self.desktop.xdotool("keyup", "BackSpace")

    def test_a_wrong_password_is_said_and_the_field_emptied(self):
        self.start_session()
        self.open_overlay()
        self.desktop.type("banana")
        self.desktop.key("Return")
        self.program.find("Incorrect password")
        self.assertTrue(self.program.is_focused("Enter exit password"))
        self.desktop.type(PASSWORD)
        self.program.click("Unlock")
        self.assert_back_in_settings_after_overlay()

    def assert_back_in_settings_after_overlay(self):
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()

    def test_cancel_goes_back_to_typing(self):
        self.start_session()
        self.desktop.type("one")
        self.open_overlay()
        self.desktop.type("secret")
        self.program.click("Cancel")
        self.program.wait_gone("Exit Tapalong")
        self.desktop.type(" two")
        self.wait_text("one two")
        self.leave()

    def test_a_click_on_the_backdrop_dismisses_and_one_on_the_panel_does_not(self):
        self.start_session()
        self.open_overlay()
        self.program.click("Exit Tapalong")
        self.desktop.settle()
        self.program.find("Exit Tapalong")
        self.desktop.click(100, 800)
        self.program.wait_gone("Exit Tapalong")
        self.desktop.type("on")
        self.wait_text("on")

    def test_a_click_takes_the_keyboard_back_from_another_window(self):
        self.desktop.run_beside(["xev", "-name", "thief", "-geometry", "200x100+20+20"])
        self.desktop.window("thief")
        self.start_session()
        self.open_overlay()
        self.desktop.focus("thief")
        wait_until(lambda: not self.program.is_focused("Enter exit password"), "the focus to be gone")
        self.program.click("Enter exit password")
        self.program.wait_for_focus("Enter exit password")
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        self.assert_back_in_settings_after_overlay()

    def test_each_corner_opens_the_overlay(self):
        for corner in ("topLeft", "topRight", "bottomLeft", "bottomRight"):
            with self.subTest(corner=corner):
                self.start_session(exitCorner=corner, hotCornerDwellTime=0.5)
                self.open_overlay(corner)
                self.desktop.type(PASSWORD)
                self.desktop.key("Return")
                self.assert_back_in_settings_after_overlay()
                self.program.quit()

    def test_a_reader_that_is_missing_is_said_and_the_password_works(self):
        self.start_session(useTouchID=True)
        self.desktop.move(*self.corner_point())
        self.program.find("Use Touch ID")
        wait_until(lambda: any(name and name.startswith("Touch ID not available: ") for name in self.program.names()),
                   "the reason why there is no fingerprint")
        self.program.wait_for_focus("Enter exit password")
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        self.assert_back_in_settings_after_overlay()

    def test_without_a_password_in_the_accessibility_tree(self):
        self.start_session()
        self.open_overlay()
        self.desktop.type("s3cr3t")
        for node in self.program.nodes():
            for said in (node.get_name(), node.get_description(), self.program.text_of(node)):
                self.assertNotIn("s3cr3t", said or "")

    def test_the_settings_behind_it_never_keep_the_keyboard(self):
        self.start_session(modifierKeysTypeEmoji=False)
        self.desktop.key("alt+Tab")
        wait_until(lambda: self.focused_window() != "Tapalong Settings", "the keyboard back at the session")
        self.desktop.settle()
        self.assertNotEqual(self.focused_window(), "Tapalong Settings")
        self.desktop.type("abc")
        self.wait_text("abc")
        self.leave()

    def focused_window(self):
        return self.desktop.output(["xdotool", "getwindowfocus", "getwindowname"]).strip()

    def test_the_window_manager_cannot_close_the_session(self):
        self.start_session()
        self.desktop.key("alt+F4")
        self.desktop.settle()
        self.assertTrue(self.program.is_running())
        self.desktop.type("z")
        self.program.wait_for_text(lambda text: text.endswith("z"), "typing to go on")

    def test_sigterm_ends_session_and_program(self):
        self.start_session()
        self.assertEqual(self.program.quit(), 0)
        self.assertIn("🔓 CGEventTap deactivated — normal input restored", self.program.lines)


if __name__ == "__main__":
    unittest.main(verbosity=2)
