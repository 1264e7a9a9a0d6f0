"""Plants mistakes in a copy of the project, one at a time, and counts how many of them the tests notice that need no
display: `mutate.py [FOLDER…]`, with folders of src/; all of them without one.

Each table `FOLDER.mistakes` beside this file lists the mistakes of `src/FOLDER`. Under the path of a file in brackets, a
line says what stands there once, what is planted in its place, and what that breaks, with `\\n` for a new line."""

import concurrent.futures
import dataclasses
import filecmp
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
WORK = PROJECT / "build" / "mutations"
TREE = WORK / "tree"
BUILD = WORK / "build"
JOBS = 2
LABELS = "^(unit|bus)$"
WANTED_SHARE = 0.98
MAC = pathlib.PurePosixPath("src/platform/macos")  # tests/macos/mutants.py plants these


class TableError(Exception):
    """A mistake that cannot be planted as the table says."""


@dataclasses.dataclass(frozen=True)
class Mistake:
    file: pathlib.PurePosixPath  # below the project
    old: str
    new: str
    breaks: str

    def __str__(self):
        old, new = (" ".join(text.split())[:60] or "nothing" for text in (self.old, self.new))
        return f"{self.file.relative_to('src')}: {old} ⇒ {new} ({self.breaks})"

    def planted(self, text):
        if text.count(self.old) != 1 or self.old == self.new:
            raise TableError(f"{self}: stands there {text.count(self.old)} times")
        return text.replace(self.old, self.new)


def read_table(path):
    folder = pathlib.PurePosixPath("src", path.relative_to(HERE).with_suffix("").as_posix())
    file = None
    for line in path.read_text(encoding="utf-8").splitlines():
        parts = [part.strip().replace("\\n", "\n") for part in line.split("⇒")]
        if heading := re.fullmatch(r"\[([\w./]+)\]", line):
            file = folder / heading[1]
        elif len(parts) == 3 and file and parts[0]:
            yield Mistake(file, *parts)
        elif line and not line.startswith("#"):
            raise TableError(f"{path.name}: not understood: {line}")


def read_tables(folders=()):
    mistakes = [mistake for path in sorted(HERE.rglob("*.mistakes")) for mistake in read_table(path)]
    wanted = [pathlib.PurePosixPath("src", folder) for folder in folders]
    return [it for it in mistakes if not wanted or any(it.file.is_relative_to(folder) for folder in wanted)]


def copy_tree():
    """Brings the copy up to date; what is equal stays as it is, so that little is built anew."""
    keep = set()
    for folder, folders, names in os.walk(PROJECT):
        folders[:] = [name for name in folders if name not in {".git", "build", "__pycache__"}]
        for name in names:
            source = pathlib.Path(folder, name)
            copy = TREE / source.relative_to(PROJECT)
            keep.add(copy)
            copy.parent.mkdir(parents=True, exist_ok=True)
            if not copy.exists() or not filecmp.cmp(source, copy, shallow=False):
                shutil.copyfile(source, copy)
                shutil.copymode(source, copy)
    for copy in TREE.rglob("*"):
        if copy.is_file() and copy not in keep:
            copy.unlink()


