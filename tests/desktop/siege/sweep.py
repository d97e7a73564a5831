"""Presses chords and keeps what came of each outside the window that has the keyboard."""
import os

from chords import Keyboard
from client import Client
from rig.figures import figure


class Sweep(Client):
    """Use as a context, on a desktop that runs. `daemons` start with it: "core", "slaves"."""

    def __init__(self, desktop, daemons=()):
        super().__init__(desktop, os.environ["TAPALONG_SIEGE_SWEEP"])
        self.keyboard = Keyboard(desktop.output(["xmodmap", "-pke"]))
        self.daemons = daemons
        self.chords = 0
        self.escapes = {}

    def __enter__(self):
        super().__enter__()
        for level in self.daemons:
            self.ask(f"daemon {level}")
        return self

    def guard(self):
        """From now on whatever happens outside the window that has the focus is an escape."""
        self.ask("guard")

    def listen(self):
        """A client that listens to each device is there too, from now on."""
        self.ask("listen")

    def hot_keys(self, position):
        """Switches the server's accessibility hot keys "on" or "off"; what they have switched on goes with them."""
        self.ask(f"hotkeys {position}")

    def open_plain_window(self):
        """Guards a full-screen window that grabs nothing."""
        self.ask("plain")

    def play(self, name, tokens, watch_ms=4):
        self.chords += 1
        sightings = self.ask(f"play {watch_ms} {' '.join(tokens)}")
        if sightings:
            self.escapes[name] = sightings
        return sightings

    def play_and_restore(self, name, tokens):
        """For the plain window, which a chord may close or send away."""
        if self.play(name, tokens, watch_ms=12):
            self.ask("restore")

    def report(self, title, say=figure):
        """The figures of this sweep, and each escape by its chord and by who got it."""
        figure(f"{title}: {self.chords} chords, {len(self.escapes)} escapes")
        for name, sightings in self.escapes.items():
            more = f"; {len(sightings) - 3} more" if len(sightings) > 3 else ""
            say(f"    {name}: {'; '.join(sightings[:3])}{more}")
