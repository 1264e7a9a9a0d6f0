"""Makes what stands in for the Mac's system where it is compiled and linked for without one: `make_kit.py FOLDER`, good
for finding out whether a source compiles and links, and for nothing else.

`sysroot` gets C headers: musl's, cut down to the names that macOS has, with the integer types of macOS, and with the few
headers and declarations added that only macOS has. `stubs` gets libraries: what Qt, QCoro and the C++ library export is
read from this machine's own builds of them, whose names are made by the same rules; what the system's frameworks export,
from the headers that stand for theirs.
"""

import pathlib
import re
import shutil
import subprocess
import sys

MUSL = next(pathlib.Path("/usr/include").glob("*-linux-musl"), None)
MUSL_LIBC = next(pathlib.Path("/usr/lib").glob("*-linux-musl/libc.so"), None)
LIBRARIES = pathlib.Path("/usr/lib/x86_64-linux-gnu")
CXX = pathlib.Path("/usr/lib/llvm-19/lib")
GNUSTEP = pathlib.Path("/usr/include/GNUstep")
DECLARED = pathlib.Path(__file__).resolve().parents[1] / "headers"

# Stubs in the place of imported targets: Qt6::Core becomes libQt6Core.tbd.
PACKAGES = ["Qt6Core", "Qt6Gui", "Qt6Widgets", "Qt6Network", "QCoro6Core"]

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

# Framework: the folders of headers that stand for its own here. Whatever they declare it exports.
FRAMEWORKS = {
    "CoreFoundation": [],
    "Foundation": [GNUSTEP / "Foundation"],
    "AppKit": [GNUSTEP / "AppKit", DECLARED / "AppKit"],
    "UserNotifications": [DECLARED / "UserNotifications"],
    "ApplicationServices": [DECLARED / "ApplicationServices"],
    "CoreText": [DECLARED / "CoreText"],
}
EVERYWHERE = {"___CFConstantStringClassReference", "__NSRangeExceptionRaise"}

# What macOS has of musl's headers. Whatever is not named here cannot be included.
HEADERS = """
    aio alloca assert complex cpio ctype dirent dlfcn err errno fcntl features fenv float fnmatch fts ftw getopt glob grp
    iconv ifaddrs inttypes iso646 langinfo libgen limits locale math memory monetary netdb nl_types paths poll pthread
    pwd regex sched search semaphore setjmp signal spawn stdarg stdbool stddef stdint stdio stdlib string strings syslog
    tar termios tgmath time ucontext ulimit unistd utime utmpx wchar wctype wordexp
    arpa/inet net/if netinet/in netinet/tcp
    sys/fcntl sys/file sys/ioctl sys/ipc sys/mman sys/msg sys/param sys/poll sys/resource sys/select sys/sem sys/shm
    sys/signal sys/socket sys/stat sys/statvfs sys/time sys/times sys/ttydefaults sys/types sys/ucontext sys/uio sys/un
    sys/utsname sys/wait
""".split()

# Where a type of musl's for this machine is another one on macOS.
TYPES = {
    "time_t": "long",
    "suseconds_t": "int",
    "intmax_t": "long",
    "uintmax_t": "unsigned long",
    "mode_t": "unsigned short",
    "nlink_t": "unsigned short",
    "dev_t": "int",
    "fsblkcnt_t": "unsigned int",
    "fsfilcnt_t": "unsigned int",
}

PRESENT = ["OS_MAC", "OS_OSX", "CPU_ARM64", "RT_64_BIT", "RT_LITTLE_ENDIAN"]

