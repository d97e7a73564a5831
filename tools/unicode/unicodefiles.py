"""Reads the files of the Unicode Character Database as the package unicode-data installs them."""

import bz2
import gzip
import os
import re
import sys


def fail(sentence):
    sys.exit(f"{os.path.basename(sys.argv[0])}: {sentence}")


def read_text(directory, name):
    """The whole file; which files are compressed differs between releases of the package."""
    path = os.path.join(directory, name)
    for suffix, opener in (("", open), (".gz", gzip.open), (".bz2", bz2.open)):
        if os.path.exists(path + suffix):
            with opener(path + suffix, "rt", encoding="utf-8") as file:
                return file.read()
    fail(f"{path} is missing (also as .gz and .bz2); install the package unicode-data.")


def version_of(name, text):
    """The version that the file's first line names, as in '15.0.0'."""
    match = re.match(r"# \w+-(\d+\.\d+\.\d+)\.txt", text)
    if not match:
        fail(f"the first line of {name} names no Unicode version.")
    return match.group(1)


def records(text):
    """The fields of each line that holds data."""
    for line in text.splitlines():
        content = line.partition("#")[0].strip()
        if content and not content.startswith("@"):
            yield [field.strip() for field in content.split(";")]


def code_points(field):
    """First and last of 'XXXX' or 'XXXX..YYYY'."""
    first, _, last = field.partition("..")
    return int(first, 16), int(last or first, 16)
