"""How the program was started does not matter to a session. What it prints is a courtesy: it goes on when nobody reads it
and when there is nothing to print to."""
import os
import signal
import unittest

from case import PASSWORD, PROGRAM, DesktopCase, Program, wait_until


class Output(DesktopCase):
    def test_a_session_goes_on_when_nobody_reads_what_is_printed(self):
        read_end, write_end = os.pipe()
        os.close(read_end)
        with os.fdopen(write_end, "wb", 0) as broken:
            self.go_through_a_session(PROGRAM, stdout=broken)
        self.assertFalse(self.ignores(signal.SIGPIPE), "programs that ours starts would inherit it")
        self.assertEqual(self.program.quit(), 0)

    def test_nothing_takes_the_place_of_standard_streams_that_are_missing(self):
        without_any = ("-c", 'exec "$0" <&- >&- 2>&-', PROGRAM)
        self.go_through_a_session("/bin/sh", arguments=without_any)
        for descriptor in range(3):
            self.assertEqual(os.readlink(f"/proc/{self.program.process.pid}/fd/{descriptor}"), "/dev/null")
        self.assertEqual(self.program.quit(), 0)

    def test_the_ends_of_guards_are_heard_where_the_starter_ignored_those_of_its_children(self):
        self.go_through_a_session("/usr/bin/env", arguments=("--ignore-signal=CHLD", PROGRAM))
        self.assertFalse(self.ignores(signal.SIGCHLD))

    def ignores(self, number):
        return int(self.status_of_program()["SigIgn"], 16) & (1 << (number - 1)) != 0

    def go_through_a_session(self, executable, **options):
        settings = {"exitPassword": PASSWORD, "useTouchID": False, "kioskMode": True}
        self.program = Program(self.desktop, executable, settings=settings, **options)
        self.launched().click("Start Session")
        wait_until(lambda: self.program.typed_text() == "", "an empty session")
        self.desktop.type("abc")
        self.wait_text("abc")
        self.leave()

    def status_of_program(self):
        with open(f"/proc/{self.program.process.pid}/status", encoding="utf-8") as status:
            return dict(line.rstrip("\n").split(":\t", 1) for line in status if ":\t" in line)


if __name__ == "__main__":
    unittest.main(verbosity=2)
