"""What the tests of changing screens share. Whatever is not the session's on these desktops is of one glaring colour."""
import re
import subprocess

from case import PASSWORD, DesktopCase, wait_until
from rig.display import Outputs, Turning

BACKGROUND = (0x1A, 0x1A, 0x2E)
TEXT = (0x00, 0xFF, 0x00)
OTHERS = (0xFF, 0x00, 0xFF)
LOOK = {"useSystemAppearance": False, "customBGColorHex": "#1A1A2E", "customFGColorHex": "#00FF00",
        "rainbowMode": False, "showCursor": False, "modifierKeysTypeEmoji": False, "hotCornerDwellTime": 0.5}


class Picture:
    """A part of the display: x, y, width, height in pixels."""

    def __init__(self, desktop, area):
        self.x, self.y, self.width, self.height = area
        shot = subprocess.run(["import", "-silent", "-window", "root", "-crop",
                               f"{self.width}x{self.height}+{self.x}+{self.y}", "-depth", "8", "rgb:-"],
                              env=desktop.environment, check=True, stdout=subprocess.PIPE)
        self.bytes = shot.stdout
        assert len(self.bytes) == self.width * self.height * 3, f"no picture of {area}"

    def __eq__(self, other):
        return (self.width, self.height, self.bytes) == (other.width, other.height, other.bytes)

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.bytes[at:at + 3])

    def row(self, y):
        return [self.pixel(x, y) for x in range(self.width)]

    def column(self, x):
        return [self.pixel(x, y) for y in range(self.height)]

    def pixels(self):
        return zip(self.bytes[0::3], self.bytes[1::3], self.bytes[2::3])

    def count(self, colour):
        return sum(each == colour for each in self.pixels())

    def bounds(self, colour):
        """First and last column, first and last row of that colour."""
        places = [divmod(at, self.width) for at, each in enumerate(self.pixels()) if each == colour]
        assert places, f"nothing is {colour}"
        rows, columns = zip(*places)
        return min(columns), max(columns), min(rows), max(rows)


class ScreenCase(DesktopCase):
    size = (1280, 1024)

    def setUp(self):
        super().setUp()
        self.desktop.call(["xsetroot", "-solid", "#ff00ff"])

    def xrandr(self, *words):
        subprocess.run(["xrandr", *words], env=self.desktop.environment, check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

    def monitors(self):
        """Their areas by name."""
        return {name: (int(x), int(y), int(width), int(height)) for width, height, x, y, name in re.findall(
            r"(\d+)/\d+x(\d+)/\d+\+(\d+)\+(\d+)\s+(\S+)$", self.desktop.output(["xrandr", "--listmonitors"]), re.M)}

    def start_session(self, **settings):
        # Not by a click: whatever the scale, and wherever the window lies.
        program = self.launch(**LOOK | settings)
        program.act("Start Session")
        wait_until(lambda: program.typed_text() == "", "an empty session")
        return program

    def session_window(self):
        """Its area, as the server has it. No window manager knows of it."""
        for window in self.desktop.output(["xdotool", "search", "--class", "tapalong"]).split():
            facts = self.desktop.output(["xwininfo", "-id", window])
            if "Override Redirect State: yes" in facts and "IsViewable" in facts:
                return tuple(int(re.search(fact + r":\s+(-?\d+)", facts)[1]) for fact in (
                    "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        return None

    def picture(self, area):
        """As soon as nothing moves any more."""
        latest = [Picture(self.desktop, area)]

        def rests():
            latest.append(Picture(self.desktop, area))
            return latest[-1] == latest[-2]
        wait_until(rests, "the screen to come to rest", interval=0.1)
        return latest[-1]

    def assert_covered(self, area):
        """The session hides all of that screen and nothing beyond it; its corner glows. Returns the picture."""
        wait_until(lambda: self.session_window() and self.session_window()[:2] == area[:2] and
                   all(0 <= ours - needed < 8 for ours, needed in zip(self.session_window()[2:], area[2:])),
                   f"the session over {area}; it is at {self.session_window()}")
        self.desktop.move(area[0] + area[2] // 2, area[1] + area[3] - 5)
        picture = self.picture(area)
        for what, line in {"top row": picture.row(0), "bottom row": picture.row(picture.height - 1),
                           "left column": picture.column(0), "right column": picture.column(picture.width - 1)}.items():
            self.assertEqual([colour for colour in line if not self.is_sessions(colour)], [], what)
        self.assertEqual(picture.count(OTHERS), 0)
        self.assertGreater(picture.pixel(picture.width - 1, 0)[0], BACKGROUND[0] + 10, "no glow in the corner")
        self.assertEqual(picture.pixel(0, picture.height - 1), BACKGROUND)
        return picture

    @staticmethod
    def is_sessions(colour):
        """Its background with something of the text, or of the corner's light, on it."""
        share = max(0, colour[1] - BACKGROUND[1] - 20) / (255 - BACKGROUND[1])
        under = [a + (b - a) * share for a, b in zip(BACKGROUND, TEXT)]
        return all(-12 <= a - b <= 22 for a, b in zip(colour, under))

    def leave_through(self, area):
        """By the corner of that screen: its very last pixel, where a pointer stops that is thrown there."""
        x, y, width, height = area
        self.desktop.move(x + width - 1, y)
        self.program.find("Exit Tapalong")
        self.desktop.move(x + width // 2, y + height - 5)
        self.program.wait_for_focus("Enter exit password")
        red = self.picture(area).bounds((0xD2, 0x2F, 0x27))  # the panel's lower button
        self.assertLess(abs(red[0] + red[1] - width), 8, "the panel is not in the middle")
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()


__all__ = ["BACKGROUND", "OTHERS", "TEXT", "Outputs", "ScreenCase", "Turning", "wait_until"]
