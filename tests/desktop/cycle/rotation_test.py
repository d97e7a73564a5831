"""A screen that is turned in the middle of a session, on a desktop without any window manager."""
import unittest

from screencase import ScreenCase, Turning

TEXT = "The quick brown fox jumps over the lazy dog " * 3 + "THE END"


class Rotation(ScreenCase):
    display = Turning
    window_manager = None
    size = (1024, 768)

    def turn(self, orientation):
        """Returns the screen's area after it."""
        self.xrandr("-o", orientation)
        width, height = self.size if orientation in ("normal", "inverted") else reversed(self.size)
        return 0, 0, width, height

    def start_and_type(self):
        self.start_session(kioskMode=True, fontSize=120)
        self.desktop.type(TEXT, delay_ms=3)
        self.wait_text(TEXT)

    def test_the_session_turns_with_its_screen(self):
        upright = self.turn("normal")
        self.start_and_type()
        before = self.assert_covered(upright)
        turned = self.assert_covered(self.turn("left"))
        self.assertTrue(self.assert_covered(self.turn("inverted")) == before)
        self.assertTrue(self.assert_covered(self.turn("right")) == turned)
        self.leave_through(self.turn("left"))
        self.program.quit()
        self.start_and_type()
        self.assertTrue(self.assert_covered(self.turn("left")) == turned, "turned, it is not as in a fresh session")
        self.leave_through(self.turn("normal"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
