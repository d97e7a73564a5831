"""Windows of others, and what others ask of the window manager, with what came of each."""
import os

from client import Client
from managers import LONG

LONGEST_SHOWN_MS = 50
LONGEST_FOCUS_MS = 100
# Where nothing is in their way, under every window manager; notifications get keys under some.
WITHOUT_KEYS = ("dock", "unmanaged", "unmanaged self-raising")
WITH_KEYS = ("ordinary", "self-activating", "self-focusing", "self-raising", "keep-above", "dialog", "full-screen")
KINDS = (*WITH_KEYS, "notification", "notification in a corner", *WITHOUT_KEYS)
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
    """Use as a context, on a desktop that runs."""

    def __init__(self, desktop):
        super().__init__(desktop, os.environ["TAPALONG_SIEGE_WINDOWS"])

    def answers(self, command, kinds, milliseconds):
        for kind in kinds:
            yield kind, Answer(self.ask(f"{command} {milliseconds} {kind}")[0])