ADDED = {
    "machine/endian.h": None,  # musl's <endian.h>, under the name that it has on macOS
    "sys/cdefs.h": """
#define __BEGIN_DECLS extern "C" {
#define __END_DECLS }
""",
    "TargetConditionals.h": "\n".join(
        f"#define TARGET_{name} {int(name in PRESENT)}"
        for name in [*PRESENT, *"OS_IPHONE OS_IOS OS_TV OS_WATCH OS_VISION OS_MACCATALYST OS_SIMULATOR OS_EMBEDDED".split()]
    ),
    "AvailabilityMacros.h": """
#define MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define MAC_OS_X_VERSION_MAX_ALLOWED 140000
""",
    "Availability.h": """
#include <AvailabilityMacros.h>
#define __MAC_OS_X_VERSION_MIN_REQUIRED MAC_OS_X_VERSION_MIN_REQUIRED
#define __MAC_OS_X_VERSION_MAX_ALLOWED MAC_OS_X_VERSION_MAX_ALLOWED
#define __MAC_10_12 101200
#define __MAC_10_13 101300
#define __MAC_10_14 101400
#define __MAC_10_15 101500
#define __MAC_11_0 110000
#define __MAC_12_0 120000
#define __MAC_13_0 130000
#define __MAC_14_0 140000
#define __OSX_AVAILABLE_STARTING(...)
#define API_AVAILABLE(...)
#define API_DEPRECATED(...)
#define API_UNAVAILABLE(...)
""",
    "Block.h": """
extern "C" void* _Block_copy(const void*);
extern "C" void _Block_release(const void*);
""",
    # Classes of characters, and the locale functions with an explicit locale, as the BSDs have them.
    "runetype.h": """
#define _CTYPE_A 0x100L
#define _CTYPE_C 0x200L
#define _CTYPE_D 0x400L
#define _CTYPE_G 0x800L
#define _CTYPE_L 0x1000L
#define _CTYPE_P 0x2000L
#define _CTYPE_S 0x4000L
#define _CTYPE_U 0x8000L
#define _CTYPE_X 0x10000L
#define _CTYPE_B 0x20000L
#define _CTYPE_R 0x40000L
typedef unsigned int __uint32_t;
typedef int __darwin_ct_rune_t;
struct _RuneLocale {
    __uint32_t __runetype[256];
};
extern "C" _RuneLocale _DefaultRuneLocale;
""",
    "xlocale.h": """
#include <ctype.h>
#include <locale.h>
#include <runetype.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <wchar.h>
#include <wctype.h>
#define MB_CUR_MAX_L(locale) 4
extern "C" {
wint_t btowc_l(int, locale_t);
int wctob_l(wint_t, locale_t);
size_t wcsnrtombs_l(char*, const wchar_t**, size_t, size_t, mbstate_t*, locale_t);
size_t wcrtomb_l(char*, wchar_t, mbstate_t*, locale_t);
size_t mbsnrtowcs_l(wchar_t*, const char**, size_t, size_t, mbstate_t*, locale_t);
size_t mbrtowc_l(wchar_t*, const char*, size_t, mbstate_t*, locale_t);
int mbtowc_l(wchar_t*, const char*, size_t, locale_t);
size_t mbrlen_l(const char*, size_t, mbstate_t*, locale_t);
size_t mbsrtowcs_l(wchar_t*, const char**, size_t, mbstate_t*, locale_t);
lconv* localeconv_l(locale_t);
int snprintf_l(char*, size_t, locale_t, const char*, ...);
int asprintf_l(char**, locale_t, const char*, ...);
int sscanf_l(const char*, locale_t, const char*, ...);
float strtof_l(const char*, char**, locale_t);
double strtod_l(const char*, char**, locale_t);
long double strtold_l(const char*, char**, locale_t);
long long strtoll_l(const char*, char**, int, locale_t);
unsigned long long strtoull_l(const char*, char**, int, locale_t);
}
""",
}


def with_types_of_macos(text):
    text = text.replace("#define _Int64 long\n", "#define _Int64 long long\n")
    for name, definition in TYPES.items():
        text = re.sub(rf"^typedef [\w ]+?\s+{name};$", f"typedef {definition} {name};", text, flags=re.MULTILINE)
    return text


def write_header(folder, name, text):
    file = folder / name
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(text.replace("<endian.h>", "<machine/endian.h>"), encoding="utf-8")


def make_sysroot(folder):
    shutil.rmtree(folder, ignore_errors=True)
    for name in [f"{header}.h" for header in HEADERS]:
        write_header(folder, name, (MUSL / name).read_text(encoding="utf-8"))
    for file in (MUSL / "bits").iterdir():
        write_header(folder, f"bits/{file.name}", with_types_of_macos(file.read_text(encoding="utf-8")))
    for name, text in ADDED.items():
        write_header(folder, name, (MUSL / "endian.h").read_text(encoding="utf-8") if text is None else "#pragma once\n" + text)


def declared_in(folders):
    """The constants and functions, and the classes."""
    text = "\n".join(file.read_text("utf-8", "replace") for folder in folders for file in sorted(folder.glob("*.h")))
    names = {"_" + name for name in re.findall(r"\bk?[A-Z]{2}\w+", text)}
    return names, set(re.findall(r"^@interface (?:GS_GENERIC_CLASS\()?(\w+)[^:\n]*:", text, re.MULTILINE))


def exports_of(*libraries):
    """What the given shared libraries define, with the underscore that every name has on macOS."""
    names = set()
    for library in libraries:
        answer = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True)
        names |= {"_" + line.split()[2].split("@")[0] for line in answer.stdout.splitlines() if len(line.split()) == 3}
    # A mark of this machine's C++ library, in the name of each function that returns one of its strings.
    return {name.replace("B5cxx11", "") for name in names}


def write_stub(file, install_name, symbols, classes=()):
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


def make_stubs(folder):
    for name in PACKAGES:
        write_stub(folder / f"lib{name}.tbd", f"@rpath/lib{name}.dylib", exports_of(LIBRARIES / f"lib{name}.so"))
    cxx = exports_of(CXX / "libc++.so.1", CXX / "libc++abi.so.1") | CXX_ELSEWHERE
    write_stub(folder / "libc++.tbd", "/usr/lib/libc++.1.dylib", cxx)
    write_stub(folder / "libSystem.tbd", "/usr/lib/libSystem.B.dylib", exports_of(MUSL_LIBC) | set(SYSTEM))
    write_stub(folder / "libobjc.tbd", "/usr/lib/libobjc.A.dylib", OBJECTIVE_C, ["NSObject"])
    for name, folders in FRAMEWORKS.items():
        path = f"{name}.framework/Versions/A/{name}"
        symbols, classes = declared_in(folders) if folders else (EVERYWHERE, [])
        write_stub(folder / f"{name}.framework/{name}.tbd", f"/System/Library/Frameworks/{path}", symbols, classes)


if __name__ == "__main__":
    make_sysroot(pathlib.Path(sys.argv[1]) / "sysroot")
    make_stubs(pathlib.Path(sys.argv[1]) / "stubs")
