"""Plants mistakes in the Mac's files, one at a time, and counts how many of them the checks notice: the compiler for the
target, the linker for the target, or a test that runs here. `mutants.py` plants all; nothing in the tree is changed."""

import concurrent.futures
import pathlib
import re
import shlex
import sys
import tempfile

import kit

SOURCES = kit.PROJECT / "src" / "platform" / "macos"
TABLE = kit.HERE / "mutants.txt"
TARGET = kit.WORK / "target"
RUN = kit.WORK / "run"

# Words of the program's link line without which it must not link.
LINK_WORDS = ["AppKit", "ApplicationServices", "CoreText", "Foundation", "UserNotifications"]

# Objects of the libraries, without any one of which the program must not link.
LIBRARIES = {
    "libvorna_platform.a": [
        "Action.mm", "AppInfo.mm", "ChildDescriptors.cpp", "Desktop.mm", "FontDesign.mm", "NativeWindow.mm",
        "NotificationCenter.mm", "SingleInstance.mm", "Symbol.mm", "SystemSettings.cpp", "UserDefaults.mm",
    ],
    "libvorna_tray.a": ["MenuBar.cpp", "StatusItem.mm"],
}


def commands(folder, target):
    done, said = kit.run("ninja", "-C", folder, "-t", "commands", target)
    assert done, said
    return [line for line in said.splitlines() if " -o " in line or ".a " in line]


def command_for(folder, target, source):
    """The words of the command that compiles a file, without a cache in front."""
    line = next(line for line in commands(folder, target) if f"-c {source}" in line)
    words = shlex.split(line)
    return words[next(index for index, word in enumerate(words) if re.search(r"/clang\+\+(-19)?$", word)) :]


def compile_command(source):
    """The command that compiles a file for the target."""
    library = "vorna_tray" if source.name in LIBRARIES["libvorna_tray.a"] else "vorna_platform"
    return command_for(TARGET, f"src/lib{library}.a", source)


def with_output(words, output):
    """The same command with another output, and no list of what was included."""
    words = list(words)
    words[words.index("-o") + 1] = str(output)
    for option in ("-MT", "-MF"):
        if option in words:
            del words[words.index(option) : words.index(option) + 2]
    return [word for word in words if word != "-MD"]


class Planter:
    """Knows how the files are compiled and linked, and tries one mistake after another in a folder of its own."""

    def __init__(self):
        self.compile_for_target = {}
        self.compile_to_run = {}
        for name in {name for name, _, _ in all_mistakes()}:
            self.compile_for_target[name] = compile_command(SOURCES / name)
            self.compile_to_run[name] = command_for(RUN, "libplatform.a", SOURCES / name)
        self.tests = sorted(path.stem for path in (kit.HERE / "run").glob("Test*.cpp"))
        self.link_to_run = {test: self.link_line(RUN, test) for test in self.tests}

    @staticmethod
    def link_line(folder, target):
        line = commands(folder, target)[-1]
        parts = [part for part in line.split(" && ") if "-o " in part]
        return shlex.split(parts[0])

    def noticed_by(self, name, old, new):
        """Who notices the mistake; nothing when nobody does."""
        text = (SOURCES / name).read_text(encoding="utf-8")
        with tempfile.TemporaryDirectory() as folder:
            planted = pathlib.Path(folder) / name
            planted.write_text(text.replace(old, new, 1), encoding="utf-8")
            words = [*with_output(self.compile_for_target[name], "/dev/null"), "-fsyntax-only"]
            if not self.compiles(words, name, planted, TARGET):
                return "the compiler"
            planted_object = planted.with_suffix(".o")
            words = with_output(self.compile_to_run[name], planted_object)
            if not self.compiles(words, name, planted, RUN):
                return None  # what only this machine's compiler refuses was not noticed
            likely = sorted(self.tests, key=lambda test: test not in {f"Test{planted.stem}", "TestSystem"})
            return next((test for test in likely if not self.passes(test, planted_object)), None)

    @staticmethod
    def compiles(words, name, planted, folder):
        source = str(SOURCES / name)
        return kit.run(*(planted if word == source else word for word in words), cwd=folder)[0]

    def passes(self, test, planted_object):
        program = planted_object.with_name(test)
        words = with_output(self.link_to_run[test], program)
        words.insert(words.index("-o"), str(planted_object))
        linked, said = kit.run(*words, cwd=RUN)
        assert linked, said
        surroundings = {
            "QT_QPA_PLATFORM": "offscreen",
            "LC_ALL": "C.UTF-8",
            "ASAN_OPTIONS": "detect_leaks=0:handle_segv=0",
            "UBSAN_OPTIONS": "halt_on_error=1",
            "QTEST_DISABLE_STACK_DUMP": "1",
            "HOME": str(planted_object.parent),
            "PATH": "/usr/bin:/bin",
        }
        return kit.run("timeout", "20", program, cwd=planted_object.parent, env=surroundings)[0]


