#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes unicode_tables.cpp: letter, decimal digit and simple case folding of every code point.

Usage: python3 make_unicode_tables.py > unicode_tables.cpp

The data are those of Python's unicodedata module. A code point's record is found in two steps: kBlockOf gives the
block of 128 code points, kRecordOf the record within the block; equal blocks are stored once.
"""
import sys
import unicodedata

BLOCK = 128


def kind(c):
    category = unicodedata.category(c)
    return 1 if category[0] == 'L' else 2 if category == 'Nd' else 0


def fold(c):
    """Simple case folding: the full folding where it is one code point to one, else the lower case, else nothing.

    A combining mark may fold to a letter (U+0345). Such a pair is left alone, so that a code point and its folded form
    are always of the same kind.
    """
    for candidate in (c.casefold(), c.lower()):
        if len(candidate) == 1 and kind(candidate) == kind(c):
            return candidate
    return c


def record(point):
    c = chr(point)
    folded = fold(c)
    assert fold(folded) == folded, hex(point)
    return kind(c), ord(folded) - point


def rows(numbers, width):
    for start in range(0, len(numbers), width):
        yield '    ' + ', '.join(str(n) for n in numbers[start:start + width]) + ','


def main():
    records, record_index = [], {}
    blocks, block_index = [], {}
    block_of = []
    for start in range(0, 0x110000, BLOCK):
        block = []
        for point in range(start, start + BLOCK):
            r = record(point)
            if r not in record_index:
                record_index[r] = len(records)
                records.append(r)
            block.append(record_index[r])
        key = tuple(block)
        if key not in block_index:
            block_index[key] = len(blocks)
            blocks.append(key)
        block_of.append(block_index[key])
    assert len(records) <= 256 and len(blocks) <= 65536

    out = sys.stdout.write
    # REUSE-IgnoreStart
    out('// SPDX-License-Identifier: GPL-3.0-or-later\n')
    # REUSE-IgnoreEnd
    out('// Made by make_unicode_tables.py from Unicode %s; do not edit.\n' % unicodedata.unidata_version)
    out('// clang-format off\n')
    out('#include "support/unicode.h"\n\n')
    out('namespace kivandra::unicode_tables {\n\n')
    out('const CharRecord kRecords[%d] = {\n' % len(records))
    for r in records:
        out('    {%d, %d},\n' % r)
    out('};\n\nconst std::uint16_t kBlockOf[%d] = {\n' % len(block_of))
    out('\n'.join(rows(block_of, 24)) + '\n')
    out('};\n\nconst std::uint8_t kRecordOf[%d] = {\n' % (len(blocks) * BLOCK))
    out('\n'.join(rows([n for b in blocks for n in b], 32)) + '\n')
    out('};\n\n}  // namespace kivandra::unicode_tables\n')


main()
