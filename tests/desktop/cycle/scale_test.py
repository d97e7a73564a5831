"""Sessions where a point is more than one pixel, and a screen not always a whole number of points."""
import unittest

from screencase import BACKGROUND, OTHERS, TEXT, Outputs, ScreenCase

SIZE_IN_PIXELS = 96


class Scale(ScreenCase):
    display = Outputs
    window_manager = None

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # Sizes that no table of modes has, and that are no whole number of points where they are used.
        for mode, clock, *timings in (("1366x1024", 120, 1366, 1440, 1584, 1800, 1024, 1027, 1034, 1060),
                                      ("1280x768", 80, 1280, 1344, 1480, 1680, 768, 771, 778, 795)):
            cls.desktop.call(["xrandr", "--newmode", mode, str(clock), *map(str, timings)])
            for monitor in ("DUMMY0", "DUMMY1"):
                cls.desktop.call(["xrandr", "--addmode", monitor, mode])

    def letters_at(self, scale, mode="1280x1024", **environment):
        """Plays a session; returns where its text begins, and of how many pixels that consists: those in its colour,
        and those between that and the background. The text is as large at every scale."""
        self.xrandr("--output", "DUMMY0", "--mode", mode)
        area = self.monitors()["DUMMY0"]
        self.start_session(environment=environment, kioskMode=True, fontSize=SIZE_IN_PIXELS / scale)
        self.desktop.type("Sky")
        self.wait_text("Sky")
        picture = self.assert_covered(area)
        if "DUMMY1" in self.monitors():
            beyond = self.picture(self.monitors()["DUMMY1"])
            self.assertEqual(set(beyond.column(0)), {OTHERS}, "the session sticks out")
        left, _, _, bottom = picture.bounds(TEXT)
        pixels = [colour for y in range(bottom + 4) for colour in picture.row(y)[left - 4:left + 400]]
        self.leave_through(area)
        self.program.quit()
        return left, pixels.count(TEXT), sum(colour[1] > BACKGROUND[1] + 25 for colour in pixels) - pixels.count(TEXT)

    def assert_as_sharp_as_at_one(self, scale, *mode, **environment):
        if not Scale.plain:
            Scale.plain = self.letters_at(1)
        (left, full, edges), (plain_left, plain_full, plain_edges) = (
            self.letters_at(scale, *mode, **environment), Scale.plain)
        self.assertLess(abs(left - plain_left - 40 * (scale - 1)), 2, "not padded by 40 points")
        self.assertLess(abs(full / plain_full - 1), 0.03, "not as large")
        self.assertLess(edges / plain_edges, 1.1, "not as sharp")

    plain = None

    def test_a_quarter_more(self):
        self.assert_as_sharp_as_at_one(1.25, QT_SCALE_FACTOR="1.25")

    def test_half_as_much_again(self):
        self.assert_as_sharp_as_at_one(1.5, QT_SCALE_FACTOR="1.5")

    def test_a_scale_that_leaves_sevenths_of_a_point_in_both_directions_and_what_is_beyond(self):
        self.xrandr("--output", "DUMMY1", "--mode", "1366x1024", "--right-of", "DUMMY0")
        self.addCleanup(self.xrandr, "--output", "DUMMY1", "--off")
        self.assert_as_sharp_as_at_one(1.75, "1280x768", QT_SCREEN_SCALE_FACTORS="DUMMY0=1.75;DUMMY1=1")

    def test_twice(self):
        self.assert_as_sharp_as_at_one(2, QT_SCALE_FACTOR="2")

    def test_a_scale_that_leaves_a_whole_pixel_beyond_the_last_point(self):
        self.assert_as_sharp_as_at_one(2.5, "1366x1024", QT_SCALE_FACTOR="2.5")


if __name__ == "__main__":
    unittest.main(verbosity=2)
