#pragma once

namespace AccessibilityTrust {

/// Whether the system trusts this process with the accessibility of others. Never asks; false where it is not known.
[[nodiscard]] bool isTrusted();

}
