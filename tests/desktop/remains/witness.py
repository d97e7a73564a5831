"""Another program on the desktop that a test leads: it types, gets keys and tells the server's state."""
import os
import subprocess

# The kernel's codes of keys.
CONTROL, ALT, SUPER, ENTER, CAPS_LOCK, SHIFT, T = 29, 56, 125, 28, 58, 42, 20
NUM_LOCK, RIGHT_CONTROL = 69, 97
A, S, D, F = 30, 31, 32, 33


class Witness:
    def __init__(self, desktop):
        self.desktop = desktop
        self.process = desktop.run_beside([os.environ["TAPALONG_WITNESS"]], stdin=subprocess.PIPE,
                                          stdout=subprocess.PIPE)

    def ask(self, *words):
        """The lines of the answer."""
        self.process.stdin.write((" ".join(map(str, words)) + "\n").encode())
        self.process.stdin.flush()
        lines = []
        for line in self.process.stdout:
            text = line.decode(errors="replace").rstrip("\n")
            if text == ".":
                return lines
            lines.append(text)
        raise AssertionError("the witness ended")

    def says(self, *words):
        return self.ask(*words) == ["yes"]

    def type(self, *keys):
        for key in keys:
            self.ask("chord", key)

    def server_state(self):
        """Everything that the program could change on the server and its desktop, as lines by name."""
        state = dict(line.split(":", 1) for line in self.ask("state"))
        display = self.desktop.environment["DISPLAY"]
        state["keymap"] = self.desktop.output(["xkbcomp", display, "-"])
        state["xset"] = self.desktop.output(["xset", "q"])
        return state
