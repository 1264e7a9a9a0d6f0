// What the companion uses of CoreText.
#pragma once

typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CTFontDescriptor* CTFontDescriptorRef;

extern "C" {
extern const CFStringRef kCTFontURLAttribute;
CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute);
}
