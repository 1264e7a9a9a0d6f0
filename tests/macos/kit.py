"""What the checks of the Mac's side share: the packages that they need, and where they work."""

import glob
import os
import pathlib
import platform
import re
import shutil
import subprocess
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
WORK = pathlib.Path(os.environ.get("VORNA_MAC_WORK", PROJECT / "build" / "macos"))
TARGET = WORK / "target"
RUN = WORK / "run"
SOURCES = PROJECT / "src" / "platform" / "macos"

# A file of each package that is needed.
PACKAGES = {
    "clang-19": "/usr/bin/clang++-19",
    "libblocksruntime-dev": "/usr/include/Block.h",
    "libc++-19-dev": "/usr/lib/llvm-19/include/c++/v1/expected",
    "libgnustep-base-dev": "/usr/share/doc/libgnustep-base-dev/copyright",
    "libgnustep-gui-dev": "/usr/share/doc/libgnustep-gui-dev/copyright",
    "lld-19": "/usr/bin/ld64.lld-19",
    "llvm-19": "/usr/bin/llvm-ar-19",
    "musl-dev": "/usr/include/*-linux-musl/stdio.h",
    "libclang-rt-19-dev": "/usr/lib/llvm-19/lib/clang/19/lib/*/libclang_rt.asan*.a",
}


def skip_if(is_missing, reason):
    """Skips the tests of a module. To be called in setUpModule()."""
    if is_missing:
        print(f"SKIPPED: {reason}", flush=True)
        raise unittest.SkipTest(reason)


def need_packages():
    skip_if(platform.machine() != "x86_64", "made for x86-64 only")
    missing = [name for name, file in PACKAGES.items() if not glob.glob(file)]
    skip_if(missing, "not installed: " + ", ".join(missing))


def run(*command, **options):
    """Runs a command to its end; answers whether it succeeded, and all that it said."""
    words = [str(word) for word in command]
    done = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options)
    return done.returncode == 0, done.stdout


def demand(*command, **options):
    done, said = run(*command, **options)
    assert done, said[-6000:]
    return said


def make_kit():
    """Writes the headers and stubs to compile and link against, unless they are there and young enough."""
    kit = WORK / "kit"
    script = HERE / "target" / "make_kit.py"
    stamp = kit / "stamp"
    if not stamp.exists() or stamp.stat().st_mtime < script.stat().st_mtime:
        (kit / "packages").mkdir(parents=True, exist_ok=True)
        subprocess.run([sys.executable, "-B", script, kit], check=True)
        (kit / "codesign").write_text(f'#!/bin/sh\necho "$*" >>{kit}/signatures\n', encoding="utf-8")
        (kit / "codesign").chmod(0o755)
        (kit / "packages" / "nlohmann").unlink(missing_ok=True)
        (kit / "packages" / "nlohmann").symlink_to("/usr/include/nlohmann")
        # With the one include that a release before 0.11 lacks for the Mac's C++ library.
        shutil.copytree("/usr/include/qcoro6", kit / "qcoro", dirs_exist_ok=True)
        task = kit / "qcoro" / "qcoro" / "qcorotask.h"
        task.write_text("#include <exception>\n" + task.read_text(encoding="utf-8"), encoding="utf-8")
        stamp.touch()
    return kit


def build_for_the_mac(*targets, folder=TARGET, definitions=()):
    """Builds the project as on a Mac, warnings as errors; anew when what cannot be changed later was changed."""
    toolchain = HERE / "target" / "toolchain.cmake"
    cache = folder / "CMakeCache.txt"
    is_old = cache.exists() and cache.stat().st_mtime < toolchain.stat().st_mtime
    demand(
        *("cmake", *(["--fresh"] if is_old else []), "-S", PROJECT, "-B", folder, "-G", "Ninja"),
        *(f"-DCMAKE_TOOLCHAIN_FILE={toolchain}", "-DVORNA_WERROR=CHOSEN", "-DCMAKE_BUILD_TYPE=", "-DBUILD_TESTING=OFF"),
        *(f"-DVORNA_MAC_KIT={make_kit()}", "-DCMAKE_PREFIX_PATH=/usr/lib/x86_64-linux-gnu/cmake", *definitions),
    )
    demand("cmake", "--build", folder, "-j2", "--target", *targets)


def missing_in(program):
    """What a program for the Mac needs of our own and does not have."""
    own = "|".join(["Vorna\\w+", *(file.stem for file in (PROJECT / "src").rglob("*.h"))])
    needed = demand("llvm-nm-19", "--undefined-only", "--demangle", program).splitlines()
    return [line.strip() for line in needed if re.search(rf"(?:\b|_)(?:{own})\b", line)]


def build_to_run():
    """Builds what runs the Mac's files here."""
    demand("cmake", "-S", HERE / "run", "-B", RUN, "-G", "Ninja")
    demand("cmake", "--build", RUN, "-j2")


def passes(program, home, seconds=60):
    """Whether what runs here succeeds, and what it said. The home is for GNUstep's file of user defaults; what the
    stand-ins are told they keep for ever."""
    surroundings = {"QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "PATH": "/usr/bin:/bin", "HOME": str(home)}
    surroundings |= {"ASAN_OPTIONS": "detect_leaks=0:handle_segv=0", "QTEST_DISABLE_STACK_DUMP": "1"}
    return run("timeout", seconds, program, cwd=home, env=surroundings)
