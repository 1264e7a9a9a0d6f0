"""Declarations of the Mac's whole SDK, made by machine, which script/bootstrap fetches where npm is; and what a source
sends, names and declares, to be held against them.

They say which classes, selectors, functions and constants there are, and the values of enumerators. They say nothing of
nullability, of the widths of integers, or of the release that a name came with."""

import collections
import pathlib
import re
import subprocess
import tempfile

import kit

TYPES = kit.PROJECT / "build" / "macos-sdk-0.4.0" / "package" / "types"

AST_LINE = re.compile(r"^([| `-]*)(\w+) 0x[0-9a-f]+ ?(.*)$")
OWN = re.compile(r"Vorna")
NAME = re.compile(r"\b(?:NS|UN|AE|AX|CT|kAE|kCore|kCT)[A-Z][A-Za-z]\w+\b")
OF_EVERY_CLASS = {"alloc", "init", "class"}
# Inline functions, macros and other names of a type, which the declarations leave out.
UNLISTED = set("""
    NSMakeRect NSMakeRange NSMaxX NSMaxY NSMinX NSMinY NSMidX NSMidY NSWidth NSHeight NSPointInRect NSRect NSPoint NSSize
    NSUInteger NSInteger NSFontWeight NSStringFromRect NSZeroRect AEEventClass AEEventID
""".split())


class Sdk:
    def __init__(self, folder=TYPES):
        self.above = collections.defaultdict(list)
        self.members = collections.defaultdict(set)
        self.enums = collections.defaultdict(dict)
        self.names = set()
        for file in sorted(folder.glob("*.d.ts")):
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

    def unknown(self, uses):
        return sorted(
            f"{'+' if is_static else '-'}[{receiver} {selector}]"
            for receiver, is_static, selector in uses
            if not OWN.match(receiver) and selector not in OF_EVERY_CLASS
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


def values_of(sdk, names):
    """Of each enumerator of one value."""
    return {name: min(sdk.values[name]) for name in names if name not in sdk.members and len(sdk.values[name]) == 1}


def wrong_values(values, words, folder):
    """The compiler's words on every enumerator that has another value in our headers."""
    claims = [f"static_assert(static_cast<long long>({name}) == {value}LL);\n" for name, value in values.items()]
    imports = "".join(f"#import <{name}/{name}.h>\n" for name in ("AppKit", "UserNotifications", "CoreServices"))
    with tempfile.TemporaryDirectory() as place:
        probe = pathlib.Path(place) / "probe.mm"
        probe.write_text(imports + "".join(claims), encoding="utf-8")
        _, said = kit.run(*words[:-1], probe, "-fsyntax-only", cwd=folder)
    return [line for line in said.splitlines() if "error:" in line]
