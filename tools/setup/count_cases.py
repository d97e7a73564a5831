#!/usr/bin/env python3
"""Counts the cases of a CTest report: prints "cases passed failed skipped", zeros when there is no report."""

import sys
import xml.etree.ElementTree as tree


def state(case):
    status = case.get("status")
    if status == "run":
        return "passed"
    reason = case.find("skipped")
    # A case that asked to be skipped says so; one that CTest could not even start has failed.
    asked = reason is not None and reason.get("message", "").startswith("SKIP_")
    return "skipped" if status == "disabled" or asked else "failed"


def count(path):
    try:
        states = [state(case) for case in tree.parse(path).getroot().findall("testcase")]
    except (OSError, tree.ParseError):
        states = []
    return len(states), states.count("passed"), states.count("failed"), states.count("skipped")


print(*count(sys.argv[1]))
