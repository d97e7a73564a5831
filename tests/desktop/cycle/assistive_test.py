"""Working the program as a screen reader does: by the names of its controls and their own actions, no pointer, no key."""
import unittest

from case import PASSWORD, DesktopCase, wait_until

CONTROLS = {
    "About Lockdown Mode": "push button", "Lockdown Mode": "check box", "Rainbow Mode": "check box",
    "About Modifier Keys Type Emoji": "push button", "Modifier Keys Type Emoji": "check box",
    "Enable Sound": "check box", "Sound": "combo box", "Play Sound": "push button",
    "Use Touch ID to Exit": "check box", "Exit Password": "text", "Hot Corner": "combo box",
    "Corner Dwell Time": "slider", "Font Size": "slider", "Use System Appearance": "check box",
    "Text Color": "push button", "Background Color": "push button", "Show Cursor": "check box",
    "Max Characters: 5000": "spin button", "⌃⌥⌘T": "push button", "Start Session": "push button",
}


class Assistive(DesktopCase):
    def stored(self, key):
        return self.program.stored_settings().get(key)

    def wait_stored(self, key, value):
        wait_until(lambda: self.stored(key) == value, f"{key} to be {value!r}; it was {self.stored(key)!r}")

    def test_every_control_of_the_settings_has_its_label_as_its_name(self):
        self.launch(useSystemAppearance=False)
        for name, role in CONTROLS.items():
            with self.subTest(name):
                self.program.find(name, role)

    def test_a_press_is_one_click(self):
        self.launch()
        self.program.act("+")
        self.wait_stored("maxCharacters", 6000)
        self.program.act("−")
        self.wait_stored("maxCharacters", 5000)
        self.program.act("⌃⌥⌘T")
        self.program.find("Press shortcut...")
        self.program.act("Press shortcut...")
        self.program.find("⌃⌥⌘T")
        self.program.act("About Lockdown Mode")
        self.program.find("", "dialog")

    def test_a_picker_opens_and_its_entries_can_be_pressed(self):
        self.launch()
        self.program.act("Hot Corner", "combo box")
        self.program.act("Bottom Left", "list item")
        self.wait_stored("exitCorner", "bottomLeft")

    def test_a_start_without_a_password_does_nothing(self):
        self.launch(exitPassword="")
        self.program.act("Start Session")
        self.desktop.settle()
        self.assertIsNone(self.program.typed_text())

    def test_a_session_is_started_cancelled_out_of_and_left(self):
        self.launch(useTouchID=True)
        self.program.act("Start Session")
        wait_until(lambda: self.program.typed_text() == "", "an empty session")
        self.open_overlay()
        self.program.act("Unlock")
        self.program.act("Use Touch ID")
        self.program.find("Exit Tapalong")
        self.program.act("Cancel")
        self.program.wait_gone("Exit Tapalong")
        self.open_overlay()
        self.desktop.type(PASSWORD)
        self.program.act("Unlock")
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()


if __name__ == "__main__":
    unittest.main(verbosity=2)
