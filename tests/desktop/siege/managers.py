"""The window managers that a siege is held under."""
import os

LONG = "TAPALONG_LONG" in os.environ

# By what a test's name says: the window manager's command, and one beside it that composes. CMakeLists.txt says when
# each is run.
MANAGERS = {
    "Openbox": (("openbox",), None),
    "OpenboxWithXcompmgr": (("openbox",), ("xcompmgr",)),
    "Xfwm4": (("xfwm4", "--compositor=off"), None),
    "Xfwm4Compositing": (("xfwm4", "--compositor=on"), None),
    "Mutter": (("mutter", "--x11"), None),
    "Kwin": (("kwin_x11",), None),
}


class Composed:
    """Of a DesktopCase under one of them."""

    compositor = None

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        if cls.compositor:
            cls.desktop.run_beside(list(cls.compositor))
            cls.desktop.settle(1)

    def name(self):
        return " ".join((*self.window_manager, *(("with", *self.compositor) if self.compositor else ())))


def under_each(*bases):
    """A test case of these bases under each window manager, by its name."""
    return {f"Under{name}": type(f"Under{name}", bases, {"window_manager": manager, "compositor": compositor})
            for name, (manager, compositor) in MANAGERS.items()}
