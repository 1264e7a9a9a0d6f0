#include "platform/AppInfo.h"

#include "platform/macos/Strings.h"

namespace {

std::optional<QString> informationOf(NSString* key) {
    @autoreleasepool {
        id value = [[NSBundle mainBundle] objectForInfoDictionaryKey:key];
        return [value isKindOfClass:[NSString class]] ? std::optional{Strings::fromNative(value)} : std::nullopt;
    }
}

}

std::optional<QString> AppInfo::shortVersion() {
    return informationOf(@"CFBundleShortVersionString");
}

std::optional<QString> AppInfo::build() {
    return informationOf(@"CFBundleVersion");
}