def run(*command, **options):
    return subprocess.run(
        [str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options
    )


def demand(done):
    if done.returncode != 0:
        raise RuntimeError(done.stdout[-6000:])
    return done.stdout


class Test:
    """A test as the build knows it."""

    def __init__(self, told):
        self.name = told["name"]
        self.command = told.get("command")  # none as long as it was never built
        properties = {it["name"]: it["value"] for it in told["properties"]}
        self.folder = properties.get("WORKING_DIRECTORY", BUILD)
        given = dict(entry.split("=", 1) for entry in properties.get("ENVIRONMENT", []))
        self.surroundings = {**os.environ, **given}
        for display in ("DISPLAY", "WAYLAND_DISPLAY"):
            self.surroundings.pop(display, None)
        targets = [self.name] if self.name.startswith("Test") else []
        self.targets = targets + (["vorna-companion"] if "VORNA_COMPANION" in given else [])
        self.limit = 60.0
        self.links = ""

    def passes(self):
        """In a session of its own: with a mistake it may signal whatever is in its process group."""
        try:
            done = run(*self.command, cwd=self.folder, env=self.surroundings, timeout=self.limit, errors="replace",
                       start_new_session=True)
        except subprocess.TimeoutExpired:
            return False
        return done.returncode == 0

    def learn(self):
        """Runs it on what is right, and remembers how long that takes and what it is linked to."""
        start = time.monotonic()
        passed = self.passes()
        self.limit = 10 + 8 * (time.monotonic() - start)
        self.links = run("ldd", self.command[0]).stdout if self.name in self.targets else ""
        return passed


class Planter:
    """Tries one mistake after another in the copy, with the tests of the given names or with all that need no display."""

    def __init__(self, only=None):
        copy_tree()
        demand(run(
            *("cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE="),
            *("-DBUILD_SHARED_LIBS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON"),
        ))
        demand(self.build(self.listed(only)))
        self.tests = self.listed(only)
        self.sources = {}
        for compiled in json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8")):
            if library := re.search(r" -o \S*/(vorna_\w+)\.dir", compiled["command"]):
                self.sources[compiled["file"]] = library[1]
        with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
            failed = [test.name for test, passed in zip(self.tests, pool.map(Test.learn, self.tests)) if not passed]
        again = [test.name for test in self.tests if test.name in failed and not test.learn()]
        if again:
            raise RuntimeError(f"fail without a mistake: {', '.join(again)}")

    @staticmethod
    def listed(only):
        told = json.loads(demand(run("ctest", "--test-dir", BUILD, "-L", LABELS, "--show-only=json-v1")))
        return [Test(it) for it in told["tests"] if only is None or it["name"] in only]

    @staticmethod
    def build(tests):
        targets = [word for test in tests for target in test.targets for word in ("--target", target)]
        return run("cmake", "--build", BUILD, f"-j{JOBS}", *targets)

    def groups(self, mistake):
        """The tests that can see the mistake: those of its class, of its folder, and the others, quick ones first."""
        library = self.sources.get(str(TREE / mistake.file))
        able = [test for test in self.tests if not library or not test.links or f"lib{library}.so" in test.links]
        able.sort(key=lambda test: test.limit)
        folder = {path.stem for path in (TREE / "tests" / mistake.file.parent.relative_to("src")).glob("Test*.cpp")}
        own = [test for test in able if test.name == f"Test{mistake.file.stem}"]
        near = [test for test in able if test.name in folder and test not in own]
        return [group for group in (own, near, [test for test in able if test not in [*own, *near]]) if group]

    def noticed_by(self, mistake):
        """The name of a test that fails with the mistake, twice; None where none does."""
        file = TREE / mistake.file
        right = file.read_text(encoding="utf-8")
        file.write_text(mistake.planted(right), encoding="utf-8")
        try:
            for group in self.groups(mistake):
                built = self.build(group)
                if built.returncode != 0:
                    raise TableError(f"{mistake}: does not compile\n{built.stdout[-1500:]}")
                for test in self.failing(group):
                    if not test.passes():
                        return test.name
            return None
        finally:
            file.write_text(right, encoding="utf-8")

    @staticmethod
    def failing(tests):
        with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
            running = {pool.submit(test.passes): test for test in tests}
            try:
                for done in concurrent.futures.as_completed(running):
                    if not done.cancelled() and not done.result():
                        yield running[done]
            finally:
                pool.shutdown(cancel_futures=True)

    def plant(self, mistakes):
        """Answers those that no test notices and those that cannot be planted, and tells of each as it goes."""
        missed, impossible = [], []
        for mistake in mistakes:
            try:
                test = self.noticed_by(mistake)
            except TableError as error:
                impossible.append(mistake)
                print(f"ERROR    {error}", flush=True)
                continue
            print(f"{'noticed' if test else 'MISSED '}  {mistake}  [{test or 'nobody'}]", flush=True)
            if test is None:
                missed.append(mistake)
        return missed, impossible


def conclude(planter, mistakes):
    """Plants them, says how many were noticed, and answers the status to end with."""
    missed, impossible = planter.plant(mistakes)
    planted = len(mistakes) - len(impossible)
    noticed = planted - len(missed)
    print(f"{noticed} of {planted} noticed, {noticed / max(1, planted):.1%}; {len(impossible)} cannot be planted")
    return 1 if impossible or noticed < WANTED_SHARE * planted else 0


if __name__ == "__main__":
    sys.exit(conclude(Planter(), [it for it in read_tables(sys.argv[1:]) if MAC not in it.file.parents]))
