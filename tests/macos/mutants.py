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
TARGET = kit.WORK / "target"
RUN = kit.WORK / "run"

# By file: the text as it stands, and the mistake in its place.
MISTAKES = {
    "AppInfo.mm": [
        ("CFBundleShortVersionString", "CFBundleVersion"),
        ('@"CFBundleVersion"', '@"CFBundleBuild"'),
        ("[value isKindOfClass:[NSString class]]", "value != nil"),
        ("objectForInfoDictionaryKey", "objectForInfoKey"),
    ],
    "Desktop.mm": [
        ("NSApplicationActivationPolicyAccessory", "NSApplicationActivationPolicyRegular"),
        ("NSApplicationActivationPolicyAccessory", "NSApplicationPolicyAccessory"),
        ("QString::fromLatin1(url.toEncoded())", "url.toString()"),
        ("[[NSWorkspace sharedWorkspace] openURL:address]", "[[NSWorkspace sharedWorkspace] openFile:address]"),
        ("address != nil", "address == nil"),
        ("activateIgnoringOtherApps:YES", "activateIgnoringOtherApps:NO"),
        ("    window.requestActivate();\n", ""),
        ("windowStates() & ~", "windowStates() | "),
        ("        rememberProgramInFront();\n", "        (void)rememberProgramInFront;\n"),
        ("        comeToTheUser(window);\n", "        (void)comeToTheUser;\n"),
        ("        rememberProgramInFront();\n        comeToTheUser(window);\n"
         "        [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];\n",
         "        comeToTheUser(window);\n"
         "        [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];\n"
         "        rememberProgramInFront();\n"),
        ("front != nil && !", "!"),
        ("![front isEqual:", "[front isEqual:"),
        ("![front isEqual:[NSRunningApplication currentApplication]]", "true"),
        ("BehaviorMoveToActiveSpace}", "BehaviorCanJoinAllSpaces}"),
        ("BehaviorFullScreenAuxiliary}", "BehaviorFullScreenPrimary}"),
        ("![own isActive] || ", ""),
        ("|| isNeeded", "|| (isNeeded && false)"),
        ("        [own yieldActivationToApplication:programBefore];\n", ""),
        ("yieldActivationToApplication", "yieldActivationTo"),
        ("        [programBefore activateWithOptions:0];\n", ""),
        ("activateWithOptions:0", "activateWithOptions:NSApplicationActivateAllWindows"),
        ("        programBefore = nil;\n", ""),
        ("AXIsProcessTrusted()", "true"),
        ("AXIsProcessTrusted()", "AXIsTrusted()"),
        ("Qt::Window |", "Qt::Tool |"),
        ("| Qt::WindowStaysOnTopHint", ""),
        ("return false", "return true"),
        ("return true", "return false"),
        ("malloc_zone_pressure_relief(nullptr, 0)", "malloc_zone_pressure_relief(nullptr, 1)"),
        ("malloc_zone_pressure_relief", "malloc_zone_relief"),
    ],
    "NotificationCenter.mm": [
        ("UNAuthorizationOptionBadge | ", ""),
        ("| UNAuthorizationOptionSound", "& UNAuthorizationOptionSound"),
        ("UNAuthorizationOptionAlert\n", "UNAuthorizationOptionAlerts\n"),
        ("granted ? 1 : 0", "1"),
        ("answer(granted != 0)", "answer(granted == 0)"),
        ("Authorization::provisional}", "Authorization::authorized}"),
        ("ephemeralStatus = 4", "ephemeralStatus = 5"),
        ("std::pair{ephemeralStatus,", "std::pair{long{UNAuthorizationStatusEphemeral},"),
        ("? Authorization::unrecognized", "? Authorization::notDetermined"),
        ("content.title = NativeString::from(request.title)", "content.title = NativeString::from(request.body)"),
        ("content.body = ", "content.subtitle = "),
        ("    content.sound = [UNNotificationSound defaultSound];\n", ""),
        ("NativeString::from(request.identifier)", "[[NSUUID UUID] UUIDString]"),
        ("trigger:nil", "trigger:[[UNNotificationTrigger alloc] init]"),
        ("UNMutableNotificationContent* content = ", "UNNotificationContent* content = "),
        ("    dispatch_async(dispatch_get_main_queue(), ^{\n", "    ({\n"),
        ("const std::weak_ptr<PendingAnswers> pending = m_pending;", "const auto pending = m_pending.get();"),
        ("std::weak_ptr<PendingAnswers> pending, PendingAnswers::Ticket", "std::shared_ptr<PendingAnswers> pending, int"),
        ("answers->deliver(ticket, value)", "answers->deliver(ticket, 0)"),
        ("[[NSBundle mainBundle] bundleIdentifier] == nil", "false"),
        ("[[NSBundle mainBundle] bundleIdentifier] == nil", "true"),
        ("{ answer(Authorization::notDetermined); }", "{ answer(Authorization::denied); }"),
        ("override { done(); }", "override { (void)done; }"),
        ("{ answer(false); }", "{ answer(true); }"),
        ("    m_center.delegate = m_delegate;\n", ""),
        ("    m_center.delegate = nil;\n", ""),
        ("willPresentNotification:(UNNotification*)", "willPresent:(UNNotification*)"),
        ("UNNotificationPresentationOptionBanner | ", ""),
        ("withCompletionHandler:^(NSError*)", "completionHandler:^(NSError*)"),
        ("completionHandler:^(BOOL granted, NSError*)", "completionHandler:^(NSError* granted)"),
        ("(long) { done(); }", "(long) { (void)done; }"),
        ("deliver(pending, ticket, settings.authorizationStatus)", "deliver(pending, ticket, 2)"),
    ],
    "PendingAnswers.cpp": [
        ("++m_latest", "m_latest"),
        ("!waiting.empty()", "waiting.empty()"),
        ("m_answers.extract(ticket)", "m_answers.extract(1)"),
    ],
    "SingleInstance.mm": [
        ('emit messageReceived(u"panel"_s)', 'emit messageReceived(u"settings"_s)'),
        ("andEventID:kAEReopenApplication]", "andEventID:kCoreEventClass]"),
        ("@selector(handleReopen:withReply:)", "@selector(handleReopen:)"),
        ("    [[NSNotificationCenter defaultCenter] removeObserver:self];\n", ""),
        ("~OpenedOnce() override { [m_listener stop]; }", "~OpenedOnce() override {}"),
        ("name:NSApplicationWillFinishLaunchingNotification", "name:@\"other\""),
        ("    m_reopened();\n", ""),
        ("isFinishedLaunching])", "isFinishedLaunching] || true)"),
        ("            [self listen];\n", ""),
        ("return std::make_unique<OpenedOnce>();", "return nullptr;"),
    ],
    "StatusItem.mm": [
        ("NSVariableStatusItemLength", "NSSquareStatusItemLength"),
        ("[image setTemplate:YES]", "[image setTemplate:NO]"),
        ("[image setTemplate:YES]", "[image setIsTemplate:YES]"),
        ("    button.title = NativeString::from(m_title);\n", ""),
        ("    [button setAccessibilityTitle:NativeString::from(m_title)];\n", ""),
        ("        [button setAccessibilityValue:description];\n", ""),
        ("        button.toolTip = description;\n", ""),
        ("accessibilityDescription:description", "accessibilityDescription:nil"),
        ("image == nil ? NSNoImage : NSImageOnly", "NSImageOnly"),
        ("        button.image = image;\n", ""),
        ("symbolName == m_symbolName && ", "symbolName == m_symbolName || "),
        ("    [button sendActionOn:clicks];\n", ""),
        ("    m_meaning = meaning;\n", ""),
        ("button.action = @selector(perform:)", "button.action = @selector(performs:)"),
        ("button.target = actionFor([this] { buttonPressed(); })", "button.target = actionFor([this] { showMenu(); })"),
        ("clicks = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown", "clicks = NSEventMaskLeftMouseDown"),
        ("event != nil &&", "event == nil ||"),
        ("event.type == NSEventTypeRightMouseDown", "event.type == NSEventTypeLeftMouseDown"),
        ("NSEventModifierFlagControl) != 0", "NSEventModifierFlagControl) == 0"),
        ("    m_item.menu = nil;\n", ""),
        ("    m_item.menu = m_menu;\n", ""),
        ("    [m_menu addItem:entry];\n", ""),
        ("&StatusItem::settingsChosen", "&StatusItem::quitChosen"),
        ("NSMaxY(primary.frame) - NSMaxY(*place)", "NSMinY(*place)"),
        ("NSMaxY(primary.frame) - NSMaxY(*place)", "NSMaxY(primary.frame) - NSMinY(*place)"),
        ("[[NSScreen screens] firstObject]", "[NSScreen mainScreen]"),
        ("[button convertRect:button.bounds toView:nil]", "button.bounds"),
        ("toView:nil", "toView:button"),
        ("!place || primary == nil", "primary == nil"),
        ("!own || !NSPointInRect", "!own || NSPointInRect"),
        ("| NSEventMaskOtherMouseDown", ""),
        ("m_monitor != nil", "m_monitor == nil"),
        ("        [[NSStatusBar systemStatusBar] removeStatusItem:m_item];\n", ""),
        ("        m_item.button.target = nil;\n", ""),
        ("NSStatusBarButton* button = m_item.button;", "NSMenu* button = m_item.button;"),
        ("handler:^(NSEvent*) {", "handler:^(NSString*) {"),
        ("action:@selector(perform:)\n", "\n"),
    ],
    "NativeString.mm": [
        ("text == nil", "text != nil"),
        ("length:static_cast<NSUInteger>(text.size())", "length:static_cast<NSUInteger>(text.toUtf8().size())"),
        ("NSMakeRange(0, text.length)", "NSMakeRange(0, text.length / 2)"),
        ("text.utf16()", "text.toUtf8().constData()"),
    ],
    "Symbol.mm": [
        ("? NSFontWeightSemibold : NSFontWeightRegular", "? NSFontWeightRegular : NSFontWeightSemibold"),
        ("size * pointSizeOfSide", "size"),
        ("return [plain imageWithSymbolConfiguration:look];", "(void)look;\n    return plain;"),
        ("image != nil", "image == nil"),
        ("side / natural.width(), ", ""),
        ("std::min({scale,", "std::max({scale,"),
        ("(side - size.height()) / 2", "0"),
        ("CompositionMode_SourceIn", "CompositionMode_Source"),
        ("            tint(picture, colour);\n", ""),
        ("    [NSGraphicsContext restoreGraphicsState];\n", ""),
        ("    [NSGraphicsContext setCurrentContext:context];\n", ""),
        ("    [context flushGraphics];\n", ""),
        ("result.setDevicePixelRatio(scale)", "result.setDevicePixelRatio(1)"),
        ("std::lround(size * scale)", "std::lround(size)"),
        ("bitsPerPixel:32", "bitsPerPixel:24"),
        ("    picture.fill(Qt::transparent);\n", "    picture.fill(Qt::white);\n"),
        ("fraction:1]", "fraction:0]"),
    ],
    "SystemSettings.cpp": [
        ("Privacy_Accessibility", "Accessibility"),
        ("Privacy_AllFiles", "Privacy_DevTools"),
        ("link.isValid() ?", "!link.isValid() ?"),
        ("    Desktop::openUrl(link);\n", "    (void)link;\n"),
    ],
    "UserDefaults.mm": [
        ("[[NSUserDefaults standardUserDefaults] boolForKey:NativeString::from(key)]", "true"),
        ("setBool:value forKey:NativeString::from(key)", 'setBool:value forKey:@"daypart"'),
        ("setObject:NativeString::from(value) forKey:NativeString::from(key)",
         "setObject:NativeString::from(key) forKey:NativeString::from(value)"),
        ("removeObjectForKey", "removePersistentDomainForName"),
        ("value == nil ? std::nullopt", "value != nil ? std::nullopt"),
        ("stringForKey", "textForKey"),
    ],
}

