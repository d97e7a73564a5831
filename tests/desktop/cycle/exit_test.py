"""The way out when the keyboard is not as usual."""
import ctypes
import ctypes.util
import unittest

from case import PASSWORD, DesktopCase

# Keys by their place, as the server numbers them.
PLACES = {"g": 42, "i": 31, "r": 27, "a": 38, "f": 41, "e": 26, "Shift": 50, "CapsLock": 66, "Menu": 135,
          "t": 28, "Control": 37, "Alt": 64, "Super": 133, "AltGr": 108, "Accent": 21}


class Keys:
    """Presses keys by their place. The usual tool types letters instead, whatever layout and lock it finds."""

    def __init__(self, display):
        self.x = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
        self.test = ctypes.CDLL(ctypes.util.find_library("Xtst") or "libXtst.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))

    def close(self):
        self.x.XCloseDisplay(self.display)

    def press(self, *names, held=None):
        for name in names:
            if held:
                self._send(PLACES[held], 1)
            self._send(PLACES[name], 1)
            self._send(PLACES[name], 0)
            if held:
                self._send(PLACES[held], 0)

    def set_sticky(self, on):
        """Modifiers tapped stay for one key, and tapped twice until they are tapped again."""
        core_keyboard, sticky_keys = ctypes.c_uint(0x100), ctypes.c_uint(8)
        self.x.XkbChangeEnabledControls(self.display, core_keyboard, sticky_keys, sticky_keys if on else 0)
        self.x.XSync(self.display, 0)

    def _send(self, code, down):
        self.test.XTestFakeKeyEvent(self.display, code, down, ctypes.c_ulong(0))
        self.x.XSync(self.display, 0)


class ExitCase(DesktopCase):
    def setUp(self):
        super().setUp()
        self.keys = Keys(self.desktop.environment["DISPLAY"])
        self.addCleanup(self.keys.close)

    def enter(self, *names, held=None):
        self.keys.press(*names, held=held)
        self.desktop.key("Return")

    def assert_out(self):
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()


class Exit(ExitCase):
    def tearDown(self):
        super().tearDown()
        self.desktop.call(["setxkbmap", "-option", "", "-layout", "us"])

    def caps_lock_is_on(self):
        return "Caps Lock:   on" in self.desktop.output(["xset", "q"])

    def test_caps_lock_is_said_and_can_be_switched_off_in_the_overlay(self):
        for lockdown in (True, False):
            with self.subTest(lockdown=lockdown):
                self.start_session(kioskMode=lockdown)
                self.keys.press("CapsLock")  # the child did
                self.open_overlay()
                self.program.find("Caps Lock is on")
                self.enter(*PASSWORD)
                self.program.find("Incorrect password")
                self.keys.press("CapsLock")
                self.program.wait_gone("Caps Lock is on")
                self.enter(*PASSWORD)
                self.assert_out()
                self.program.quit()

    def test_with_caps_lock_on_shift_types_the_password(self):
        self.start_session(kioskMode=True)
        self.keys.press("CapsLock")
        self.addCleanup(lambda: self.caps_lock_is_on() and self.keys.press("CapsLock"))
        self.open_overlay()
        self.program.find("Caps Lock is on")
        self.enter(*PASSWORD, held="Shift")
        self.assert_out()

    def test_modifiers_that_a_child_locked_do_not_keep_the_password_out(self):
        self.desktop.call(["setxkbmap", "-layout", "de"])
        self.addCleanup(self.keys.set_sticky, False)
        # A password with the letter of the quick start's shortcut, which Control, Alt and Super make of it.
        for taps in (["Control"], ["Control"] * 2, ["Alt"] * 2, ["Super"] * 2, ["Control", "Alt", "Super"] * 2,
                     ["Shift"], ["Shift"] * 2, ["AltGr"], ["AltGr"] * 2):
            with self.subTest(taps=taps):
                self.keys.set_sticky(False)  # ends what is locked
                self.keys.set_sticky(True)
                self.start_session(kioskMode=True, modifierKeysTypeEmoji=False, exitPassword="tiger")
                self.keys.press(*taps)
                self.open_overlay()
                self.enter(*"tiger")
                self.assert_out()
                self.program.quit()

    def test_sticky_keys_type_a_capital_of_the_password(self):
        self.keys.set_sticky(True)
        self.addCleanup(self.keys.set_sticky, False)
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False, exitPassword="tigeR")
        self.open_overlay()
        self.enter(*"tige", "Shift", "r")
        self.assert_out()

    def test_an_accent_that_a_child_typed_last_does_not_go_on_the_password(self):
        self.desktop.call(["setxkbmap", "-layout", "de"])
        self.start_session(kioskMode=True, exitPassword="eagerer")
        self.keys.press("a", "Accent")
        self.wait_text("a")
        self.open_overlay()
        self.enter(*"eagerer")
        self.assert_out()

    def test_the_layout_is_switched_in_the_session_and_back_in_the_overlay(self):
        for lockdown in (True, False):
            with self.subTest(lockdown=lockdown):
                self.desktop.call(["setxkbmap", "-option", "", "-option", "grp:menu_toggle", "-layout", "us,ru"])
                self.start_session(kioskMode=lockdown, modifierKeysTypeEmoji=False)
                self.keys.press("g")
                self.wait_text("g")
                self.keys.press("Menu")
                self.keys.press("g", "f")
                self.program.wait_for_text(lambda text: text.endswith("па"), "letters of the other layout")
                self.open_overlay()
                self.enter(*PASSWORD)
                self.program.find("Incorrect password")
                self.keys.press("Menu")
                self.enter(*PASSWORD)
                self.assert_out()
                self.program.quit()

    def test_a_password_of_the_second_layout(self):
        self.desktop.call(["setxkbmap", "-option", "", "-option", "grp:menu_toggle", "-layout", "us,ru"])
        self.start_session(kioskMode=True, exitPassword="пшкфаау")
        self.open_overlay()
        self.keys.press("Menu")
        self.enter(*PASSWORD)
        self.assert_out()

    def test_the_layouts_are_set_anew_while_the_overlay_shows(self):
        self.desktop.call(["setxkbmap", "-option", "", "-layout", "ru"])
        self.start_session(kioskMode=True)
        self.open_overlay()
        self.desktop.call(["setxkbmap", "-option", "", "-layout", "us"])
        self.enter(*PASSWORD)
        self.assert_out()


if __name__ == "__main__":
    unittest.main(verbosity=2)
