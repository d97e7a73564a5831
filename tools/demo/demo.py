#!/usr/bin/python3
"""Plays a real session of the real program on a virtual display and leaves a picture of each stage.

usage: demo.py PROGRAM FOLDER
"""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "desktop"))

from rig.desktop import Desktop, wait_until  # noqa: E402  pylint: disable=wrong-import-position
from rig.program import Program  # noqa: E402  pylint: disable=wrong-import-position

SIZE = (1366, 768)
CORNER = (SIZE[0] - 1, 0)
MIDDLE = (SIZE[0] // 2, SIZE[1] - 80)
PASSWORD = "giraffe 42"


class Demo:
    def __init__(self, desktop, program, folder):
        self.desktop = desktop
        self.program = program
        self.folder = folder
        self.count = 0

    def picture(self, stage):
        self.count += 1
        name = f"{self.count:02d}-{stage}.png"
        self.desktop.settle()
        self.desktop.screenshot(os.path.join(self.folder, name))
        print(f"  {name}", flush=True)

    def text_is(self, expected):
        self.program.wait_for_text(lambda text: text == expected, expected)

    def open_settings(self):
        self.program.find("Start Session")
        self.picture("settings")
        self.program.click("Exit Password")
        self.desktop.type(PASSWORD)
        wait_until(lambda: self.program.stored_settings().get("exitPassword") == PASSWORD, "the stored password")
        self.picture("password-set")

    def start(self):
        self.program.click("Start Session")
        self.program.find("Lockdown Mode is off")
        self.desktop.move(*MIDDLE)
        self.picture("session-started")

    def type(self):
        self.desktop.type("hello sunny day ")
        self.text_is("hello sunny day ")
        self.picture("sentence")
        self.desktop.key("Shift_L", "Control_L", "Alt_L", "Shift_L")
        self.program.wait_for_text(lambda text: len(text) > len("hello sunny day ") + 3, "four emoji")
        self.picture("emoji-from-modifier-keys")
        before = self.program.typed_text()
        self.desktop.key("F1", "F5", "F9")
        self.program.wait_for_text(lambda text: len(text) > len(before) + 2, "three pictures of the sky")
        self.picture("sky-from-function-keys")
        self.desktop.key("Escape")
        self.program.wait_for_text(lambda text: text.endswith("🚀"), "a rocket")
        self.picture("rocket-from-escape")
        self.desktop.key("BackSpace", "BackSpace", "BackSpace")
        self.program.wait_for_text(lambda text: "🚀" not in text, "the rocket to be gone")
        self.picture("three-deleted")

    def leave(self):
        self.desktop.move(*CORNER)
        self.program.find("Exit Tapalong")
        self.program.wait_for_focus("Enter exit password")
        self.desktop.move(*MIDDLE)
        self.picture("exit-overlay")
        self.desktop.type("banana")
        self.desktop.key("Return")
        self.program.find("Incorrect password")
        self.picture("wrong-password")
        self.desktop.type(PASSWORD)
        self.picture("right-password")
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.program.find("Start Session")
        self.picture("settings-again")


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    program_path, folder = map(os.path.abspath, sys.argv[1:])
    os.makedirs(folder, exist_ok=True)
    for old in os.listdir(folder):
        if old.endswith(".png"):
            os.remove(os.path.join(folder, old))
    with Desktop(size=SIZE) as desktop:
        desktop.call(["xsetroot", "-solid", "#5b6b7f"])
        program = Program(desktop, program_path)
        demo = Demo(desktop, program, folder)
        demo.open_settings()
        demo.start()
        demo.type()
        demo.leave()
        program.quit()
    print(f"Played a whole session; {demo.count} pictures are in {folder}")


if __name__ == "__main__":
    main()