# Words of the program's link line without which it must not link.
LINK_WORDS = ["AppKit", "ApplicationServices", "Foundation", "UserNotifications"]

# Objects of the libraries, without any one of which the program must not link.
LIBRARIES = {
    "libvorna_platform.a": [
        "AppInfo.mm", "ChildDescriptors.cpp", "Desktop.mm", "NotificationCenter.mm", "NativeWindow.mm", "SingleInstance.mm", "Symbol.mm", "SystemSettings.cpp", "UserDefaults.mm",
    ],
    "libvorna_tray.a": ["StatusItem.mm"],
}


def commands(folder, target):
    done, said = kit.run("ninja", "-C", folder, "-t", "commands", target)
    assert done, said
    return [line for line in said.splitlines() if " -o " in line or ".a " in line]


def command_for(folder, target, source):
    """The words of the command that compiles a file, without a cache in front."""
    line = next(line for line in commands(folder, target) if f"-c {source}" in line)
    words = shlex.split(line)
    return words[next(index for index, word in enumerate(words) if word.endswith("clang++-19")) :]


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
        for name in MISTAKES:
            source = SOURCES / name
            library = "vorna_tray" if name in LIBRARIES["libvorna_tray.a"] else "vorna_platform"
            self.compile_for_target[name] = command_for(TARGET, f"src/lib{library}.a", source)
            self.compile_to_run[name] = command_for(RUN, "libplatform.a", source)
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
        if old not in text:
            raise LookupError(f"{name} has no longer {old!r}")
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
    return [(name, old, new) for name, pairs in MISTAKES.items() for old, new in pairs]


def one_mistake_a_file():
    """For a quick look: one in each file of Objective-C++."""
    return [(name, *pairs[0]) for name, pairs in MISTAKES.items() if name.endswith(".mm")]


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
