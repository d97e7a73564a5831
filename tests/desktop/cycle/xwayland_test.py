"""On an X server that a Wayland desktop runs, where grabs are granted and the compositor keeps its shortcuts."""
import unittest

from case import DesktopCase
from refused_test import IN_FORCE, REFUSED, WARNING
from rig.display import OnWayland

NOTICE = ("Lockdown Mode is not available on Wayland yet. Sessions work without it, and so do the desktop's own "
          "shortcuts.")


class OnXwayland(DesktopCase):
    display = OnWayland

    def test_lockdown_is_not_claimed_and_sessions_work_without(self):
        self.launch(kioskMode=True)
        self.program.find(NOTICE)
        self.program.click("Start Session")
        self.program.find(WARNING)
        self.assertIn(REFUSED, self.program.lines)
        self.assertNotIn(IN_FORCE, self.program.lines)
        self.desktop.type("abc")
        self.wait_text("abc")
        self.leave()
        self.assertNotIn(IN_FORCE, self.program.lines)


if __name__ == "__main__":
    unittest.main(verbosity=2)
