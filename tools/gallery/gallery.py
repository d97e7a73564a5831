#!/usr/bin/python3
"""Takes pictures of the real program in every look that it has, to be looked at: sizes, scales, colours, corners.

usage: gallery.py PROGRAM FOLDER [NAME...]        all of them, or those whose name contains one of the words
"""
import os
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "desktop"))

from rig.desktop import Desktop, wait_until  # noqa: E402  pylint: disable=wrong-import-position
from rig.program import Program  # noqa: E402  pylint: disable=wrong-import-position

LAPTOP = (1366, 768)
FULL_HD = (1920, 1080)
LARGE = (3840, 2160)
CORNERS = ("topLeft", "topRight", "bottomLeft", "bottomRight")
PASSWORD = "giraffe"
WORDS = ("hello sunny day", "the quick brown fox jumps", "MUMMY", "AND DADDY", "0123456789", "a b c d e f g")
NIGHT = {"useSystemAppearance": False, "customBGColorHex": "#101830", "customFGColorHex": "#FFD94A"}
PAPER = {"useSystemAppearance": False, "customBGColorHex": "#FFF6E5", "customFGColorHex": "#7A3E9D"}


class Shot:
    """One picture: the desktop, the settings, and what is done to a session before it is taken (`act`)."""

    def __init__(self, name, act, desktop="light", size=LAPTOP, scale=1, **settings):
        self.name, self.act, self.desktop, self.size, self.scale = name, act, desktop, size, scale
        self.settings = settings


def nothing(_stage):
    pass


def sentence(stage):
    stage.desktop.type("hello sunny day ")
    stage.desktop.key("F1", "F5", "Escape", "F9")
    stage.desktop.type(" abc")
    stage.settle_text(24)


def screenful(stage):
    stage.fill(WORDS, 1600)


def emoji_only(stage):
    count = stage.letters(0.55)
    for _ in range(count):
        stage.desktop.key("Shift_L")
    stage.settle_text(count)


def overlay(stage):
    sentence(stage)
    stage.open_overlay()


def wrong_password(stage):
    overlay(stage)
    stage.desktop.type("banana")
    stage.desktop.key("Return")
    stage.program.find("Incorrect password")


def password_typed(stage):
    overlay(stage)
    stage.desktop.type(PASSWORD)


def settings_window(_stage):
    pass


def shots():
    yield Shot("settings-light", settings_window, "light")
    yield Shot("settings-dark", settings_window, "dark")
    yield Shot("settings-no-password", settings_window, "light", exitPassword="")
    for name in ("light", "dark"):
        yield Shot(f"notice-{name}", nothing, name)
        yield Shot(f"sentence-{name}", sentence, name)
        yield Shot(f"screenful-{name}", screenful, name, FULL_HD)
        yield Shot(f"plain-{name}", sentence, name, rainbowMode=False)
        yield Shot(f"overlay-{name}", overlay, name)
    yield Shot("custom-night", sentence, rainbowMode=False, **NIGHT)
    yield Shot("custom-paper", sentence, rainbowMode=False, **PAPER)
    for corner in CORNERS:
        yield Shot(f"corner-{corner}", sentence, "dark", exitCorner=corner)
    yield Shot("overlay-wrong", wrong_password, "dark")
    yield Shot("overlay-password", password_typed, "dark")
    yield Shot("overlay-fingerprint", overlay, "dark", useTouchID=True)
    yield Shot("emoji-only", emoji_only, "dark")
    yield Shot("points-24", screenful, "light", fontSize=24)
    yield Shot("points-200", sentence, "dark", fontSize=200)
    yield Shot("large-screen", screenful, "light", LARGE)
    yield Shot("large-screen-overlay", overlay, "dark", LARGE)
    for scale in (1.25, 1.5, 2):
        yield Shot(f"scale-{scale}", sentence, "light", FULL_HD, scale)
        yield Shot(f"scale-{scale}-settings", settings_window, "light", FULL_HD, scale)
        yield Shot(f"scale-{scale}-no-password", settings_window, "light", FULL_HD, scale, exitPassword="")
        yield Shot(f"scale-{scale}-overlay", overlay, "dark", FULL_HD, scale)
    yield Shot("scale-2-points-200", emoji_only, "dark", LARGE, 2, fontSize=200)
    yield Shot("scale-2-notice", nothing, "light", LARGE, 2)


class Stage:
    """The desktop and the program of one picture."""

    def __init__(self, desktop, program_path, shot):
        self.desktop, self.shot = desktop, shot
        environment = {"QT_SCALE_FACTOR": str(shot.scale)} if shot.scale != 1 else {}
        settings = {"exitPassword": PASSWORD, "useTouchID": False, "kioskMode": False} | shot.settings
        self.program = Program(desktop, program_path, settings=settings, environment=environment)
        self.program.find("Start Session")

    def start(self):
        self.program.act("Start Session")
        wait_until(lambda: self.program.typed_text() == "", "an empty session")
        self.desktop.move(self.shot.size[0] // 2, self.shot.size[1] - 40)

    def letters(self, share):
        """So many emoji that they fill that share of the screen."""
        width, height = self.shot.size
        size = self.shot.settings.get("fontSize", 72) * self.shot.scale
        return int(share * width * height / (size * 1.25 * size * 1.55))

    def fill(self, words, most):
        width, height = self.shot.size
        size = self.shot.settings.get("fontSize", 72) * self.shot.scale
        count = min(most, int(1.1 * width * height / (size * 0.6 * size * 1.55)))
        text = (" ".join(words) + " ") * (count // sum(map(len, words)) + 1)
        self.desktop.type(text, 4)
        self.settle_text(len(text))

    def settle_text(self, count):
        self.program.wait_for_text(lambda text: len(text) >= count, f"{count} characters")

    def open_overlay(self):
        width, height = self.shot.size
        corner = self.shot.settings.get("exitCorner", "topRight")
        self.desktop.move(0 if "Left" in corner else width - 1, 0 if "top" in corner else height - 1)
        self.program.find("Exit Tapalong")
        self.desktop.move(width // 2, height - 40)


def take(shot, program_path, folder):
    with Desktop(size=shot.size) as desktop:
        portal = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tests/desktop/rig/portal.py")
        process = desktop.run_beside(["/usr/bin/python3", portal, shot.desktop], stdout=subprocess.PIPE)
        process.stdout.readline()
        desktop.call(["xsetroot", "-solid", "#5b6b7f"])
        stage = Stage(desktop, program_path, shot)
        if shot.act is not settings_window:
            stage.start()
            shot.act(stage)
        desktop.settle(0.8)
        desktop.screenshot(os.path.join(folder, shot.name + ".png"))
        stage.program.quit()


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    program_path, folder = map(os.path.abspath, sys.argv[1:3])
    os.makedirs(folder, exist_ok=True)
    words = sys.argv[3:] or [""]
    for shot in (shot for shot in shots() if any(word in shot.name for word in words)):
        # A process of its own each: the accessibility library looks at one desktop only.
        process = os.fork()
        if process == 0:
            take(shot, program_path, folder)
            print(f"  {shot.name}.png", flush=True)
            os._exit(0)
        if os.waitpid(process, 0)[1] != 0:
            sys.exit(f"{shot.name} could not be taken")


if __name__ == "__main__":
    main()
