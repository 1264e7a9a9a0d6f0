"""Holds what src/platform/macos sends and names, and what tests/macos/headers declares, against declarations of the
Mac's whole SDK, which were made by machine and which script/bootstrap fetches where npm is. It sees a mistake that was
made in a file and in our headers alike, which no compiler sees here. They do not know nullability, the widths of
integers, or the release that a name came with."""

import collections
import concurrent.futures
import pathlib
import re
import subprocess
import tempfile
import unittest

import kit
import mutants

TYPES = kit.PROJECT / "build" / "macos-sdk-0.4.0" / "package" / "types"

AST_LINE = re.compile(r"^([| `-]*)(\w+) 0x[0-9a-f]+ ?(.*)$")
NAME = re.compile(r"\b(?:NS|UN|AE|AX|CT|kAE|kCore|kCT)[A-Z][A-Za-z]\w+\b")
OF_EVERY_CLASS = {"alloc", "init", "class"}
# Inline functions, macros and other names of a type, which the declarations leave out.
UNLISTED = set("""
    NSMakeRect NSMakeRange NSMaxY NSMinX NSWidth NSHeight NSRect NSUInteger NSInteger NSFontWeight NSZeroRect
    AEEventClass AEEventID
""".split())


class Sdk:
    def __init__(self):
        self.above = collections.defaultdict(list)
        self.members = collections.defaultdict(set)
        self.enums = collections.defaultdict(dict)
        self.names = set()
        for file in sorted(TYPES.glob("*.d.ts")):
            self._read(file.read_text(encoding="utf-8").splitlines())
        self.anywhere = set().union(*self.members.values())
        self.values = collections.defaultdict(set)
        for enum, members in self.enums.items():
            for member, value in members.items():
                for name in {enum + member, enum.removesuffix("s") + member, member, "NS" + member}:
                    self.values[name].add(value)

    def _read(self, lines):
        kind = name = None
        for line in lines:
            if m := re.match(r"(?:declare )?(?:class|interface) (\w+)(?:<.*?>)?(.*) \{", line):
                kind, name = "class", m[1]
                self.members[name]
                self.above[name] += re.findall(r"\w+", re.sub(r"<.*?>|\bextends\b|\bimplements\b", "", m[2]))
            elif m := re.match(r"declare const (\w+): \{", line):
                kind, name = "enum", m[1]
            elif m := re.match(r"declare (?:const|function) (\w+)", line):
                self.names.add(m[1])
            elif line.startswith("}"):
                kind = None
            elif kind == "enum" and (m := re.match(r"\s+(\w+): (-?\d+)n?,", line)):
                self.enums[name][m[1]] = int(m[2])
            elif kind == "class" and (m := re.match(r"\s+(static )?(readonly )?(\w+)\??(?:<.*?>)?([(:])", line)):
                self.members[name] |= {(bool(m[1]), spelled) for spelled in spellings(m[3], m[4] == ":", bool(m[2]))}

    def knows(self, receiver, is_static, selector, seen=()):
        """Whether the class, or one above it, or a protocol of theirs, has the selector; of `id`, whether any has."""
        parts = selector.rstrip(":").split(":")
        spelled = (is_static, parts[0] + "".join(part[:1].upper() + part[1:] for part in parts[1:]))
        if receiver == "id":
            return spelled in self.anywhere
        if receiver not in self.members or receiver in seen:
            return False
        return spelled in self.members[receiver] or any(
            self.knows(above, is_static, selector, (*seen, receiver)) for above in self.above[receiver]
        )

    def knows_name(self, name):
        return name in self.members or name in self.enums or name in self.names or name in self.values

    def values_of(self, names):
        """Of each enumerator of one value."""
        known = [name for name in names if name not in self.members and len(self.values[name]) == 1]
        return {name: min(self.values[name]) for name in known}

    def unknown(self, uses):
        return sorted(
            f"{'+' if is_static else '-'}[{receiver} {selector}]"
            for receiver, is_static, selector in uses
            if not receiver.startswith("Vorna") and selector not in OF_EVERY_CLASS
            if not self.knows(receiver, is_static, selector)
        )


def spellings(name, is_property, is_readonly):
    """The selectors of one declaration, as it spells them: a property has one to read it and one to write it."""
    yield name
    if is_property:
        yield f"is{name[0].upper()}{name[1:]}"
        if not is_readonly:
            yield f"set{name[0].upper()}{name[1:]}"


