#!/usr/bin/env python3
"""Writes source/htmlpars/entities.inc, the table of named character references.

The names are those of the HTML standard, as Python's standard library carries them. Each name stands once and
without its semicolon; of two code points the first counts. Rows are sorted by the lower-cased name, the
upper-case spelling first.
"""
from html.entities import html5
from pathlib import Path

OUTPUT = Path(__file__).resolve().parent.parent / "source/htmlpars/entities.inc"

values = {name.rstrip(";"): ord(text[0]) for name, text in html5.items()}
rows = sorted(values.items(), key=lambda row: (row[0].lower(), row[0]))
OUTPUT.write_text("// Written by scripts/make-entities.py: HT_ENTITY(name, code point).\n"
                  + "".join(f"HT_ENTITY({name}, {value})\n" for name, value in rows))
