#!/usr/bin/env python3
"""Writes the header of sorted Unicode tables that src/text/UnicodeProperties.cpp looks things up in.

Usage: generate-tables.py DIRECTORY OUTPUT
DIRECTORY holds the Unicode Character Database as the package unicode-data installs it (/usr/share/unicode).
"""

import os
import sys

from unicodefiles import code_points, fail, read_text, records, version_of

GRAPHEME_BREAK = "auxiliary/GraphemeBreakProperty.txt"
EMOJI = "emoji/emoji-data.txt"
DERIVED = "DerivedCoreProperties.txt"
PROPERTIES = "PropList.txt"
CHARACTERS = "UnicodeData.txt"

GRAPHEME_BREAK_NAMES = {
    "CR": "cr",
    "LF": "lf",
    "Control": "control",
    "Extend": "extend",
    "ZWJ": "zwj",
    "Regional_Indicator": "regionalIndicator",
    "Prepend": "prepend",
    "SpacingMark": "spacingMark",
    "L": "l",
    "V": "v",
    "T": "t",
    "LV": "lv",
    "LVT": "lvt",
}
CONJUNCT_BREAK_NAMES = {"Consonant": "consonant", "Linker": "linker", "Extend": "extend"}


def merged(ranges):
    """Sorted (first, last, value); neighbours of one value become one. Overlapping ranges end the run."""
    result = []
    for first, last, value in sorted(ranges):
        if result and first <= result[-1][1]:
            fail(f"U+{first:04X} has two values of one property.")
        if result and result[-1][2] == value and result[-1][1] + 1 == first:
            result[-1] = (result[-1][0], last, value)
        else:
            result.append((first, last, value))
    return result


def binary_property(name, file, text):
    found = [code_points(fields[0]) for fields in records(text) if fields[1:] == [name]]
    if not found:
        fail(f"{file} lists no code point with the property {name}.")
    return merged((first, last, "") for first, last in found)


def named(value, names, file):
    if value not in names:
        fail(f"{file} holds the value {value}, which the text segmentation here does not know.")
    return names[value]


def grapheme_breaks(text):
    return merged(
        (*code_points(fields[0]), "GraphemeBreak::" + named(fields[1], GRAPHEME_BREAK_NAMES, GRAPHEME_BREAK))
        for fields in records(text)
    )


def conjunct_breaks(text):
    """Empty before Unicode 15.1, whose segmentation has no rule for conjuncts."""
    return merged(
        (*code_points(fields[0]), "ConjunctBreak::" + named(fields[2], CONJUNCT_BREAK_NAMES, DERIVED))
        for fields in records(text)
        if fields[1] == "InCB"
    )


def combining_classes_and_mappings(text):
    """Combining classes as ranges, and the one-step canonical decompositions by code point.

    The areas that UnicodeData.txt gives by their first and last code point only have class 0 and no mapping.
    """
    classes, mappings = [], {}
    for fields in records(text):
        code_point, combining_class, mapping = int(fields[0], 16), fields[3], fields[5]
        if combining_class != "0":
            classes.append((code_point, code_point, combining_class))
        if mapping and not mapping.startswith("<"):
            mappings[code_point] = [int(part, 16) for part in mapping.split()]
    if not classes or not mappings:
        fail(f"{CHARACTERS} holds no combining classes or no canonical decompositions.")
    return merged(classes), mappings


def fully_decomposed(code_point, mappings):
    if code_point not in mappings:
        return [code_point]
    return [scalar for part in mappings[code_point] for scalar in fully_decomposed(part, mappings)]


def array(element_type, name, rows):
    return f"inline constexpr std::array<{element_type}, {len(rows)}> {name}{{{{\n" + "".join(
        f"    {row},\n" for row in rows
    ) + "}};\n"


def range_rows(ranges):
    return ["{0x%04X, 0x%04X%s}" % (first, last, value and ", " + value) for first, last, value in ranges]


def decomposition_tables(mappings):
    rows, scalars = [], []
    for code_point in sorted(mappings):
        decomposition = fully_decomposed(code_point, mappings)
        rows.append("{0x%04X, %d, %d}" % (code_point, len(scalars), len(decomposition)))
        scalars += ["0x%04X" % scalar for scalar in decomposition]
    return array("Decomposition", "decompositions", rows) + "\n" + array(
        "char32_t", "decompositionScalars", scalars
    )


def header(directory):
    breaks = read_text(directory, GRAPHEME_BREAK)
    derived = read_text(directory, DERIVED)
    properties = read_text(directory, PROPERTIES)
    emoji = read_text(directory, EMOJI)
    classes, mappings = combining_classes_and_mappings(read_text(directory, CHARACTERS))
    versions = {version_of(name, text) for name, text in
                ((GRAPHEME_BREAK, breaks), (DERIVED, derived), (PROPERTIES, properties))}
    if len(versions) != 1:
        fail(f"the files under {directory} are of several Unicode versions: {', '.join(sorted(versions))}.")
    tables = [
        array("ValueRange<GraphemeBreak>", "graphemeBreaks", range_rows(grapheme_breaks(breaks))),
        array("ValueRange<ConjunctBreak>", "conjunctBreaks", range_rows(conjunct_breaks(derived))),
        array("Range", "extendedPictographic",
              range_rows(binary_property("Extended_Pictographic", EMOJI, emoji))),
        array("Range", "defaultIgnorable",
              range_rows(binary_property("Default_Ignorable_Code_Point", DERIVED, derived))),
        array("Range", "whiteSpace", range_rows(binary_property("White_Space", PROPERTIES, properties))),
        array("ValueRange<std::uint8_t>", "combiningClasses", range_rows(classes)),
        decomposition_tables(mappings),
    ]
    return (
        "// Written by generate-tables.py from the package unicode-data.\n#pragma once\n\n"
        '#include "text/UnicodeTableTypes.h"\n\n#include <array>\n#include <string_view>\n\n'
        "namespace tapalong::unicode_tables {\n\n"
        f'inline constexpr std::string_view unicodeVersion = "{versions.pop()}";\n\n'
        + "\n".join(tables)
        + "\n} // namespace tapalong::unicode_tables\n"
    )


def main():
    if len(sys.argv) != 3:
        fail("expects the directory of the Unicode data and the header to write.")
    content = header(sys.argv[1])
    os.makedirs(os.path.dirname(os.path.abspath(sys.argv[2])), exist_ok=True)
    with open(sys.argv[2], "w", encoding="utf-8") as file:
        file.write(content)


main()
