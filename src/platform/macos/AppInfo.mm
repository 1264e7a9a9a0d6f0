#include "platform/AppInfo.h"

#include "platform/macos/NativeString.h"

static std::optional<QString> informationOf(NSString* key) {
    id value = [[NSBundle mainBundle] objectForInfoDictionaryKey:key];
    return [value isKindOfClass:[NSString class]] ? std::optional{NativeString::toQt(value)} : std::nullopt;
}

QString AppInfo::name() {
    return QStringLiteral("vorna for Mac");
}

QString AppInfo::architecture() {
    return QStringLiteral("arm64 · Apple Silicon");
}

QString AppInfo::requirement() {
    return QStringLiteral("Apple Silicon only. ");
}

std::optional<QString> AppInfo::shortVersion() {
    return informationOf(@"CFBundleShortVersionString");
}

std::optional<QString> AppInfo::build() {
    return informationOf(@"CFBundleVersion");
}
