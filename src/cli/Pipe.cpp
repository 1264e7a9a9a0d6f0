#include "cli/Pipe.h"

#include "platform/ChildDescriptors.h"

#include <array>
#include <cerrno>
#include <vector>

#include <fcntl.h>
#include <poll.h>

namespace {

constexpr auto readBlockBytes = std::size_t{64} * 1024;
constexpr int waitForEver = -1;
constexpr int ignoredByPoll = -1;

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

/// Of UTF-8; the last character of a text that was cut may be half of one.
void dropLastCharacter(std::string& text) {
    constexpr unsigned char kindBits = 0xC0;
    constexpr unsigned char continuation = 0x80;
    while (!text.empty() && (static_cast<unsigned char>(text.back()) & kindBits) == continuation) {
        text.pop_back();
    }
    if (!text.empty()) {
        text.pop_back();
    }
}

/// Whether there may be more.
bool takeBlock(const Reading& reading) {
    std::array<char, readBlockBytes> block{};
    const ssize_t count = read(reading.from.number(), block.data(), block.size());
    if (count <= 0) {
        return count == -1 && errno == EINTR;
    }
    reading.into.append(block.data(), static_cast<std::size_t>(count));
    if (reading.into.size() < mostBytesRead) {
        return true;
    }
    dropLastCharacter(reading.into);
    return false;
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

void readToEnd(std::initializer_list<Reading> readings) {
    std::vector<pollfd> ends;
    for (const Reading& reading : readings) {
        ends.push_back({.fd = reading.from.number(), .events = POLLIN, .revents = 0});
    }
    for (auto open = ends.size(); open > 0;) {
        if (poll(ends.data(), static_cast<nfds_t>(ends.size()), waitForEver) == -1) {
            if (errno == EINTR) {
                continue;
            }
            return;
        }
        for (std::size_t i = 0; i < ends.size(); ++i) {
            const Reading& reading = std::data(readings)[i];
            if (ends[i].revents != 0 && !takeBlock(reading)) {
                reading.from.close();
                ends[i].fd = ignoredByPoll;
                --open;
            }
        }
    }
}
