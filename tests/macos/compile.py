"""Compiles every source for the Mac with another compiler, another Qt or another QCoro than test_target does:
`compile.py [--llvm FOLDER] [--qt FOLDER] [--qcoro SOURCES]`. Run by hand; docs/macos.md says with what it was."""

import argparse
import sys

import kit


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--llvm", default="/usr/lib/llvm-19", help="with bin/clang++ and include/c++/v1")
    parser.add_argument("--qt", default="/usr/lib/x86_64-linux-gnu", help="with cmake/Qt6")
    parser.add_argument("--qcoro", help="QCoro's own sources in place of the package")
    chosen = parser.parse_args()
    kit.need_packages()
    definitions = [f"-DVORNA_MAC_LLVM={chosen.llvm}", f"-DCMAKE_PREFIX_PATH={chosen.qt}/cmake"]
    if chosen.qcoro:
        definitions += ["-DCMAKE_DISABLE_FIND_PACKAGE_QCoro6=ON", f"-DFETCHCONTENT_SOURCE_DIR_QCORO={chosen.qcoro}"]
    folder = kit.WORK / "other"
    main_object = "src/CMakeFiles/vorna-companion.dir/app/main.cpp.o"
    for done, said in (
        kit.configure_for_the_mac(kit.PROJECT, folder, "--fresh", *definitions),
        kit.build(folder, "vorna_app", main_object),
    ):
        print(said[-6000:])
        if not done:
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
