#include "platform/AppInfo.h"

#include "platform/macos/NativeString.h"

namespace {

std::optional<QString> informationOf(NSString* key) {
    @autoreleasepool {
        id value = [[NSBundle mainBundle] objectForInfoDictionaryKey:key];
        return [value isKindOfClass:[NSString class]] ? std::optional{NativeString::toQt(value)} : std::nullopt;
    }
}

}

std::optional<QString> AppInfo::shortVersion() {
    return informationOf(@"CFBundleShortVersionString");
}

std::optional<QString> AppInfo::build() {
    return informationOf(@"CFBundleVersion");
}
