"""Windows of others that open over a session in Lockdown Mode, and what others ask of the window manager."""
import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, ".."), os.path.join(HERE, "..", "cycle")]

from case import PASSWORD, DesktopCase  # noqa: E402  pylint: disable=wrong-import-position

from managers import LONG, Composed, under_each  # noqa: E402  pylint: disable=wrong-import-position
from rig.figures import figure  # noqa: E402  pylint: disable=wrong-import-position
from windows import (  # noqa: E402  pylint: disable=wrong-import-position
    KINDS, LONGEST_SHOWN_MS, REQUESTS, WITH_KEYS, WITHOUT_KEYS, Windows)

# What a window manager never does, so that it shows nothing about a session there.
IGNORED_REQUESTS = {"xfwm4": ("lower",)}


class Siege(Composed):
    """The windows and requests under one window manager; a case of it for each follows below."""

    def judge(self, title, answers):
        figure(f"{title}, {self.name()}:\n    {'':24}{'shown ms':>9}{'focus ms':>9}{'keys':>6}{'clicks':>7}")
        complaints = []
        for kind, answer in answers:
            figure(f"    {kind:24}{answer.shown_ms:9}{answer.focus_ms:9}{answer.keys:6}{answer.clicks:7}")
            complaints += [f"{kind}: {each}" for each in answer.complaints()]
        self.assertEqual(complaints, [])

    def two_desktops(self, windows):
        self.assertEqual(windows.ask("desktops"), ["2"])

    def besieged_session(self):
        self.start_session(kioskMode=True)
        self.desktop.settle()
        windows = Windows(self.desktop)
        windows.__enter__()
        self.addCleanup(windows.__exit__)
        windows.ask("session")
        return windows

    def test_windows_of_others_stay_below(self):
        windows = self.besieged_session()
        self.judge("windows over a session", windows.answers("open", KINDS, 3000 if LONG else 900))
        self.desktop.move(640, 600)
        self.leave()

    def test_windows_of_others_stay_below_the_exit_overlay(self):
        windows = self.besieged_session()
        self.open_overlay()
        self.judge("windows over the exit overlay", windows.answers("open", KINDS, 2000 if LONG else 700))
        self.assertEqual(self.program.typed_text(), "")
        self.program.wait_for_focus("Enter exit password")
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()

    def test_requests_of_others_have_no_effect(self):
        windows = self.besieged_session()
        self.two_desktops(windows)
        windows.ask("underlay")
        self.judge("requests about a session", windows.answers("request", REQUESTS, 1500 if LONG else 700))
        self.leave()

    def test_without_a_session_the_same_requests_have_an_effect(self):
        ignored = IGNORED_REQUESTS.get(self.window_manager[0], ())
        with Windows(self.desktop) as windows:
            self.two_desktops(windows)
            windows.ask("underlay")
            for kind, answer in windows.answers("control", REQUESTS, 1500 if LONG else 300):
                self.assertGreater(answer.shown_ms, 0, kind)
                self.assertEqual(answer.shown_at_end, kind in ignored, kind)

    def test_without_a_session_the_same_windows_show_and_get_everything(self):
        with Windows(self.desktop) as windows:
            for kind, answer in windows.answers("alone", KINDS, 1500 if LONG else 600):
                self.assertGreater(answer.shown_ms, 4 * LONGEST_SHOWN_MS, kind)
                self.assertGreater(answer.clicks, 0, kind)
                # A notification may be given the focus: window managers differ.
                if kind in WITH_KEYS:
                    self.assertGreater(answer.keys, 0, kind)
                elif kind in WITHOUT_KEYS:
                    self.assertEqual(answer.keys, 0, kind)


globals().update(under_each(Siege, DesktopCase))

if __name__ == "__main__":
    unittest.main(verbosity=2)
