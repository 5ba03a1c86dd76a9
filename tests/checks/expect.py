"""Runs a program and compares what it prints with a file.

    expect.py EXPECTED PROGRAM [ARGUMENT...]

The program must end with status 0. Where the file EXPECTED does not exist, that is all.
"""
import difflib
import pathlib
import subprocess
import sys


def main(expected: pathlib.Path, command: list[str]) -> int:
    run = subprocess.run(command, stdout=subprocess.PIPE)
    printed = run.stdout.decode("utf-8")
    if run.returncode != 0:
        print(printed, f"{command[0]} ended with status {run.returncode}", sep="\n")
        return 1
    if not expected.exists():
        return 0
    wanted = expected.read_text("utf-8")
    for line in difflib.unified_diff(wanted.splitlines(), printed.splitlines(), "expected", "printed", lineterm=""):
        print(line)
    return 0 if printed == wanted else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), sys.argv[2:]))
