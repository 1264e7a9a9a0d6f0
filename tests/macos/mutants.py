"""Plants mistakes in the Mac's files, one at a time, and counts how many of them the checks notice: the compiler for
the target, or what runs here. Nothing in the tree is changed. The table is tests/mutations/platform/macos.mistakes."""

import concurrent.futures
import functools
import pathlib
import shlex
import sys
import tempfile

import kit

sys.path.append(str(kit.PROJECT / "tests" / "mutations"))
import mutate  # noqa: E402


def all_mistakes():
    return mutate.read_tables(["platform/macos"])


@functools.cache
def commands(folder, target):
    return kit.demand("ninja", "-C", folder, "-t", "commands", target).splitlines()


def compile_command(folder, target, source):
    """The words of the command that compiles a file of ours, without its output."""
    words = shlex.split(next(line for line in commands(folder, target) if f"-c {source}" in line))
    return words[: words.index("-MD")] + ["-c", str(source)]


class Planter(mutate.Planter):
    """Knows how the files are compiled and linked, and tries one mistake after another in a folder of its own."""

    def __init__(self):
        kit.build_for_the_mac("vorna-companion")
        kit.build_to_run()
        link = next(line for line in reversed(commands(kit.RUN, "TestMac")) if " -o TestMac " in line)
        self.link = shlex.split(next(part for part in link.split(" && ") if " -o " in part))

    def noticed_by(self, mistake):
        source = (kit.PROJECT / mistake.file).resolve()
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
            return None if kit.passes(program.result(), place, seconds=20)[0] else "TestMac"

    def program_with(self, planted, source):
        """What runs here with the planted file; nothing where that does not compile."""
        anew, program = planted.with_suffix(".o"), planted.with_name("TestMac")
        words = compile_command(kit.RUN, "TestMac", source)
        if not kit.run(*words[:-1], planted, "-o", anew, cwd=kit.RUN)[0]:
            return None
        given = {word: anew for word in self.link if word.endswith(f"/{source.name}.o")} | {"TestMac": program}
        kit.demand(*(given.get(word, word) for word in self.link), cwd=kit.RUN)
        return program


def main():
    kit.need_packages()
    return mutate.conclude(Planter(), all_mistakes())


if __name__ == "__main__":
    sys.exit(main())
