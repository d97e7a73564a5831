#!/usr/bin/env python3
"""The check of the includes must be able to fail: small trees, each with one thing wrong, and one with nothing wrong."""

import pathlib
import tempfile
import unittest

import check_includes


def problems_of(files):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in files.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return check_includes.check(root)[1]


class CheckIncludes(unittest.TestCase):
    def assert_forbidden(self, files, *words):
        problems = problems_of(files)
        self.assertEqual(len(problems), 1, problems)
        for word in words:
            self.assertIn(word, problems[0])

    def test_granted_edges_pass(self):
        self.assertEqual(problems_of({
            "base/Fatal.h": "#include <source_location>\n",
            "platform/Timers.h": '#include "base/Fatal.h"\n',
            "settings/Store.h": '#include "platform/Timers.h"\n',
            "lockdown/KeyEvent.h": "#include <string>\n",
            "lockdown/Manager.cpp": '#include "lockdown/KeyEvent.h"\n#include "settings/Store.h"\n',
            "platform/desktop/QtTimers.cpp": '#include "platform/Timers.h"\n#include <QTimer>\n',
            "platform/linux/x11/Tap.cpp": "#include <xcb/xcb.h>\n#include <sys/socket.h>\n",
            "session/Manager.test.cpp": '#include "settings/Store.h"\n#include <gtest/gtest.h>\n',
        }), [])

    def test_lower_layer_may_not_include_a_higher_one(self):
        self.assert_forbidden({"base/A.h": '#include "text/B.h"\n', "text/B.h": ""}, "base/A.h", "text/B.h")

    def test_settings_may_not_include_the_sound_but_their_window_may(self):
        files = {"sound/Pack.h": "", "views/SettingsView.h": '#include "sound/Pack.h"\n'}
        self.assertEqual(problems_of(files), [])
        self.assert_forbidden(files | {"settings/Store.h": '#include "sound/Pack.h"\n'}, "settings/Store.h")

    def test_one_header_opens_no_other_door_into_its_folder(self):
        files = {"lockdown/Notifications.h": "", "auth/Service.cpp": '#include "lockdown/Notifications.h"\n'}
        self.assertEqual(problems_of(files), [])
        self.assert_forbidden(
            {"lockdown/Kiosk.h": "", "auth/Service.cpp": '#include "lockdown/Kiosk.h"\n'}, "lockdown/Kiosk.h")

    def test_core_may_not_include_qt(self):
        self.assert_forbidden({"session/A.cpp": "#include <QString>\n"}, "<QString>")

    def test_core_may_not_include_the_operating_system(self):
        self.assert_forbidden({"app/A.cpp": "#include <unistd.h>\n"}, "<unistd.h>")

    def test_platform_may_not_include_the_core(self):
        self.assert_forbidden(
            {"lockdown/KeyEvent.h": "", "platform/linux/x11/Tap.cpp": '#include "lockdown/KeyEvent.h"\n'}, "Tap.cpp")

    def test_desktop_may_not_include_xcb(self):
        self.assert_forbidden({"platform/desktop/A.cpp": "#  include <xcb/xcb.h>\n"}, "<xcb/xcb.h>")

    def test_only_tests_may_include_the_test_library(self):
        self.assert_forbidden({"session/A.cpp": "#include <gtest/gtest.h>\n"}, "gtest")

    def test_include_of_an_unknown_file(self):
        self.assert_forbidden({"base/A.cpp": '#include "A.h"\n', "base/A.h": ""}, "no file of src/")

    def test_a_folder_without_a_rule(self):
        self.assert_forbidden({"attic/A.h": "#include <string>\n"}, "no rule")

    def test_cycle_of_files(self):
        self.assert_forbidden(
            {"base/A.h": '#include "base/B.h"\n', "base/B.h": '#include "base/C.h"\n', "base/C.h": '#include "base/A.h"\n'},
            "cycle: base/A.h -> base/B.h -> base/C.h -> base/A.h")

    def test_empty_tree_is_no_success(self):
        self.assert_forbidden({}, "no source files")


if __name__ == "__main__":
    unittest.main()
