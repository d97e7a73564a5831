"""What the tests of the whole cycle share."""
import os
import re
import shutil
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))

from rig.desktop import Desktop, Fixed, wait_until  # noqa: E402  pylint: disable=wrong-import-position
from rig.program import Program  # noqa: E402  pylint: disable=wrong-import-position

PROGRAM = os.environ["TAPALONG_PROGRAM"]
PASSWORD = "giraffe"


class DesktopCase(unittest.TestCase):
    """One desktop for the class, a fresh configuration and run of the program for each test."""

    window_manager = ("openbox",)
    display = Fixed
    size = (1280, 1200)

    @classmethod
    def setUpClass(cls):
        desktop = Desktop(size=cls.size, wm=cls.window_manager, display=cls.display)
        cls.desktop = cls.enterClassContext(desktop) if hasattr(cls, "enterClassContext") else cls._entered(desktop)

    @classmethod
    def _entered(cls, context):
        entered = context.__enter__()
        cls.addClassCleanup(context.__exit__, None, None, None)
        return entered

    def setUp(self):
        self.program = None
        shutil.rmtree(os.path.dirname(self.desktop.settings_file), ignore_errors=True)
        self.desktop.move(640, 700)

    def tearDown(self):
        if self.program is not None and self.program.is_running():
            self.program.quit()

    def launch(self, environment=None, **settings):
        """Starts the program with these settings and waits for its window."""
        self.program = Program(self.desktop, PROGRAM, settings={"exitPassword": PASSWORD, "useTouchID": False} |
                               settings, environment=environment)
        return self.launched()

    def relaunch(self):
        """Starts the program with whatever the last run stored."""
        self.program = Program(self.desktop, PROGRAM)
        return self.launched()

    def launched(self):
        self.program.find("Start Session")
        self.desktop.wait_shown("Tapalong Settings")
        return self.program

    def start_session(self, **settings):
        program = self.launch(**settings)
        program.click("Start Session")
        wait_until(lambda: program.typed_text() == "", "an empty session")
        return program

    def corner_point(self, corner="topRight"):
        width, height = self.desktop.size
        return (0 if "Left" in corner else width - 1, 0 if "top" in corner else height - 1)

    def open_overlay(self, corner="topRight"):
        self.desktop.move(*self.corner_point(corner))
        self.program.find("Exit Tapalong")
        self.desktop.move(640, 700)
        self.program.wait_for_focus("Enter exit password")

    def assert_back_in_settings(self):
        self.program.find("Start Session")
        self.assertIsNone(self.program.typed_text())
        self.assertIsNone(self.program.look_for("Exit Tapalong"))

    def leave(self, password=PASSWORD):
        self.open_overlay()
        self.desktop.type(password)
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()

    def wait_text(self, expected):
        self.program.wait_for_text(lambda text: text == expected, f"the text {expected!r}")


class WitnessCase(DesktopCase):
    """Beside the program runs another one that writes down every event it gets."""

    def setUp(self):
        super().setUp()
        self.witness_log = self.desktop.path("witness.log")
        self.witness_file = open(self.witness_log, "w", encoding="utf-8")  # pylint: disable=consider-using-with
        self.witness = self.desktop.run_beside(["xev", "-name", "witness", "-geometry", "200x100+20+20"],
                                               stdout=self.witness_file)
        self.desktop.window("witness")

    def tearDown(self):
        super().tearDown()
        self.witness.terminate()
        self.witness.wait()
        self.witness_file.close()

    def keys_seen_by_others(self):
        with open(self.witness_log, encoding="utf-8", errors="replace") as log:
            return re.findall(r"KeyPress.*?keysym 0x\w+, (\w+)", log.read(), re.S)
