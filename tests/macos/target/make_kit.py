"""Makes what stands in for the Mac's system where it is compiled and linked for without one: `make_kit.py FOLDER`, good
for finding out whether a source compiles and links, and for nothing else.

`sysroot` gets C headers: musl's, cut down to the names that macOS has, with the integer types of macOS, and with the
few headers and declarations added that only macOS has. `stubs` gets empty libraries.
"""

import pathlib
import re
import shutil
import sys

MUSL = next(pathlib.Path("/usr/include").glob("*-linux-musl"), None)

# What is linked against; it exports nothing, since the linker leaves open whatever is not ours.
LIBRARIES = """
    AppKit.framework/AppKit ApplicationServices.framework/ApplicationServices CoreText.framework/CoreText
    Foundation.framework/Foundation UserNotifications.framework/UserNotifications libQt libSystem
""".split()
STUB = "--- !tapi-tbd\ntbd-version: 4\ntargets: [ arm64-macos ]\ninstall-name: '/{}'\n...\n"

# What is needed of musl's headers, all of which macOS has. Whatever is not named here cannot be included.
HEADERS = """
    alloca assert ctype dirent errno fcntl features float inttypes limits locale math netdb netinet/in nl_types poll
    pthread pwd sched setjmp signal spawn stdarg stdbool stddef stdint stdio stdlib string strings time unistd wchar
    wctype
    sys/ioctl sys/param sys/resource sys/select sys/socket sys/stat sys/time sys/types sys/un sys/wait
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

ADDED = {
    "machine/endian.h": None,  # musl's <endian.h>, under the name that it has on macOS
    "TargetConditionals.h": "#define TARGET_OS_MAC 1\n#define TARGET_OS_OSX 1\n",
    "Block.h": "",  # GNUstep's headers ask for it
    "AvailabilityMacros.h": """
#define MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define MAC_OS_X_VERSION_MAX_ALLOWED 140000
""",
    "Availability.h": """
#include <AvailabilityMacros.h>
#define __MAC_OS_X_VERSION_MIN_REQUIRED MAC_OS_X_VERSION_MIN_REQUIRED
#define __MAC_OS_X_VERSION_MAX_ALLOWED MAC_OS_X_VERSION_MAX_ALLOWED
""",
    # Classes of characters, and the locale functions with an explicit locale, as the BSDs have them.
    "runetype.h": """
typedef unsigned int __uint32_t;
typedef int __darwin_ct_rune_t;
struct _RuneLocale {
    __uint32_t __runetype[256];
};
extern "C" _RuneLocale _DefaultRuneLocale;
"""
    + "".join(f"#define _CTYPE_{kind} {0x100 << place}L\n" for place, kind in enumerate("ACDGLPSUXBR")),
    "xlocale.h": """
#include <locale.h>
#include <runetype.h>
#define MB_CUR_MAX_L(locale) 4
extern "C" {
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


def write(folder, name, text):
    file = folder / name
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(text.replace("<endian.h>", "<machine/endian.h>"), encoding="utf-8")


def make_sysroot(folder):
    shutil.rmtree(folder, ignore_errors=True)
    for name in [f"{header}.h" for header in HEADERS]:
        write(folder, name, (MUSL / name).read_text(encoding="utf-8"))
    for file in (MUSL / "bits").iterdir():
        write(folder, f"bits/{file.name}", with_types_of_macos(file.read_text(encoding="utf-8")))
    for name, text in ADDED.items():
        endian = (MUSL / "endian.h").read_text(encoding="utf-8")
        write(folder, name, endian if text is None else "#pragma once\n" + text)


if __name__ == "__main__":
    make_sysroot(pathlib.Path(sys.argv[1]) / "sysroot")
    for library in LIBRARIES:
        write(pathlib.Path(sys.argv[1]) / "stubs", f"{library}.tbd", STUB.format(library))
