"""Holds the include lines of src/ to the libraries that CMake builds from it: a file includes only what its own library
or one that this links brings, widgets included; and conditions on the platform stand in platform/ alone."""

import os
import pathlib
import re
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[1] / "src"
SUFFIXES = {".h", ".cpp", ".mm"}
WIDGETS = "Qt6::Widgets"

QUOTED = re.compile(r'^\s*#\s*(?:include|import)\s+"([^"]+)"')
BRACKETED = re.compile(r"^\s*#\s*(?:include|import)\s+<([^>]+)>")
GENERATED = re.compile(r"^moc_\w+\.cpp$|\.moc$|^ui_\w+\.h$")
PLATFORM_FOLDER = re.compile(r"^platform/\w+/")
PLATFORM_CONDITION = re.compile(
    r"^\s*#\s*(?:if|ifdef|ifndef|elif|elifdef|elifndef)\b.*"
    r"\b(?:Q_OS_\w+|__APPLE__|__MACH__|__linux__|__linux|__unix__|_WIN32|TARGET_OS_\w+)"
)


class Targets:
    """What CMake has written down: the files of each target, and what it links."""

    def __init__(self, folder):
        self.links, self.by_stem, by_folder = {}, {}, {}
        for file in folder.glob("*.txt"):
            sources, links = file.read_text(encoding="utf-8").splitlines()
            self.links[file.stem] = links.split(";")
            for source in map(pathlib.PurePosixPath, sources.split(";")):
                if source.suffix in SUFFIXES and not source.is_absolute():
                    self.by_stem[self.stem(source)] = file.stem
                    by_folder.setdefault(source.parent, set()).add(file.stem)
        self.by_folder = {folder: owners.pop() for folder, owners in by_folder.items() if len(owners) == 1}

    @staticmethod
    def stem(path):
        """The path without its suffix; a platform's file goes with the header that it fulfils."""
        return PLATFORM_FOLDER.sub("platform/", path.with_suffix("").as_posix())

    def of(self, path):
        """The target of a file: of the source file of its name, else the only one of its folder."""
        path = pathlib.PurePosixPath(path)
        if PLATFORM_FOLDER.match(path.as_posix()) and self.stem(path) not in self.by_stem:
            return "vorna_platform"
        return self.by_stem.get(self.stem(path)) or self.by_folder.get(path.parent)

    def reaches(self, target, wanted):
        return target == wanted or any(self.reaches(link, wanted) for link in self.links.get(target, ()))


class Checker:
    def __init__(self, targets, widget_folders):
        self.targets = targets
        self.widgets = {name.name for folder in widget_folders if (folder / "QWidget").exists()
                        for name in folder.iterdir()}

    def violations(self, sources):
        """One line of text for every include or condition that breaks the rules."""
        for file in sorted(path for path in sources.rglob("*") if path.suffix in SUFFIXES):
            path = file.relative_to(sources).as_posix()
            target = self.targets.of(path)
            if target is None:
                yield f"{path}: is of no library"
                continue
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), start=1):
                for fault in self.faults_of(line, path, target):
                    yield f"{path}:{number}: {fault}"

    def faults_of(self, line, path, target):
        if (match := QUOTED.match(line)) and not GENERATED.search(match[1]):
            header = match[1]
            owner = self.targets.of(header) if "/" in header else None
            if owner is None:
                yield f'"{header}" is not named from src/'
            elif not self.targets.reaches(target, owner):
                yield f'"{header}" is of {owner}, which {target} does not link'
            elif PLATFORM_FOLDER.match(header) and not path.startswith("platform/"):
                yield f'"{header}" is private to platform/'
        elif match := BRACKETED.match(line):
            is_widget = match[1].startswith("QtWidgets") or match[1] in self.widgets
            if is_widget and not self.targets.reaches(target, WIDGETS):
                yield f"<{match[1]}> is of the Widgets, which {target} does not link"
        elif PLATFORM_CONDITION.match(line) and not path.startswith("platform/"):
            yield "a condition on the platform outside platform/"


class IncludeArrows(unittest.TestCase):
    def setUp(self):
        folders = [pathlib.Path(folder) for folder in os.environ["QT_WIDGETS_INCLUDES"].split(os.pathsep) if folder]
        self.targets = Targets(pathlib.Path(os.environ["VORNA_TARGETS"]))
        self.checker = Checker(self.targets, folders)

    def test_the_libraries_and_the_widgets_are_known(self):
        self.assertLessEqual({"vorna_support", "vorna_platform", "vorna_ui", "vorna-companion"}, set(self.targets.links))
        self.assertLessEqual({"QWidget", "QLabel", "qpushbutton.h"}, self.checker.widgets)
        self.assertNotIn("QColor", self.checker.widgets)

    def test_no_library_links_itself_in_a_circle(self):
        for name, links in self.targets.links.items():
            self.assertFalse(any(self.targets.reaches(link, name) for link in links), name)

    def test_every_include_is_of_a_linked_library(self):
        self.assertGreater(sum(1 for path in SOURCES.rglob("*") if path.suffix in SUFFIXES), 40)
        self.assertEqual(list(self.checker.violations(SOURCES)), [])

    def assert_planted(self, path, line, fault):
        with self.subTest(path=path, line=line), tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(f"#pragma once\n\n{line}\n", encoding="utf-8")
            found = list(self.checker.violations(pathlib.Path(folder)))
            self.assertEqual(found, [f"{path}:3: {fault}"] if fault else [])

    def test_what_is_not_linked_is_found(self):
        for path, header, owner, target in (
            ("support/X.h", "platform/Symbol.h", "vorna_platform", "vorna_support"),
            ("bridge/X.cpp", "cli/VornaCLIRunner.h", "vorna_cli", "vorna_bridge"),
            ("daypart/X.cpp", "app/StatusModel.h", "vorna_model", "vorna_daypart"),
            ("system/X.mm", "ui/kit/View.h", "vorna_ui", "vorna_system"),
            ("app/StatusModel.h", "app/VornaApp.h", "vorna_app", "vorna_model"),
            ("ui/menubar/X.cpp", "app/VornaApp.h", "vorna_app", "vorna_ui"),
            ("platform/linux/X.cpp", "platform/StatusItem.h", "vorna_tray", "vorna_platform"),
        ):
            self.assert_planted(path, f'  # include "{header}"', f'"{header}" is of {owner}, which {target} does not link')
        for path, target in (("app/StatusModel.h", "vorna_model"), ("cli/X.h", "vorna_cli")):
            for header in ("QWidget", "qlabel.h", "QtWidgets", "QtWidgets/QLabel"):
                fault = f"<{header}> is of the Widgets, which {target} does not link"
                self.assert_planted(path, f"#include <{header}>", fault)

    def test_other_faults_are_found(self):
        for line in ("#ifdef Q_OS_LINUX", "#ifndef __APPLE__", "  # elif defined(__linux__) && 1", "#elifdef Q_OS_WIN"):
            self.assert_planted("ui/kit/X.cpp", line, "a condition on the platform outside platform/")
        private = '"platform/linux/X11.h"'
        self.assert_planted("app/VornaApp.cpp", f"#include {private}", f"{private} is private to platform/")
        self.assert_planted("cli/X.cpp", '#include "Y.h"', '"Y.h" is not named from src/')
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "stray.cpp").write_text("", encoding="utf-8")
            self.assertEqual(list(self.checker.violations(pathlib.Path(folder))), ["stray.cpp: is of no library"])


if __name__ == "__main__":
    unittest.main()