def link_mistakes():
    """Each mistake of the build files, with whether the linker noticed it."""
    words = Planter.link_line(TARGET, "vorna-companion")
    for framework in LINK_WORDS:
        with tempfile.TemporaryDirectory() as folder:
            kept = [
                word
                for index, word in enumerate(words)
                if word != framework and not (word == "-framework" and words[index + 1] == framework)
            ]
            linked, _ = kit.run(*with_output(kept, pathlib.Path(folder) / "vorna"), cwd=TARGET)
            yield f"-framework {framework}", not linked
    for library, names in LIBRARIES.items():
        for name in names:
            with tempfile.TemporaryDirectory() as folder:
                copy = pathlib.Path(folder) / library
                copy.write_bytes((TARGET / "src" / library).read_bytes())
                done, said = kit.run("llvm-ar-19", "d", copy, f"{name}.o")
                assert done, said
                kept = [str(copy) if word == f"src/{library}" else word for word in words]
                linked, _ = kit.run(*with_output(kept, pathlib.Path(folder) / "vorna"), cwd=TARGET)
                yield f"{library} without {name}", not linked


def prepare():
    for done, said in (
        kit.configure_for_the_mac(kit.PROJECT, TARGET),
        kit.build(TARGET, "vorna-companion"),
        kit.configure_for_a_run(kit.PROJECT, RUN),
        kit.build(RUN),
    ):
        assert done, said[-6000:]


def plant(mistakes, report=print):
    """Plants the given mistakes (file, old, new); answers those that nobody noticed."""
    planter = Planter()
    unnoticed = []
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        answers = pool.map(lambda mistake: planter.noticed_by(*mistake), mistakes)
        for (name, old, new), who in zip(mistakes, answers):
            report(f"{'caught' if who else 'MISSED'}  {name}: {shorten(old)} -> {shorten(new)}  [{who or 'nobody'}]")
            if who is None:
                unnoticed.append((name, old, new))
    return unnoticed


def shorten(text):
    return re.sub(r"\s+", " ", text).strip()[:60] or "(nothing)"


def all_mistakes():
    """The table: (file, what stands there, the mistake)."""
    mistakes, name = [], None
    for line in TABLE.read_text(encoding="utf-8").splitlines():
        if section := re.fullmatch(r"\[(\w+\.\w+)\]", line):
            name = section[1]
        elif line.startswith("- "):
            mistakes.append((name, whole_line(name, line[2:]), ""))
        elif line and not line.startswith("#"):
            old, new = line.replace("\\n", "\n").split(" => ")
            mistakes.append((name, old, new))
    return mistakes


def whole_line(name, text):
    found = re.search(rf"^ *{re.escape(text)}\n", (SOURCES / name).read_text(encoding="utf-8"), re.MULTILINE)
    return found[0] if found else text


def one_mistake_a_file():
    """For a quick look: the first of each file."""
    first = {}
    for name, old, new in all_mistakes():
        first.setdefault(name, (name, old, new))
    return list(first.values())


def main():
    kit.need_packages()
    prepare()
    mistakes = all_mistakes()
    missed = len(plant(mistakes))
    total = len(mistakes)
    for name, noticed in link_mistakes():
        print(f"{'caught' if noticed else 'MISSED'}  {name}  [{'the linker' if noticed else 'nobody'}]")
        total += 1
        missed += 0 if noticed else 1
    print(f"{total - missed} of {total} caught")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
