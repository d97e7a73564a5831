"""What a child can do to a keyboard and a mouse, as tokens of the sweep's hands."""
import itertools
import random
import re

MODIFIERS = ("Control_L", "Alt_L", "Shift_L", "Super_L")
BUTTONS = range(1, 11)
FIRST_KEYCODE, LAST_KEYCODE = 8, 255
# What desktops listen to most, so that no sample is without it.
HARD_CHORDS = (
    "Super_L", "Super_R", "Print", "XF86AudioMute", "XF86AudioRaiseVolume", "XF86PowerOff", "XF86Sleep", "F9", "Menu",
    "Alt_L+Tab", "Alt_L+Shift_L+Tab", "Alt_L+F1", "Alt_L+F2", "Alt_L+F3", "Alt_L+F4", "Alt_L+F7", "Alt_L+F8",
    "Alt_L+F10", "Alt_L+space", "Alt_L+Escape", "Alt_L+grave", "Alt_L+Print", "Control_L+Escape", "Control_L+F1",
    "Control_L+Alt_L+Delete", "Control_L+Alt_L+BackSpace", "Control_L+Alt_L+Left", "Control_L+Alt_L+Right",
    "Control_L+Alt_L+Up", "Control_L+Alt_L+Down", "Control_L+Alt_L+d", "Control_L+Alt_L+t", "Control_L+Alt_L+l",
    "Control_L+Alt_L+Escape", "Control_L+Alt_L+F1", "Control_L+Alt_L+F2", "Control_L+Alt_L+F7",
    "Control_L+Alt_L+KP_Multiply", "Control_L+Alt_L+KP_Divide", "Super_L+d", "Super_L+e", "Super_L+l", "Super_L+r",
    "Super_L+Tab", "Super_L+Left", "Super_L+Up", "Super_L+F1", "Super_L+space", "Shift_L+Alt_L+Left",
    "Control_L+Shift_L+Escape", "Control_L+Alt_L+Shift_L+Super_L+a")


class Keyboard:
    """The keys of a display by what is printed on them."""

    def __init__(self, listing):
        """`listing` is what `xmodmap -pke` prints."""
        self.names = {}
        for keycode, keysyms in re.findall(r"^keycode +(\d+) =(.*)$", listing, re.MULTILINE):
            printed = [name for name in keysyms.split() if name != "NoSymbol"]
            self.names[int(keycode)] = printed[0] if printed else f"key {keycode}"
        self.codes = {}
        for keycode, name in self.names.items():
            self.codes.setdefault(name, keycode)

    def name(self, keycode):
        return self.names.get(keycode, f"key {keycode}")

    def chord(self, modifiers, keycode, pause_ms=0):
        """(name, tokens) of a key pressed and let go while modifiers are down."""
        held = [self.codes[name] for name in modifiers]
        tokens = [f"+{code}" for code in held] + [f"+{keycode}", f"-{keycode}"]
        tokens += [f"-{code}" for code in reversed(held)]
        name = "+".join((*modifiers, self.name(keycode)))
        return name, spaced(tokens, pause_ms)

    def named(self, name):
        *modifiers, key = name.split("+")
        return self.chord(modifiers, self.codes[key])

    def every_chord(self):
        """Every key alone and with every combination of modifiers."""
        for modifiers in combinations():
            held = {self.codes[name] for name in modifiers}
            for keycode in range(FIRST_KEYCODE, LAST_KEYCODE + 1):
                if keycode not in held:
                    yield self.chord(modifiers, keycode)

    def every_click(self, size, combined_with):
        """Every button, the wheel among them, with each of these combinations of modifiers; and drags."""
        width, height = size
        for modifiers in combined_with:
            down = [f"+{self.codes[name]}" for name in modifiers]
            up = [f"-{self.codes[name]}" for name in reversed(modifiers)]
            start, end = f"m{width // 2},{height // 2}", f"m{width // 2 + 90},{height // 2 + 60}"
            prefix = "+".join((*modifiers, ""))
            for button in BUTTONS:
                yield f"{prefix}button {button}", [start, *down, f"b+{button}", f"b-{button}", *up]
            for button in (1, 2, 3):
                yield (f"{prefix}drag with button {button}",
                       [start, *down, f"b+{button}", "~2", end, "~2", start, f"b-{button}", *up])

    def hard_chords(self):
        """Those of them whose keys the keyboard has."""
        return [self.named(name) for name in HARD_CHORDS if name.split("+")[-1] in self.codes]

    def shifts(self, count):
        """A Shift tapped that often, as for sticky keys."""
        return count * self.named("Shift_L")[1]

    def shift_held(self, seconds):
        """As for slow keys."""
        code = self.codes["Shift_L"]
        return [f"+{code}", f"~{seconds * 1000}", f"-{code}"]

    def sample(self, size, count):
        """The same `count` of all chords and clicks each time, the hard ones among them."""
        hard = self.hard_chords()
        known = {name for name, _ in hard}
        rest = [chord for chord in itertools.chain(self.every_chord(), self.every_click(size, combinations()))
                if chord[0] not in known]
        return hard + random.Random(count).sample(rest, count - len(hard))

    def sample_of_keys(self, count):
        """The same without the mouse."""
        return [chord for chord in self.sample((0, 0), 2 * count) if "button" not in chord[0]][:count]

    def mashing(self, presses, held=10, seed=1):
        """Keys as two flat hands hit them: up to `held` down at a time, with no pause at all."""
        hands = random.Random(seed)
        keys = [code for code in self.names if FIRST_KEYCODE <= code <= LAST_KEYCODE]
        down, tokens = [], []
        for _ in range(presses):
            key = hands.choice(keys)
            if key in down:
                continue
            down.append(key)
            tokens.append(f"+{key}")
            while len(down) >= held:
                tokens.append(f"-{down.pop(hands.randrange(len(down)))}")
        return tokens + [f"-{key}" for key in down]

    def typing_while_held(self, modifier, seconds, seed=1):
        """Keys pressed at random, a dozen a second, while the modifier is down all the time."""
        hands = random.Random(seed)
        keys = [code for code in self.names if code != self.codes[modifier]]
        tokens = [f"+{self.codes[modifier]}"]
        for _ in range(seconds * 12):
            key = hands.choice(keys)
            tokens += [f"+{key}", "~40", f"-{key}", "~40"]
        return tokens + [f"-{self.codes[modifier]}"]


def combinations():
    return itertools.chain.from_iterable(itertools.combinations(MODIFIERS, n) for n in range(len(MODIFIERS) + 1))


def spaced(tokens, pause_ms):
    if not pause_ms:
        return tokens
    return [word for token in tokens for word in (token, f"~{pause_ms}")]
