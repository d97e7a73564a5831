#!/usr/bin/env python3
"""Puts plain copies of Unicode data files, which the package may hold compressed, where the tests read them.

Usage: unpack-test-data.py DIRECTORY OUTPUT-DIRECTORY FILE...
"""

import os
import sys

from unicodefiles import fail, read_text


def main():
    if len(sys.argv) < 4:
        fail("expects the directory of the Unicode data, the directory to write to and the files.")
    directory, output_directory = sys.argv[1:3]
    os.makedirs(output_directory, exist_ok=True)
    for name in sys.argv[3:]:
        content = read_text(directory, name)
        with open(os.path.join(output_directory, os.path.basename(name)), "w", encoding="utf-8") as file:
            file.write(content)


main()