def sent_by(words, folder):
    """What a source sends, compiled by these words: (class, whether static, selector)."""
    source = words[-1]
    sent = []
    command = [*words, "-fsyntax-only", "-Xclang", "-ast-dump", "-fno-color-diagnostics"]
    with subprocess.Popen(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as clang:
        stack, file = [], ""
        for line in clang.stdout:
            if not (m := AST_LINE.match(line)):
                continue
            depth, kind, rest = len(m[1]), m[2], m[3]
            for name in re.findall(r"[<, ](/[^:<>, ]+):\d+:\d+", rest.split("'")[0]):
                file = name
            while stack and stack[-1]["depth"] >= depth:
                stack.pop()
            above = stack[-1] if stack else None
            node = {"depth": depth, "kind": kind}
            if above and above["kind"] == "ObjCMessageExpr" and "receiver" not in above:
                types = re.findall(r"'([^']*)'", rest)
                above["receiver"] = re.match(r"\w*", types[0] if types else "id")[0]
            elif kind == "ObjCMessageExpr" and file == source and "super (" not in rest:
                node["selector"] = re.search(r"selector=(\S+)", rest)[1]
                node["static"] = "class='" in rest
                if node["static"]:
                    node["receiver"] = re.search(r"class='(\w+)", rest)[1]
                sent.append(node)
            stack.append(node)
    assert clang.returncode == 0, f"clang refuses {source}"
    return {(node.get("receiver", "id"), node["static"], node["selector"]) for node in sent}


def declared_in(text):
    """What a header of ours declares: (class, whether static, selector)."""
    while (without := re.sub(r"\([^()]*\)", "", text)) != text:
        text = without
    for name, body in re.findall(r"^@(?:interface|protocol) (\w+)(.*?)^@end", text, re.MULTILINE | re.DOTALL):
        for sign, words in re.findall(r"^([-+]) ?([^;]*);", body, re.MULTILINE):
            parts = re.findall(r"\w+:", words)
            yield name, sign == "+", "".join(parts) or re.match(r"\w+", words)[0]
        for member in re.findall(r"^@property.*?(\w+);", body, re.MULTILINE):
            yield name, False, member


def names_in(text):
    """The system's names in a source, leaving out its texts and remarks."""
    return set(NAME.findall(re.sub(r'//.*|@?"(?:[^"\\]|\\.)*"', "", text))) - UNLISTED


def wrong_values(values, words, folder):
    """The compiler's words on every enumerator that has another value in our headers."""
    claims = [f"static_assert(static_cast<long long>({name}) == {value}LL);\n" for name, value in values.items()]
    imports = "".join(f"#import <{name}/{name}.h>\n" for name in ("AppKit", "UserNotifications", "CoreServices"))
    with tempfile.TemporaryDirectory() as place:
        probe = pathlib.Path(place) / "probe.mm"
        probe.write_text(imports + "".join(claims), encoding="utf-8")
        _, said = kit.run(*words[:-1], probe, "-fsyntax-only", cwd=folder)
    return [line for line in said.splitlines() if "error:" in line]


def setUpModule():
    kit.need_packages()
    kit.skip_if(not TYPES.is_dir(), "the SDK's declarations were not fetched: script/bootstrap does it where npm is")


class RealSdk(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.sdk = Sdk()
        kit.build_for_the_mac("vorna_tray")
        cls.sources = sorted(kit.SOURCES.glob("*.mm"))
        cls.headers = [file.read_text(encoding="utf-8") for file in (kit.HERE / "headers").rglob("*.h")]
        cls.words = {it: mutants.compile_command(kit.TARGET, "vorna_tray", it) for it in cls.sources}

    def test_everything_that_is_sent_or_declared_exists(self):
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            found = pool.map(lambda it: sent_by(self.words[it], kit.TARGET), self.sources)
        sent = set().union(*found)
        declared = {it for text in self.headers for it in declared_in(text)}
        self.assertGreater(len(sent), 80)
        self.assertGreater(len(declared), 25)
        self.assertEqual(self.sdk.unknown(sent | declared), [])

    def test_every_name_exists_and_has_its_value(self):
        texts = [*self.headers, *(file.read_text(encoding="utf-8") for file in kit.SOURCES.iterdir())]
        names = set().union(*map(names_in, texts))
        values = self.sdk.values_of(names)
        self.assertEqual([name for name in sorted(names) if not self.sdk.knows_name(name)], [])
        self.assertGreater(len(values), 20)
        words = self.words[self.sources[0]]
        self.assertEqual(wrong_values(values, words, kit.TARGET), [])
        another = {"NSEventMaskRightMouseDown": values["NSEventMaskRightMouseDown"] + 1}
        self.assertEqual(len(wrong_values(another, words, kit.TARGET)), 1)

    def test_a_mistake_in_code_and_header_alike_is_seen(self):
        header = "@interface NSImage (Mistaken)\n- (void)setIsTemplate:(BOOL)flag;\n@end\n"
        with tempfile.TemporaryDirectory() as place:
            source = pathlib.Path(place) / "Mistake.mm"
            source.write_text(f"#import <AppKit/AppKit.h>\n{header}void f(NSImage* image) {{\n"
                              "    [image setIsTemplate:YES];\n}\n", encoding="utf-8")
            words = [word for word in self.words[self.sources[0]][:-1] if word != "-Werror"]
            sent = sent_by([*words, str(source)], kit.TARGET)
        for found in (sent, set(declared_in(header))):
            self.assertEqual(self.sdk.unknown(found), ["-[NSImage setIsTemplate:]"])
