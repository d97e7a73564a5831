"""The settings window: every setting survives a restart, and closing it does what it should."""
import os
import stat
import unittest

from case import PASSWORD, DesktopCase, wait_until

CHANGED = {
    "fontSize": 96.0, "useSystemAppearance": False, "darkMode": True, "rainbowMode": False,
    "customFGColorHex": "#102030", "customBGColorHex": "#F0E0D0", "soundEnabled": False, "selectedSoundPack": "glass",
    "exitCorner": "bottomLeft", "exitPassword": "pässwörd ☃", "useTouchID": False, "hotCornerDwellTime": 2.5,
    "globalShortcutKeyCode": 40, "globalShortcutModifiers": 0x120000, "kioskMode": True, "maxCharacters": 7000,
    "showCursor": False, "modifierKeysTypeEmoji": False,
}


class SettingsWindow(DesktopCase):
    def close_window(self):
        self.desktop.ask_to_close("Tapalong Settings")

    def test_closing_it_without_a_session_ends_the_program(self):
        self.launch()
        self.close_window()
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_closing_it_with_a_session_keeps_the_program_and_it_comes_back(self):
        self.start_session()
        self.desktop.ask_to_close("Tapalong Settings")
        self.desktop.settle()
        self.assertTrue(self.program.is_running())
        self.desktop.type("still here")
        self.wait_text("still here")
        self.leave()
        self.close_window()
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_all_eighteen_settings_survive_a_restart(self):
        self.launch(**CHANGED)
        self.assert_shows_the_changed_settings()
        # One set through the window: the file is written anew, and nothing of the rest may be lost.
        self.program.click("Show Cursor")
        wait_until(lambda: self.program.stored_settings()["showCursor"] is True, "the change in the file")
        self.program.quit()
        self.assertEqual(self.program.stored_settings(), CHANGED | {"showCursor": True})
        mode = stat.S_IMODE(os.stat(self.desktop.settings_file).st_mode)
        self.assertEqual(mode, 0o600)
        self.relaunch()
        self.assertTrue(self.program.is_checked("Show Cursor"))
        self.assert_shows_the_changed_settings()

    def assert_shows_the_changed_settings(self):
        for name in ("Rainbow Mode", "Modifier Keys Type Emoji", "Enable Sound", "Use Touch ID to Exit",
                     "Use System Appearance"):
            self.assertFalse(self.program.is_checked(name), name)
        self.assertTrue(self.program.is_checked("Lockdown Mode"))
        for shown in ("96 pt", "2.5s", "Max Characters: 7000", "⇧⌘K", "Move mouse to Bottom Left corner to exit"):
            self.program.find(shown)
        self.assertIsNone(self.program.look_for("Set an exit password before starting a session"))

    def test_every_switch_is_written_through_at_once(self):
        self.launch()
        for name, key, before in (("Lockdown Mode", "kioskMode", False), ("Rainbow Mode", "rainbowMode", True),
                                  ("Modifier Keys Type Emoji", "modifierKeysTypeEmoji", True),
                                  ("Enable Sound", "soundEnabled", True), ("Show Cursor", "showCursor", True),
                                  ("Use System Appearance", "useSystemAppearance", True)):
            with self.subTest(name):
                self.assertEqual(self.program.is_checked(name), before)
                self.program.act(name)
                wait_until(lambda k=key, b=before: self.program.stored_settings().get(k) is (not b), f"{key} stored")

    def test_nothing_is_written_before_something_is_set(self):
        self.launch()
        before = os.stat(self.desktop.settings_file).st_mtime_ns
        self.program.quit()
        self.assertEqual(os.stat(self.desktop.settings_file).st_mtime_ns, before)
        self.assertEqual(self.program.stored_settings(), {"exitPassword": PASSWORD, "useTouchID": False})

    def test_a_damaged_settings_file_is_kept_and_said(self):
        os.makedirs(os.path.dirname(self.desktop.settings_file), exist_ok=True)
        with open(self.desktop.settings_file, "w", encoding="utf-8") as file:
            file.write('{"exitPassword": "gir')
        self.relaunch()
        wait_until(lambda: any("damaged" in (name or "") for name in self.program.names()), "a sentence about it")
        kept = self.desktop.settings_file + ".damaged"
        with open(kept, encoding="utf-8") as file:
            self.assertEqual(file.read(), '{"exitPassword": "gir')


if __name__ == "__main__":
    unittest.main(verbosity=2)
