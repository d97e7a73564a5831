"""A whole session on a desktop without any window manager."""
import unittest

from case import PASSWORD, DesktopCase


class BareDesktop(DesktopCase):
    window_manager = None

    def test_in_and_out_with_and_without_lockdown(self):
        for lockdown in (True, False):
            with self.subTest(lockdown=lockdown):
                self.start_session(kioskMode=lockdown)
                self.desktop.type("abc")
                self.wait_text("abc")
                self.open_overlay()
                self.desktop.type(PASSWORD)
                self.desktop.key("Return")
                self.program.wait_gone("Exit Tapalong")
                self.assert_back_in_settings()
                self.program.quit()


if __name__ == "__main__":
    unittest.main(verbosity=2)
