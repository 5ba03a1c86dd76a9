#!/usr/bin/env python3
"""Writes source/htruntime/unicode_tables.inc: letters, numbers and case mappings of the 16-bit units.

The properties are those of the Unicode Character Database, as Python's standard library carries it. A table is
cut into blocks of 64 units; each different block stands once, and an index gives the block of every 64 units.
A block of a set is one 64-bit word, a block of a mapping 64 differences, modulo 65536, to the unit of the other case.
"""
import unicodedata
from pathlib import Path

OUTPUT = Path(__file__).resolve().parent.parent / "source/htruntime/unicode_tables.inc"
BLOCK = 64


def lower_difference(unit):
    # One character only, U+0130, has a full mapping that is longer than its simple one, and starts with it.
    mapped = ord(chr(unit).lower()[0])
    return (mapped - unit) & 0xFFFF if mapped < 0x10000 else 0


def upper_difference(unit):
    # Where the full mapping is longer, the simple one is the title case form, or there is none.
    mapped = next((form for form in (chr(unit).upper(), chr(unit).title()) if len(form) == 1), chr(unit))
    return (ord(mapped) - unit) & 0xFFFF if ord(mapped) < 0x10000 else 0


def rows(values, per_line, form):
    lines = [values[i:i + per_line] for i in range(0, len(values), per_line)]
    return "".join("    " + ", ".join(form.format(v) for v in line) + ",\n" for line in lines)


def table(name, blocks, kind, form, per_line):
    """`blocks` holds, for every 64 units, the tuple of values that describe them."""
    unique = list(dict.fromkeys(blocks))
    assert len(unique) <= 256
    values = [v for block in unique for v in block]
    return (f"const uint8_t k{name}Index[{len(blocks)}] = {{\n{rows([unique.index(b) for b in blocks], 32, '{}')}}};\n"
            f"const {kind} k{name}Blocks[{len(values)}] = {{\n{rows(values, per_line, form)}}};\n")


def bit_set(name, category):
    units = [unicodedata.category(chr(u))[0] == category for u in range(0x10000)]
    blocks = [(sum(units[start + i] << i for i in range(BLOCK)),) for start in range(0, 0x10000, BLOCK)]
    return table(name, blocks, "uint64_t", "0x{:X}", 6)


def mapping(name, difference):
    blocks = [tuple(difference(start + i) for i in range(BLOCK)) for start in range(0, 0x10000, BLOCK)]
    return table(name, blocks, "uint16_t", "{}", 16)


OUTPUT.write_text(f"// Written by scripts/make-unicode-tables.py from Unicode {unicodedata.unidata_version}.\n\n"
                  + bit_set("Letter", "L") + bit_set("Number", "N") + mapping("Lower", lower_difference) + mapping("Upper", upper_difference))
