"""Plants mistakes in the Mac's files, one at a time, and counts how many of them the checks notice: the compiler for the
target, or what runs here. `mutants.py` plants all; nothing in the tree is changed.
They are in the table tests/mutations/platform/macos.mistakes."""

import concurrent.futures
import functools
import pathlib
import re
import shlex
import sys
import tempfile

import kit

sys.path.append(str(kit.PROJECT / "tests" / "mutations"))
import mutate  # noqa: E402

SURROUNDINGS = {
    "QT_QPA_PLATFORM": "offscreen",
    "LC_ALL": "C.UTF-8",
    "ASAN_OPTIONS": "detect_leaks=0:handle_segv=0",
    "QTEST_DISABLE_STACK_DUMP": "1",
}


def all_mistakes():
    return mutate.read_tables(["platform/macos"])


@functools.cache
def commands(folder, target):
    return kit.demand("ninja", "-C", folder, "-t", "commands", target).splitlines()


def compile_command(folder, target, source):
    """The words of the command that compiles a file of ours, without its output."""
    words = shlex.split(next(line for line in commands(folder, target) if f"-c {source}" in line))
    return words[: words.index("-MD")] + ["-c", str(source)]


def link_command(folder, target):
    line = next(line for line in reversed(commands(folder, target)) if " -o " in line and " -c " not in line)
    return shlex.split(next(part for part in line.split(" && ") if " -o " in part))


def with_output(words, output):
    return [*words[: words.index("-o")], "-o", str(output), *words[words.index("-o") + 2 :]]


class Planter(mutate.Planter):
    """Knows how the files are compiled and linked, and tries one mistake after another in a folder of its own."""

    def __init__(self):
        kit.build_for_the_mac("vorna-companion")
        kit.build_to_run()
        self.link = link_command(kit.RUN, "TestMac")

    def noticed_by(self, mistake):
        source = kit.PROJECT / mistake.file
        text = mistake.planted(source.read_text(encoding="utf-8"))
        with tempfile.TemporaryDirectory() as place, concurrent.futures.ThreadPoolExecutor(2) as pool:
            planted = pathlib.Path(place) / source.name
            planted.write_text(text, encoding="utf-8")
            words = compile_command(kit.TARGET, "vorna-companion", source)
            compiled = pool.submit(kit.run, *words[:-1], planted, "-fsyntax-only", cwd=kit.TARGET)
            program = pool.submit(self.program_with, planted, source)
            if not compiled.result()[0]:
                return "the compiler"
            if not program.result():
                raise mutate.TableError(f"{mistake}: only this machine's compiler refuses it")
            surroundings = {**SURROUNDINGS, "HOME": place, "PATH": "/usr/bin:/bin"}
            return None if kit.run("timeout", "20", program.result(), cwd=place, env=surroundings)[0] else "TestMac"

    def program_with(self, planted, source):
        """What runs here with the planted file; nothing where that does not compile."""
        anew, program = planted.with_suffix(".o"), planted.with_name("TestMac")
        words = compile_command(kit.RUN, "TestMac", source)
        if not kit.run(*words[:-1], planted, "-o", anew, cwd=kit.RUN)[0]:
            return None
        words = [str(anew) if word.endswith(f"/{source.name}.o") else word for word in self.link]
        kit.demand(*with_output(words, program), cwd=kit.RUN)
        return program


def main():
    kit.need_packages()
    return mutate.conclude(Planter(), all_mistakes())


if __name__ == "__main__":
    sys.exit(main())
