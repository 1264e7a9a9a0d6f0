#include "cli/Pipe.h"

#include "platform/ChildDescriptors.h"

#include <array>
#include <cerrno>

#include <fcntl.h>

namespace {

constexpr std::size_t readBlockBytes = 64 * 1024;

int moveOffStandardDescriptors(Descriptor& descriptor) {
    if (descriptor.number() > STDERR_FILENO) {
        return 0;
    }
    const int moved = fcntl(descriptor.number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (moved == -1) {
        return errno;
    }
    descriptor = Descriptor{moved};
    return 0;
}

}

std::expected<Pipe, int> Pipe::open() {
    std::array<int, 2> ends{};
    if (const int error = ChildDescriptors::openPipe(ends)) {
        return std::unexpected{error};
    }
    Pipe pipe{Descriptor{ends[0]}, Descriptor{ends[1]}};
    for (Descriptor* end : {&pipe.reading, &pipe.writing}) {
        if (const int error = moveOffStandardDescriptors(*end)) {
            return std::unexpected{error};
        }
    }
    return pipe;
}

std::string readToEnd(const Descriptor& reading) {
    std::string text;
    std::array<char, readBlockBytes> block{};
    for (;;) {
        const ssize_t count = read(reading.number(), block.data(), block.size());
        if (count > 0) {
            text.append(block.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return text;
        }
    }
}
