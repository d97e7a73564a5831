"""The quick-start shortcut: from other programs, and recorded anew."""
import unittest

from case import DesktopCase, wait_until


class Shortcut(DesktopCase):
    def setUp(self):
        super().setUp()
        self.other = self.desktop.run_beside(["xev", "-name", "other", "-geometry", "200x100+20+20"])
        self.desktop.window("other")

    def tearDown(self):
        super().tearDown()
        self.other.terminate()
        self.other.wait()

    def focus_other(self):
        self.desktop.focus("other")
        self.desktop.settle()  # nobody switches windows and presses a chord within the same few milliseconds

    def session_starts(self):
        wait_until(lambda: self.program.typed_text() is not None, "a session")

    def test_it_starts_a_session_from_another_programs_window(self):
        self.launch()
        self.focus_other()
        self.desktop.key("ctrl+alt+super+t")
        self.session_starts()
        self.leave()

    def test_fewer_modifiers_do_not_start_one(self):
        self.launch()
        self.focus_other()
        self.desktop.key("ctrl+alt+t", "t", "super+t")
        self.desktop.settle()
        self.assertIsNone(self.program.typed_text())

    def test_it_starts_a_session_from_the_settings_window(self):
        self.launch()
        self.desktop.key("ctrl+alt+super+t")
        self.session_starts()
        self.leave()

    def test_a_recorded_shortcut_replaces_it(self):
        self.launch()
        self.program.click("⌃⌥⌘T")
        self.program.find("Press shortcut...")
        self.desktop.key("k")
        self.program.find("Press shortcut...")
        self.desktop.key("super+shift+k")
        self.program.find("⇧⌘K")
        stored = self.program.stored_settings()
        self.assertEqual((stored["globalShortcutKeyCode"], stored["globalShortcutModifiers"]), (40, 0x120000))
        self.focus_other()
        self.desktop.key("ctrl+alt+super+t")
        self.desktop.settle()
        self.assertIsNone(self.program.typed_text())
        self.desktop.key("super+shift+k")
        self.session_starts()

    def test_escape_cancels_recording(self):
        self.launch()
        self.program.click("⌃⌥⌘T")
        self.program.find("Press shortcut...")
        self.desktop.key("Escape")
        self.program.find("⌃⌥⌘T")
        self.assertNotIn("globalShortcutKeyCode", self.program.stored_settings())

    def test_a_function_key_alone_is_accepted(self):
        self.launch()
        self.program.click("⌃⌥⌘T")
        self.program.find("Press shortcut...")
        self.desktop.key("F5")
        self.program.find("F5")
        self.assertEqual(self.program.stored_settings()["globalShortcutModifiers"], 0x800000)
        self.focus_other()
        self.desktop.key("F5")
        self.session_starts()


if __name__ == "__main__":
    unittest.main(verbosity=2)
