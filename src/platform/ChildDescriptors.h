#pragma once

#include <array>

#include <spawn.h>

/// Keeps this process's descriptors out of the children it starts. Plain POSIX; callable on any thread. Both functions
/// answer 0, or the `errno` of what failed.
namespace ChildDescriptors {

/// Opens a pipe (reading end first) that no child inherits, whoever starts it.
[[nodiscard]] int openPipe(std::array<int, 2>& ends);

/// Makes the child started with these inherit standard input and what `actions` opens for it, and nothing else. To be
/// called after all other actions were added; sets attribute flags in `flags`.
[[nodiscard]] int inheritNothingElse(posix_spawn_file_actions_t& actions, short& flags);

}
