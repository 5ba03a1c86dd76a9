"""Takes the first program out of a guide, so that it can be compiled and run.

    guide.py GUIDE.md OUT.cpp OUT.expected

The program is the first ```cpp block. A ```text block right behind it, before any other block, is what it prints.
"""
import pathlib
import re
import sys


def main(guide: str, program: str, expected: str) -> int:
    blocks = re.findall(r"^```(\w*)\n(.*?)^```$", pathlib.Path(guide).read_text("utf-8"), re.M | re.S)
    languages = [language for language, _ in blocks]
    if "cpp" not in languages:
        print(f"{guide}: no ```cpp block")
        return 1
    first = languages.index("cpp")
    pathlib.Path(program).write_text(f'#line 1 "{guide}: first program"\n{blocks[first][1]}', "utf-8")
    if languages[first + 1 : first + 2] == ["text"]:
        pathlib.Path(expected).write_text(blocks[first + 1][1], "utf-8")
    else:
        pathlib.Path(expected).unlink(missing_ok=True)
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
