"""The keys by which an X server is ended, on a real one: Xorg, without a card."""
import subprocess
import unittest

from case import DesktopCase, wait_until

from rig.display import Outputs

ZAP = ["xdotool", "key", "ctrl+alt+BackSpace"]


class Zap(DesktopCase):
    display = Outputs
    size = (1280, 1024)
    window_manager = None

    def zap(self):
        subprocess.run(ZAP, env=self.desktop.environment, check=False, stderr=subprocess.DEVNULL)

    def test_ends_the_server_after_a_session_and_not_in_one(self):
        self.desktop.call(["setxkbmap", "-option", "terminate:ctrl_alt_bksp"])
        server = self.desktop.processes[0]
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False)
        self.zap()
        self.desktop.type("abc")
        self.wait_text("abc")
        self.leave()
        self.assertIsNone(server.poll())
        # Put back, the keys do what they did; so the first half of this test could have failed.
        self.zap()
        wait_until(lambda: server.poll() is not None, "the end of the server")
        wait_until(lambda: not self.program.is_running(), "the end of the program")


if __name__ == "__main__":
    unittest.main(verbosity=2)
