"""Installs the library into a temporary prefix and builds the program in consumer/ against it in three ways: with
find_package and the static library, with find_package and the shared library, and with pkg-config.

    check.py --cmake CMAKE --build BUILD_FOLDER --cxx COMPILER [--flags FLAGS]
"""
import argparse
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile

CONSUMER = pathlib.Path(__file__).parent / "consumer"


def run(*command, **options) -> str:
    done = subprocess.run([str(c) for c in command], text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          **options)
    if done.returncode != 0:
        sys.exit(f"{shlex.join(map(str, command))}\n{done.stdout}\nended with status {done.returncode}")
    return done.stdout


def check_run(program: pathlib.Path, shared: bool, libraries: pathlib.Path) -> None:
    links = "libhtcore.so" in run("readelf", "-d", program)
    if links != shared:
        sys.exit(f"{program} {'links' if links else 'does not link'} the shared library")
    printed = run(program, env={**os.environ, "LD_LIBRARY_PATH": str(libraries)})
    expected = (CONSUMER / "expected.txt").read_text("utf-8")
    if printed != expected:
        sys.exit(f"{program} printed\n{printed}instead of\n{expected}")


def main() -> None:
    parser = argparse.ArgumentParser()
    for option in ("--cmake", "--build", "--cxx"):
        parser.add_argument(option, required=True)
    parser.add_argument("--flags", default="")
    args = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        temp = pathlib.Path(folder)
        prefix = temp / "prefix"
        run(args.cmake, "--install", args.build, "--prefix", prefix)
        pc = next(prefix.rglob("htcore.pc"))
        libraries = pc.parent.parent
        include = prefix / "include" / "htcore"

        for kind in ("static", "shared"):
            build = temp / kind
            run(args.cmake, "-S", CONSUMER, "-B", build, "-G", "Ninja", f"-DKIND={kind}",
                f"-DCMAKE_PREFIX_PATH={prefix}", f"-DCMAKE_CXX_COMPILER={args.cxx}", f"-DCMAKE_CXX_FLAGS={args.flags}")
            run(args.cmake, "--build", build)
            check_run(build / "consumer", kind == "shared", libraries)

        environment = {**os.environ, "PKG_CONFIG_PATH": str(pc.parent)}
        compile_flags, link_flags = (shlex.split(run("pkg-config", option, "htcore", env=environment))
                                     for option in ("--cflags", "--libs"))
        compiler = [args.cxx, "-std=c++20", *shlex.split(args.flags)]
        run(*compiler, CONSUMER / "main.cpp", "-o", temp / "consumer", *compile_flags, *link_flags)
        check_run(temp / "consumer", True, libraries)

        # Every header that was installed finds what it includes.
        headers = sorted(h.relative_to(include).as_posix() for h in include.rglob("*.h"))
        (temp / "all.cpp").write_text("".join(f'#include "{h}"\n' for h in headers))
        run(*compiler, "-fsyntax-only", *compile_flags, temp / "all.cpp")


if __name__ == "__main__":
    main()
