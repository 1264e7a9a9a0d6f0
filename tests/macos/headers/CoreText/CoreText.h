#pragma once

typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CTFontDescriptor* CTFontDescriptorRef;
extern "C" const CFStringRef kCTFontURLAttribute;
extern "C" CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute);
