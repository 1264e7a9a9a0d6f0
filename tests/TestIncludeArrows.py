"""Proves the arrows of the house from the include lines of src/: they run down the table below, and never up."""

import os
import pathlib
import re
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[1] / "src"
SUFFIXES = {".h", ".cpp", ".mm"}

# Every layer with those directly below it; what stands below those is allowed as well.
BELOW = {
    "support": (),
    "platform": ("support",),
    "tray": ("platform",),
    "bridge": ("platform",),
    "cli": ("platform",),
    "daypart": ("platform",),
    "system": ("platform",),
    "model": ("bridge", "cli", "daypart", "system"),
    "ui": ("model",),
    "application": ("ui", "tray"),
    "main": ("application",),
}
LAYERS_WITH_WIDGETS = {"tray", "ui", "application", "main"}

# The first pattern that a file's path under src/ matches names its layer.
LAYER_OF = tuple(
    (re.compile(pattern), layer)
    for pattern, layer in (
        (r"platform/(linux|macos)/StatusItem", "tray"),
        (r"(support|platform|bridge|cli|daypart|system|ui)/", None),
        (r"app/StatusModel", "model"),
        (r"app/main\.", "main"),
        (r"app/", "application"),
    )
)

QUOTED = re.compile(r'^\s*#\s*(?:include|import)\s+"([^"]+)"')
BRACKETED = re.compile(r"^\s*#\s*(?:include|import)\s+<([^>]+)>")
GENERATED = re.compile(r"^moc_\w+\.cpp$|\.moc$|^ui_\w+\.h$")
PLATFORM_CONDITION = re.compile(
    r"^\s*#\s*(?:if|ifdef|ifndef|elif|elifdef|elifndef)\b.*"
    r"\b(?:Q_OS_\w+|__APPLE__|__MACH__|__linux__|__linux|__unix__|_WIN32|TARGET_OS_\w+)"
)


def layer_of(path):
    for pattern, layer in LAYER_OF:
        if match := pattern.match(path):
            return layer or match[1]
    return None


def everything_below(layer):
    reached = set(BELOW[layer])
    for below in BELOW[layer]:
        reached |= everything_below(below)
    return reached


def widget_headers(folders):
    """The names of the headers of Qt's Widgets among the include folders."""
    return {name.name for folder in folders if (folder / "QWidget").exists() for name in folder.iterdir()}


def violations(sources, widgets):
    """One line of text for every include or condition that breaks the house."""
    found = []
    for file in sorted(path for path in sources.rglob("*") if path.suffix in SUFFIXES):
        path = file.relative_to(sources).as_posix()
        layer = layer_of(path)
        if layer is None:
            found.append(f"{path}: stands in no layer")
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), start=1):
            found += [f"{path}:{number}: {fault}" for fault in faults_of(line, path, layer, widgets)]
    return found


def faults_of(line, path, layer, widgets):
    if (match := QUOTED.match(line)) and not GENERATED.search(match[1]):
        yield from faults_of_include(match[1], path, layer)
    elif match := BRACKETED.match(line):
        header = match[1]
        if (header.startswith("QtWidgets") or header in widgets) and layer not in LAYERS_WITH_WIDGETS:
            yield f"<{header}> is of the Widgets, and {layer} does without"
    elif PLATFORM_CONDITION.match(line) and not path.startswith("platform/"):
        yield "a condition on the platform outside platform/"


def faults_of_include(header, path, layer):
    target = layer_of(header)
    if target is None:
        yield f'"{header}" is not named from src/'
    elif target != layer and target not in everything_below(layer):
        yield f'"{header}" is of {target}, which is not below {layer}'
    elif re.match(r"platform/\w+/", header) and not path.startswith("platform/"):
        yield f'"{header}" is private to platform/'


