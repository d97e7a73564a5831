"""The program started while it runs already: the first shows its settings, the second leaves."""
import signal
import unittest

from case import PASSWORD, PROGRAM, DesktopCase, Fixed, Program, wait_until


class SecondStart(DesktopCase):
    def setUp(self):
        super().setUp()
        self.other = None

    def tearDown(self):
        super().tearDown()
        if self.other is not None:
            self.other.terminate()
            self.other.wait()

    def start_again(self):
        """To its end; what it left with, and what it said."""
        second = Program(self.desktop, PROGRAM)
        return second.wait_for_end(), second

    def work_in_another_window(self):
        self.other = self.desktop.run_beside(["xev", "-name", "other", "-geometry", "1000x1000+0+0"])
        self.desktop.wait_shown("other")
        self.desktop.click(300, 300)
        wait_until(lambda: self.active_window() == "other", "the other window to be in front")

    def active_window(self):
        return self.desktop.output(["xdotool", "getactivewindow", "getwindowname"]).strip()

    def wait_for_settings_in_front(self):
        wait_until(lambda: self.active_window() == "Tapalong Settings", "the settings in front")

    def visible_windows(self):
        return self.desktop.output(["xdotool", "search", "--onlyvisible", "--name", "^Tapalong"]).split()

    def test_the_first_shows_its_settings_and_the_second_leaves(self):
        self.launch()
        self.work_in_another_window()
        self.assertEqual(self.start_again()[0], 0)
        self.wait_for_settings_in_front()
        self.assertTrue(self.program.is_running())
        self.assertEqual(len(self.visible_windows()), 1)

    def test_a_display_that_an_argument_names_is_the_one_of_all_our_connections(self):
        elsewhere = {"DISPLAY": f":{Fixed((800, 600)).start(self.desktop)}"}
        self.program = Program(self.desktop, PROGRAM, settings={"exitPassword": PASSWORD, "kioskMode": True},
                               environment=elsewhere, arguments=("-display", self.desktop.environment["DISPLAY"]))
        self.launched().click("Start Session")
        wait_until(lambda: self.program.typed_text() == "", "an empty session")
        self.desktop.type("abc")
        self.wait_text("abc")
        self.leave()
        self.assertEqual(self.start_again()[0], 0)
        self.wait_for_settings_in_front()

    def test_minimised_settings_come_back(self):
        self.launch()
        self.desktop.xdotool("windowminimize", self.desktop.window("Tapalong Settings"))
        wait_until(lambda: not self.visible_windows(), "the settings to be minimised")
        self.assertEqual(self.start_again()[0], 0)
        wait_until(self.visible_windows, "the settings on the screen")
        self.wait_for_settings_in_front()

    def test_in_a_session_nothing_changes(self):
        self.start_session(kioskMode=True, showCursor=False)
        self.desktop.ask_to_close("Tapalong Settings")
        wait_until(lambda: len(self.visible_windows()) == 0, "the settings to be closed")
        self.desktop.type("abc")
        self.wait_text("abc")
        self.desktop.settle()
        before = self.picture()
        self.assertEqual(self.start_again()[0], 0)
        self.desktop.settle()
        self.assertEqual(self.visible_windows(), [])
        self.assertTrue(self.picture() == before, "the screen looks different")
        self.desktop.type("d")
        self.wait_text("abcd")
        self.leave()

    def picture(self):
        path = self.desktop.path("screen.ppm")
        self.desktop.screenshot(path)
        with open(path, "rb") as file:
            return file.read()

    def test_after_the_first_was_killed_a_new_one_starts(self):
        self.launch()
        self.program.process.kill()
        self.program.wait_for_end()
        self.relaunch()
        self.assertEqual(self.start_again()[0], 0)

    def test_a_first_that_is_stopped_is_said(self):
        self.launch()
        self.program.process.send_signal(signal.SIGSTOP)
        try:
            code, second = self.start_again()
        finally:
            self.program.process.send_signal(signal.SIGCONT)
        self.assertEqual(code, 1)
        wait_until(lambda: any("runs already, but does not answer" in line for line in second.errors), "a sentence about it")
        self.program.find("Start Session")


if __name__ == "__main__":
    unittest.main(verbosity=2)
