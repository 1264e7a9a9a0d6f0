"""Compiles every source for the Mac with another compiler, another Qt or another QCoro than test_target does, and
without headers that are read once for many files. Run by hand; docs/macos.md says with what it was."""

import argparse

import kit

parser = argparse.ArgumentParser()
parser.add_argument("--llvm", default="/usr/lib/llvm-19", help="with bin/clang++ and include/c++/v1")
parser.add_argument("--qt", default="/usr/lib/x86_64-linux-gnu", help="with cmake/Qt6")
parser.add_argument("--qcoro", required=True, help="QCoro's own sources")
chosen = parser.parse_args()
kit.need_packages()
kit.build_for_the_mac(
    *("vorna_app", "src/CMakeFiles/vorna-companion.dir/app/main.cpp.o"),
    folder=kit.WORK / "other",
    definitions=["--fresh", f"-DVORNA_MAC_LLVM={chosen.llvm}", f"-DCMAKE_PREFIX_PATH={chosen.qt}/cmake",
                 "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON", "-DCMAKE_DISABLE_FIND_PACKAGE_QCoro6=ON",
                 f"-DFETCHCONTENT_SOURCE_DIR_QCORO={chosen.qcoro}"],
)
