"""What stands on the screen: pixels of the real session, at places where the design says what they are."""
import subprocess
import unittest

from case import DesktopCase

BACKGROUND = (0x1A, 0x1A, 0x2E)
LOOK = {"useSystemAppearance": False, "customBGColorHex": "#1A1A2E", "showCursor": False, "exitCorner": "topLeft",
        "modifierKeysTypeEmoji": False}
GREEN = {"rainbowMode": False, "customFGColorHex": "#00FF00"}
RED, ORANGE, YELLOW = (237, 46, 46), (250, 115, 5), (252, 199, 13)


class Pictures(DesktopCase):
    def picture(self):
        """The screen's pixels by row."""
        path = self.desktop.path("screen.png")
        self.desktop.settle(0.8)  # a fade may still run
        self.desktop.screenshot(path)
        raw = subprocess.run(["convert", path, "-depth", "8", "rgb:-"], check=True, stdout=subprocess.PIPE).stdout
        self.width = self.desktop.size[0]
        return raw

    def pixel(self, picture, x, y):
        at = (y * self.width + x) * 3
        return tuple(picture[at:at + 3])

    def assert_close(self, colour, expected, what, tolerance=3):
        self.assertTrue(all(abs(a - b) <= tolerance for a, b in zip(colour, expected)),
                        f"{what} is {colour}, not {expected}")

    def bounds_of(self, picture, colour):
        """The columns in which that colour is found, first and last, within the text's first line."""
        columns = [x for y in range(40, 140) for x in range(40, 400)
                   if all(abs(a - b) <= 3 for a, b in zip(self.pixel(picture, x, y), colour))]
        self.assertTrue(columns, f"{colour} is nowhere in the first line")
        return min(columns), max(columns)

    def test_background_glow_and_notice(self):
        self.start_session(**LOOK)
        picture = self.picture()
        self.assert_close(self.pixel(picture, 640, 100), BACKGROUND, "the background")
        notice = self.program.find("Lockdown Mode is off")
        x, y = self.program.centre(notice)
        beside = self.pixel(picture, x - 220, y)
        self.assert_close(beside, [c * 0.3 for c in BACKGROUND], "the notice: black at 0.7 over the background")
        glow = self.pixel(picture, 0, 0)
        self.assert_close(glow, [c + (255 - c) * 0.08 for c in BACKGROUND], "the glow's centre, white at 0.08")
        self.assert_close(self.pixel(picture, 45, 0), BACKGROUND, "the background beyond the glow")

    def test_letters_in_the_rainbows_colours_from_left_to_right(self):
        self.start_session(**LOOK)
        self.desktop.type("abc")
        self.wait_text("abc")
        picture = self.picture()
        red, orange, yellow = (self.bounds_of(picture, colour) for colour in (RED, ORANGE, YELLOW))
        self.assertLess(red[1], orange[0])
        self.assertLess(orange[1], yellow[0])
        self.assertGreaterEqual(red[0], 40, "the text is padded by 40")

    def test_typing_past_the_bottom_keeps_the_last_line_in_sight(self):
        self.start_session(**LOOK | {"rainbowMode": False, "customFGColorHex": "#00FF00", "fontSize": 200})
        self.desktop.key(*["Return"] * 6)
        self.desktop.type("M")
        self.wait_text("\n" * 6 + "M")
        picture = self.picture()
        bottom = self.desktop.size[1]
        green = [y for y in range(0, bottom, 4) for x in range(40, 260, 4) if self.pixel(picture, x, y) == (0, 255, 0)]
        self.assertTrue(green, "the last line is out of sight")
        self.assertGreater(min(green), bottom - 400, "the last line is not at the bottom")

    def test_a_parent_scrolls_back_by_wheel_and_a_key_goes_to_the_end(self):
        # The first line is the only one with M's: the screen shows them when it has been scrolled to the top.
        self.start_session(**LOOK | {"rainbowMode": False, "customFGColorHex": "#00FF00", "fontSize": 100})
        lines = "MMMM" + "\n" * 24 + "i"
        self.desktop.type("MMMM")
        self.desktop.key(*["Return"] * 24)
        self.desktop.type("i")
        self.wait_text(lines)
        at_the_end = self.picture()
        self.assertLess(self.green(at_the_end), 2000, "the M's are in sight")
        self.wheel(4, 40)
        at_the_top = self.picture()
        self.assertGreater(self.green(at_the_top), 4000, "the wheel does not scroll back")
        self.wheel(5, 40)
        self.assertTrue(self.picture() == at_the_end, "what was scrolled away and back looks different")
        self.wheel(4, 40)
        self.desktop.type("i")
        self.wait_text(lines + "i")
        self.assertLess(self.green(self.picture()), 2000, "a key does not scroll to the end")

    def wheel(self, button, turns):
        self.desktop.move(640, 600)
        for _ in range(turns):
            self.desktop.xdotool("click", str(button))
        self.desktop.settle(1.5)  # it runs on

    @staticmethod
    def green(picture):
        return sum(picture[at:at + 3] == b"\x00\xff\x00" for at in range(0, len(picture), 3))

    def start_scaled_session(self, scale, **settings):
        """A session on a screen whose points have that many pixels."""
        self.launch({"QT_SCALE_FACTOR": str(scale)}, **LOOK | GREEN | settings)
        self.program.act("Start Session")
        self.wait_text("")

    def test_letters_have_the_screens_own_resolution_at_every_scale(self):
        for scale in (1, 1.25, 1.5, 2):
            with self.subTest(scale=scale):
                self.start_scaled_session(scale)
                self.desktop.type("l")
                self.wait_text("l")
                picture = self.picture()
                row = [self.pixel(picture, x, round(85 * scale)) for x in range(round(40 * scale), round(80 * scale))]
                full = [colour for colour in row if colour == (0, 255, 0)]
                between = [colour for colour in row if colour not in (BACKGROUND, (0, 255, 0))]
                self.assertGreater(len(full), 3 * scale, f"the stem of the letter in {row}")
                # One pixel at each edge of the stem. Scaled up, an edge would be as wide as the scale.
                self.assertLessEqual(len(between), 2, f"the stem's edges are blurred: {row}")
                self.program.quit()

    def test_the_largest_emoji_is_smooth_at_scale_two(self):
        self.start_scaled_session(2, fontSize=200)
        self.desktop.key("Escape")
        self.wait_text("\U0001F680")
        picture = self.picture()
        rows = [picture[(y * self.width + 80) * 3:(y * self.width + 580) * 3] for y in range(80, 580)]
        seen = [row for row in rows if set(zip(*[iter(row)] * 3)) != {BACKGROUND}]
        self.assertGreater(len(seen), 400, "the rocket is smaller than it should be")
        repeated = sum(row == following for row, following in zip(seen, seen[1:]))
        self.assertLess(repeated, len(seen) / 20, "its picture's rows are only repeated")

    def test_the_overlay_dims_the_session_and_its_button_turns_green(self):
        self.start_session(**LOOK)
        self.open_overlay("topLeft")
        picture = self.picture()
        self.assert_close(self.pixel(picture, 100, 600), [c * 0.4 for c in BACKGROUND], "black at 0.6 over all")
        unlock = self.program.find("Unlock")
        x, y = self.program.centre(unlock)
        self.assert_close(self.pixel(picture, x - 110, y), (0x6C, 0x6C, 0x78), "Unlock with an empty field")
        self.desktop.type("x")
        self.assert_close(self.pixel(self.picture(), x - 110, y), (0x1B, 0x82, 0x39), "Unlock with a password")
        x, y = self.program.centre(self.program.find("Cancel"))
        self.assert_close(self.pixel(picture, x - 110, y), (0xD2, 0x2F, 0x27), "Cancel")


if __name__ == "__main__":
    unittest.main(verbosity=2)
