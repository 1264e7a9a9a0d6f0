"""Makes stub libraries to link for macOS against: `make_stubs.py FOLDER`.

What Qt, QCoro and the C++ library export is read from this machine's own builds of them, whose names are made by the
same rules; what the system's frameworks export is listed here, and only what the companion uses of them.
"""

import pathlib
import subprocess
import sys

LIBRARIES = pathlib.Path("/usr/lib/x86_64-linux-gnu")
MUSL = next(pathlib.Path("/usr/lib").glob("*-linux-musl"), None)
CXX = pathlib.Path("/usr/lib/llvm-19/lib")

# Stubs in the place of imported targets: Qt6::Core becomes libQt6Core.tbd.
PACKAGES = {
    name: LIBRARIES / f"lib{name}.so"
    for name in ("Qt6Core", "Qt6Gui", "Qt6Widgets", "Qt6Network", "Qt6Svg", "Qt6Test", "QCoro6Core")
}

SYSTEM = """
    dyld_stub_binder __Block_copy __Block_release __Block_object_assign __Block_object_dispose __NSConcreteStackBlock
    __NSConcreteGlobalBlock __Unwind_Resume __tlv_bootstrap ___stack_chk_fail ___stack_chk_guard _bzero ___memcpy_chk
    ___maskrune __DefaultRuneLocale _memset_pattern16 _dispatch_async _dispatch_get_main_queue __dispatch_main_q
    _posix_spawn_file_actions_addinherit_np ___cxa_atexit ___error _malloc_zone_pressure_relief
""".split()

OBJECTIVE_C = [
    "_objc_" + name
    for name in """
    alloc alloc_init allocWithZone autorelease autoreleasePoolPop autoreleasePoolPush autoreleaseReturnValue begin_catch
    claimAutoreleasedReturnValue copyWeak destroyWeak end_catch enumerationMutation exception_throw getClass getProperty
    initWeak loadWeakRetained msgSend msgSendSuper2 opt_class opt_isKindOfClass opt_new opt_respondsToSelector opt_self
    release retain retainAutorelease retainAutoreleaseReturnValue retainAutoreleasedReturnValue retainBlock
    setProperty_nonatomic_copy storeStrong storeWeak unsafeClaimAutoreleasedReturnValue
""".split()
    + [f"{action}_x{register}" for action in ("retain", "release") for register in range(29)]
] + ["__objc_empty_cache", "___objc_personality_v0", "_objc_ehtype_vtable"]

# The C++ library waits on 64 bits there.
CXX_ELSEWHERE = {"__ZNSt3__120__libcpp_atomic_waitEPVKvx"}

# Framework: (symbols, classes).
FRAMEWORKS = {
    "CoreFoundation": (
        ["___CFConstantStringClassReference"],
        ["NSArray", "NSData", "NSDictionary", "NSException", "NSMutableArray", "NSNumber"],
    ),
    "Foundation": (
        ["__NSRangeExceptionRaise"],  # in GNUstep's inline NSMakeRange()
        ["NSAppleEventManager", "NSBundle", "NSNotificationCenter", "NSString", "NSURL", "NSUserDefaults"],
    ),
    "AppKit": (
        [
            "_NSApplicationDidFinishLaunchingNotification",
            "_NSApplicationWillFinishLaunchingNotification",
            "_NSDeviceRGBColorSpace",
            "_NSFontWeightRegular",
            "_NSFontDescriptorSystemDesignMonospaced",
            "_NSFontDescriptorSystemDesignRounded",
            "_NSFontWeightSemibold",
            "_NSMenuDidBeginTrackingNotification",
        ],
        """
        NSApplication NSBitmapImageRep NSEvent NSFont NSGraphicsContext NSImage NSImageSymbolConfiguration NSMenu NSMenuItem
        NSRunningApplication NSScreen NSStatusBar NSStatusItem NSWorkspace
        NSWorkspaceOpenConfiguration
        """.split(),
    ),
    "UserNotifications": (
        [],
        ["UNMutableNotificationContent", "UNNotificationRequest", "UNNotificationSound", "UNUserNotificationCenter"],
    ),
    "ApplicationServices": (["_AXIsProcessTrusted"], []),
    "CoreText": (["_CTFontDescriptorCopyAttribute", "_kCTFontURLAttribute"], []),
}


def exports_of(*libraries):
    """What the given shared libraries define, with the underscore that every name has on macOS."""
    names = set()
    for library in libraries:
        answer = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True)
        names |= {"_" + line.split()[2].split("@")[0] for line in answer.stdout.splitlines() if len(line.split()) == 3}
    # A mark of this machine's C++ library, in the name of each function that returns one of its strings.
    return {name.replace("B5cxx11", "") for name in names}


def write(file, install_name, symbols, classes=()):
    file.parent.mkdir(parents=True, exist_ok=True)
    exports = [
        f"    {kind}: [ {', '.join(repr(name) for name in sorted(names))} ]\n"
        for kind, names in (("symbols", symbols), ("objc-classes", classes))
        if names
    ]
    file.write_text(
        "--- !tapi-tbd\ntbd-version: 4\ntargets: [ arm64-macos ]\n"
        f"install-name: '{install_name}'\nexports:\n  - targets: [ arm64-macos ]\n{''.join(exports)}...\n",
        encoding="utf-8",
    )


def make(folder):
    for name, library in PACKAGES.items():
        if library.exists():
            write(folder / f"lib{name}.tbd", f"@rpath/lib{name}.dylib", exports_of(library))
    write(folder / "libc++.tbd", "/usr/lib/libc++.1.dylib", 
          exports_of(CXX / "libc++.so.1", CXX / "libc++abi.so.1") | CXX_ELSEWHERE)
    write(folder / "libSystem.tbd", "/usr/lib/libSystem.B.dylib", exports_of(MUSL / "libc.so") | set(SYSTEM))
    write(folder / "libobjc.tbd", "/usr/lib/libobjc.A.dylib", OBJECTIVE_C, ["NSObject"])
    for name, (symbols, classes) in FRAMEWORKS.items():
        path = f"{name}.framework/Versions/A/{name}"
        write(folder / f"{name}.framework/{name}.tbd", f"/System/Library/Frameworks/{path}", symbols, classes)


if __name__ == "__main__":
    make(pathlib.Path(sys.argv[1]))