class IncludeArrows(unittest.TestCase):
    def setUp(self):
        folders = [pathlib.Path(folder) for folder in os.environ["QT_WIDGETS_INCLUDES"].split(os.pathsep) if folder]
        self.widgets = widget_headers(folders)

    def test_the_headers_of_the_widgets_are_known(self):
        self.assertLessEqual({"QWidget", "QLabel", "qpushbutton.h"}, self.widgets)
        self.assertNotIn("QColor", self.widgets)

    def test_every_arrow_runs_down(self):
        self.assertGreater(sum(1 for path in SOURCES.rglob("*") if path.suffix in SUFFIXES), 40)
        self.assertEqual(violations(SOURCES, self.widgets), [])

    def assert_planted(self, path, line, fault):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / path
            file.parent.mkdir(parents=True)
            file.write_text(f"#pragma once\n\n{line}\n", encoding="utf-8")
            found = violations(pathlib.Path(folder), self.widgets)
        self.assertEqual(found, [f"{path}:3: {fault}"] if fault else [])

    def test_what_goes_up_or_sideways_is_found(self):
        cases = (
            ("support/X.h", "platform/Symbol.h", "platform", "support"),
            ("bridge/X.h", "system/NotificationService.h", "system", "bridge"),
            ("bridge/X.cpp", "cli/VornaCLIRunner.h", "cli", "bridge"),
            ("daypart/X.cpp", "app/StatusModel.h", "model", "daypart"),
            ("system/X.mm", "ui/kit/View.h", "ui", "system"),
            ("app/StatusModelX.cpp", "ui/kit/View.h", "ui", "model"),
            ("app/StatusModel.h", "app/VornaApp.h", "application", "model"),
            ("ui/menubar/X.cpp", "app/VornaApp.h", "application", "ui"),
            ("platform/X.h", "app/AppDelegate.h", "application", "platform"),
            ("platform/linux/X.cpp", "platform/linux/StatusItemX.h", "tray", "platform"),
        )
        for path, header, target, layer in cases:
            with self.subTest(path=path, header=header):
                line = f'  # include "{header}"'
                self.assert_planted(path, line, f'"{header}" is of {target}, which is not below {layer}')

    def test_what_goes_down_is_allowed(self):
        cases = (
            ("app/StatusModel.h", '#include "support/Published.h"'),
            ("ui/settings/X.cpp", '#include "bridge/BridgeError.h"'),
            ("app/VornaApp.cpp", '#include "platform/StatusItem.h"'),
            ("platform/linux/X.cpp", '#include "platform/linux/Y.h"'),
            ("cli/X.cpp", '#include "moc_X.cpp"'),
            ("ui/kit/X.h", "#include <QWidget>"),
            ("platform/linux/StatusItem.cpp", "#include <QSystemTrayIcon>"),
            ("platform/X.cpp", "#ifdef Q_OS_MACOS"),
            ("bridge/X.cpp", "// #ifdef Q_OS_MACOS"),
        )
        for path, line in cases:
            with self.subTest(path=path, line=line):
                self.assert_planted(path, line, None)

    def test_widgets_below_the_interface_are_found(self):
        for path, layer in (("app/StatusModel.h", "model"), ("platform/linux/X.cpp", "platform"), ("cli/X.h", "cli")):
            for header in ("QWidget", "qlabel.h", "QtWidgets", "QtWidgets/QLabel"):
                with self.subTest(path=path, header=header):
                    fault = f"<{header}> is of the Widgets, and {layer} does without"
                    self.assert_planted(path, f"#include <{header}>", fault)

    def test_conditions_on_the_platform_are_found(self):
        fault = "a condition on the platform outside platform/"
        for line in (
            "#ifdef Q_OS_LINUX",
            "#ifndef __APPLE__",
            "#if defined(__linux__) && 1",
            "  # elif defined Q_OS_MACOS",
            "#elifdef Q_OS_WIN",
        ):
            with self.subTest(line):
                self.assert_planted("ui/kit/X.cpp", line, fault)

    def test_private_headers_of_the_platform_are_kept_private(self):
        header = "platform/linux/X.h"
        self.assert_planted("app/VornaApp.cpp", f'#include "{header}"', f'"{header}" is private to platform/')

    def test_headers_that_are_not_named_from_the_root_are_found(self):
        self.assert_planted("cli/X.cpp", '#include "Y.h"', '"Y.h" is not named from src/')

    def test_a_file_in_no_layer_is_found(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "stray.cpp").write_text("", encoding="utf-8")
            self.assertEqual(violations(pathlib.Path(folder), self.widgets), ["stray.cpp: stands in no layer"])


if __name__ == "__main__":
    unittest.main()
