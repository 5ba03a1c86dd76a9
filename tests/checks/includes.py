"""Checks that arrows between units run one way, and that applications use public headers only.

    includes.py ROOT UNITS

ROOT is the project's folder. UNITS is the table of units that CMake writes into the build folder: a unit a line,
followed by the units it stands on directly. A header is public when the face of its unit, <unit>/<unit>.h, brings
it. A unit may include all of its own headers and the public ones of units below it; hosts/, tools/ and examples/
may include public ones only.
"""
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]', re.M)


class Project:
    def __init__(self, root: pathlib.Path, table: str):
        self.root, self.errors = root, []
        self.on = {unit: below for unit, *below in map(str.split, table.splitlines())}
        self.public = {unit: self.brought_by_face(unit) for unit in self.on}

    def files(self, folder: str):
        return [p for p in sorted((self.root / folder).rglob("*")) if p.suffix in (".h", ".cpp", ".inc")]

    def includes(self, file: pathlib.Path):
        """Names of included headers: all in quotes, and those in angle brackets that are a unit's."""
        found = INCLUDE.findall(file.read_text("utf-8"))
        return [name for mark, name in found if mark == '"' or name.split("/")[0] in self.on]

    def below(self, unit: str) -> set:
        return set(self.on[unit]).union(*map(self.below, self.on[unit]))

    def brought_by_face(self, unit: str) -> set:
        """The unit's headers that its face includes, at any depth."""
        public, queue = set(), [f"{unit}/{unit}.h"]
        while queue:
            name = queue.pop()
            file = self.root / "source" / name
            if name not in public and name.startswith(unit + "/") and file.exists():
                public.add(name)
                queue += self.includes(file)
        return public

    def check(self, file: pathlib.Path, name: str, own: str, may_use: set) -> None:
        """`own` is the folder a file may use freely, `may_use` the units whose public headers it may use."""
        where = f"{file.relative_to(self.root)} includes {name}"
        folder = name.split("/")[0]
        if folder not in self.on:
            if file.is_relative_to(self.root / "source"):
                self.errors.append(f"{where}: headers of the library are named <unit>/<header>")
        elif not (self.root / "source" / name).exists():
            self.errors.append(f"{where}: there is no such header")
        elif folder != own and folder not in may_use:
            self.errors.append(f"{where}: {folder} is not below {own}")
        elif folder != own and name not in self.public[folder]:
            self.errors.append(f"{where}: {folder}/{folder}.h does not bring it, so it is private to {folder}")

    def check_all(self) -> None:
        for unit in self.on:
            files = self.files(f"source/{unit}")
            if files and not self.public[unit]:
                self.errors.append(f"source/{unit}: there is no face {unit}/{unit}.h")
            for file in files:
                for name in self.includes(file):
                    self.check(file, name, unit, self.below(unit))
        for folder in ("hosts", "tools", "examples"):
            for file in self.files(folder):
                for name in self.includes(file):
                    self.check(file, name, "", set(self.on))

    def check_picture(self) -> None:
        """The arrows drawn in docs/architecture.md are those of the table."""
        text = (self.root / "docs/architecture.md").read_text("utf-8")
        drawn = set(re.findall(r"^\s*(ht\w+) --> (ht\w+)$", text, re.M))
        table = {(unit, below) for unit in self.on for below in self.on[unit]}
        for unit, below in sorted(drawn ^ table):
            there = "is in the picture only" if (unit, below) in drawn else "is missing in the picture"
            self.errors.append(f"docs/architecture.md: {unit} --> {below} {there}")


def main(root: str, table: str) -> int:
    project = Project(pathlib.Path(root), pathlib.Path(table).read_text("utf-8"))
    project.check_all()
    project.check_picture()
    print("\n".join(project.errors))
    return 1 if project.errors else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
