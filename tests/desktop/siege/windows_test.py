"""Windows of others that open over a session in Lockdown Mode, and what others ask of the window manager."""
import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, ".."), os.path.join(HERE, "..", "cycle")]

from case import PASSWORD, DesktopCase, wait_until  # noqa: E402  pylint: disable=wrong-import-position

from client import Client  # noqa: E402  pylint: disable=wrong-import-position
from managers import LONG, Composed, under_each  # noqa: E402  pylint: disable=wrong-import-position
from rig.figures import figure  # noqa: E402  pylint: disable=wrong-import-position

LONGEST_SHOWN_MS = 50
LONGEST_FOCUS_MS = 100
KINDS = ("ordinary", "self-activating", "self-focusing", "self-raising", "keep-above", "dialog", "notification",
         "notification in a corner", "dock", "full-screen", "unmanaged", "unmanaged self-raising")
REQUESTS = ("close", "minimise", "un-fullscreen", "move", "lower", "show-desktop", "switch-desktop")


class Answer:
    """What came of one window or request."""

    def __init__(self, line):
        (self.shown_ms, self.focus_ms, self.keys, self.clicks, self.shown_at_end, self.focus_at_end,
         self.in_place) = map(int, line.split())

    def complaints(self):
        if self.shown_at_end or not self.in_place:
            yield "is above at the end"
        # How fast is measured where nothing else runs: in the long form.
        if LONG and self.shown_ms > LONGEST_SHOWN_MS:
            yield f"showed for {self.shown_ms} ms"
        if LONG and self.focus_ms > LONGEST_FOCUS_MS:
            yield f"had the focus for {self.focus_ms} ms"
        if self.focus_at_end:
            yield "has the focus at the end"
        if self.keys or self.clicks:
            yield f"got {self.keys} keys and {self.clicks} clicks"


class Windows(Client):
    def __init__(self, desktop):
        super().__init__(desktop, os.environ["TAPALONG_SIEGE_WINDOWS"])

    def answers(self, command, kinds, milliseconds):
        for kind in kinds:
            yield kind, Answer(self.ask(f"{command} {milliseconds} {kind}")[0])


class Siege(Composed):
    """The windows and requests under one window manager; a case of it for each follows below."""

    def judge(self, title, answers):
        figure(f"{title}, {self.name()}:\n    {'':24}{'shown ms':>9}{'focus ms':>9}{'keys':>6}{'clicks':>7}")
        complaints = []
        for kind, answer in answers:
            figure(f"    {kind:24}{answer.shown_ms:9}{answer.focus_ms:9}{answer.keys:6}{answer.clicks:7}")
            complaints += [f"{kind}: {each}" for each in answer.complaints()]
        self.assertEqual(complaints, [])

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
        windows.ask("underlay")
        self.judge("requests about a session", windows.answers("request", REQUESTS, 1500 if LONG else 700))
        self.leave()

    def test_without_a_session_the_same_windows_show_and_get_everything(self):
        with Windows(self.desktop) as windows:
            windows.ask("session")
            kinds = ("self-focusing", "unmanaged", "notification in a corner")
            for kind, answer in windows.answers("open", kinds, 1500):
                self.assertGreater(answer.shown_ms, 4 * LONGEST_SHOWN_MS, kind)
                self.assertGreater(answer.clicks, 0, kind)
                # A notification may be given the focus: window managers differ.
                if not kind.startswith("notification"):
                    self.assertEqual(answer.keys > 0, kind == "self-focusing")


globals().update(under_each(Siege, DesktopCase))

if __name__ == "__main__":
    unittest.main(verbosity=2)
