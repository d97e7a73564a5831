"""Monitors that change their resolution, come and go in the middle of a session."""
import unittest

from screencase import OTHERS, Outputs, ScreenCase, wait_until

FIRST, SECOND = "DUMMY0", "DUMMY1"
# More than one screen of it, so that the end is in sight only if it is scrolled to.
LONG = "The quick brown fox jumps over the lazy dog " * 3 + "THE END"


class Screens(ScreenCase):
    display = Outputs

    def setUp(self):
        super().setUp()
        self.mode(FIRST, "1280x1024", "--primary")
        self.xrandr("--output", SECOND, "--off")

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        for mode in ("1024x768", "1280x1024"):
            cls.desktop.call(["xrandr", "--addmode", SECOND, mode])

    def mode(self, monitor, mode, *words):
        self.xrandr("--output", monitor, "--mode", mode, *words)

    def assert_session_on(self, monitor):
        return self.assert_covered(self.monitors()[monitor])

    def leave_on(self, monitor):
        self.leave_through(self.monitors()[monitor])

    def test_the_text_is_laid_out_for_each_resolution_as_if_there_had_been_no_other(self):
        modes = ("1280x1024", "800x600", "1920x1080")
        self.start_session(kioskMode=True, fontSize=150)
        self.desktop.type(LONG, delay_ms=3)
        self.wait_text(LONG)
        seen = {}
        for mode in modes:
            self.mode(FIRST, mode)
            seen[mode] = self.assert_session_on(FIRST)
        self.mode(FIRST, "1280x1024")
        self.assertTrue(self.assert_session_on(FIRST) == seen["1280x1024"])
        self.mode(FIRST, "800x600")
        self.leave_on(FIRST)
        self.program.quit()
        for mode in ("800x600", "1920x1080"):
            self.mode(FIRST, mode)
            self.start_session(kioskMode=True, fontSize=150)
            self.desktop.type(LONG, delay_ms=3)
            self.wait_text(LONG)
            self.assertTrue(self.assert_session_on(FIRST) == seen[mode], f"{mode} is not as in a fresh session")
            self.program.quit()

    def test_the_session_stays_on_the_main_screen_when_another_comes_and_goes(self):
        self.start_session(kioskMode=True)
        self.desktop.type("abc")
        alone = self.assert_session_on(FIRST)
        for side in ("--left-of", "--above"):
            self.mode(SECOND, "1024x768", side, FIRST)
            self.assertTrue(self.assert_session_on(FIRST) == alone, side)
            other = self.picture(self.monitors()[SECOND])
            self.assertGreater(other.count(OTHERS), 300000, "the session lies on the other screen")
        self.leave_on(FIRST)
        self.program.act("Start Session")
        wait_until(lambda: self.program.typed_text() == "", "the next session")
        self.xrandr("--output", SECOND, "--off")
        self.assert_session_on(FIRST)
        self.leave_on(FIRST)

    def test_the_session_goes_with_the_main_screen(self):
        self.mode(SECOND, "1024x768", "--left-of", FIRST)
        self.start_session(kioskMode=True)
        self.check_it_goes_with_the_main_screen()

    def test_the_session_goes_with_the_main_screen_also_without_lockdown(self):
        self.mode(SECOND, "1024x768", "--left-of", FIRST)
        self.start_session(kioskMode=False)
        self.assert_notice_in_the_middle_of(FIRST)
        self.xrandr("--output", SECOND, "--primary")
        self.assert_session_on(SECOND)
        self.assert_notice_in_the_middle_of(SECOND)
        self.xrandr("--output", FIRST, "--primary")
        self.check_it_goes_with_the_main_screen()

    def check_it_goes_with_the_main_screen(self):
        self.desktop.type("abc")
        self.assert_session_on(FIRST)
        self.xrandr("--output", SECOND, "--primary")
        self.assert_session_on(SECOND)
        self.desktop.type("d")
        self.wait_text("abcd")
        self.leave_on(SECOND)

    def assert_notice_in_the_middle_of(self, monitor):
        x, _, width, _ = self.monitors()[monitor]
        self.assertLess(abs(self.program.centre(self.program.find("Lockdown Mode is off"))[0] - x - width // 2), 2)

    def test_the_screen_that_the_session_stands_on_is_unplugged(self):
        self.mode(SECOND, "1024x768", "--right-of", FIRST)
        self.start_session(kioskMode=True)
        self.desktop.type("abc")
        self.xrandr("--output", FIRST, "--off")
        self.assert_session_on(SECOND)
        self.desktop.type("d")
        self.wait_text("abcd")
        self.mode(FIRST, "1280x1024", "--left-of", SECOND, "--primary")
        self.assert_session_on(FIRST)
        self.leave_on(FIRST)

    def test_a_session_without_any_screen_goes_on_and_covers_the_one_that_comes(self):
        self.start_session(kioskMode=True)
        self.desktop.type("abc")
        self.xrandr("--output", FIRST, "--off")
        wait_until(lambda: not self.monitors(), "no monitor")
        self.desktop.type("d")
        self.wait_text("abcd")
        self.mode(FIRST, "800x600")
        self.assert_session_on(FIRST)
        self.leave_on(FIRST)

    def test_a_session_begun_without_any_screen(self):
        self.launch(kioskMode=True, hotCornerDwellTime=0.5, useSystemAppearance=False, customBGColorHex="#1A1A2E",
                    showCursor=False)
        self.xrandr("--output", FIRST, "--off")
        wait_until(lambda: not self.monitors(), "no monitor")
        self.program.act("Start Session")
        wait_until(lambda: self.program.typed_text() is not None, "a session")
        self.mode(FIRST, "800x600")
        self.assert_session_on(FIRST)
        self.leave_on(FIRST)

    def test_the_overlay_and_what_is_typed_into_it_outlast_a_change_of_screens(self):
        self.start_session(kioskMode=True)
        x, y, width, _ = self.monitors()[FIRST]
        self.desktop.move(x + width - 1, y)
        self.program.find("Exit Tapalong")
        self.program.wait_for_focus("Enter exit password")
        self.desktop.type("gir")
        self.mode(SECOND, "1024x768", "--left-of", FIRST, "--primary")
        self.xrandr("--output", FIRST, "--off")
        wait_until(lambda: self.session_window() == self.monitors()[SECOND], "the session on the other screen")
        self.desktop.type("affe")
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()

    def test_in_lockdown_no_click_reaches_a_window_on_another_screen(self):
        self.click_on_the_other_screen(kioskMode=True)
        self.assertEqual(self.clicks_of_the_other_window(), 0)
        self.assertTrue(self.program.stored_settings()["soundEnabled"], "the settings were changed")

    def test_without_lockdown_clicks_reach_windows_on_another_screen(self):
        self.click_on_the_other_screen(kioskMode=False)
        self.assertEqual(self.clicks_of_the_other_window(), 5)
        self.assertFalse(self.program.stored_settings()["soundEnabled"])

    def click_on_the_other_screen(self, **settings):
        """Into the settings window, and with five buttons into a window of another program."""
        self.mode(SECOND, "1280x1024", "--right-of", FIRST)
        with open(self.desktop.path("other.log"), "w", encoding="utf-8") as log:
            other = self.desktop.run_beside(["xev", "-name", "other", "-geometry", "200x200+1290+700"], stdout=log)
        self.addCleanup(other.terminate)
        self.desktop.window("other")
        self.launch(soundEnabled=True, **settings)
        self.desktop.call(["xdotool", "windowmove", "--sync", self.desktop.window("Tapalong Settings"), "1500", "10"])
        self.program.act("Start Session")
        wait_until(lambda: self.program.typed_text() == "", "an empty session")
        self.program.click("Enable Sound")
        for button in (1, 2, 3, 4, 8):
            self.desktop.click(1400, 800, button)
        self.desktop.type("a")
        self.wait_text("a")

    def clicks_of_the_other_window(self):
        with open(self.desktop.path("other.log"), encoding="utf-8") as log:
            return log.read().count("ButtonPress")


if __name__ == "__main__":
    unittest.main(verbosity=2)
