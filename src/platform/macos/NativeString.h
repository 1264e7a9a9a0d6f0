#pragma once

#include <QString>

#import <Foundation/Foundation.h>

/// Texts on their way to the system and back, unit by unit, so that nothing is lost.
namespace NativeString {

[[nodiscard]] NSString* from(const QString& text);

/// Empty for nil.
[[nodiscard]] QString toQt(NSString* text);

}
