#include "platform/ChildDescriptors.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace ChildDescriptors {

int openPipe(std::array<int, 2>& ends) {
    if (pipe(ends.data()) != 0) {
        return errno;
    }
    for (const int end : ends) {
        (void)fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    return 0;
}

int inheritNothingElse(posix_spawn_file_actions_t& actions, short& flags) {
    flags = static_cast<short>(flags | POSIX_SPAWN_CLOEXEC_DEFAULT);
    const bool hasStandardInput = fcntl(STDIN_FILENO, F_GETFD) != -1;
    return hasStandardInput ? posix_spawn_file_actions_addinherit_np(&actions, STDIN_FILENO) : 0;
}

}
