#include "platform/ChildDescriptors.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace ChildDescriptors {

int openPipe(std::array<int, 2>& ends) {
    return pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno;
}

int inheritNothingElse(posix_spawn_file_actions_t& actions, short& /*flags*/) {
    return posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
}

}
