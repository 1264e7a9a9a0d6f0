#include "cli/Pipe.h"

#include "cli/EventLoopWait.h"
#include "cli/Utf8Text.h"
#include "platform/ChildDescriptors.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t maxBytes = 16UL * 1024 * 1024;
constexpr std::size_t blockBytes = 64UL * 1024;

EventLoopWait readable(int descriptor) {
    return EventLoopWait{[descriptor](const EventLoopWait::Callback& callback) {
        auto* notifier = new QSocketNotifier{descriptor, QSocketNotifier::Read, QCoreApplication::instance()};
        QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, callback] {
            notifier->setEnabled(false);
            notifier->deleteLater();
            callback();
        });
    }};
}

}

std::expected<Pipe, int> Pipe::open() {
    std::array<int, 2> ends{};
    if (const int error = ChildDescriptors::openPipe(ends)) {
        return std::unexpected{error};
    }
    Pipe pipe{Descriptor{ends[0]}, Descriptor{ends[1]}};
    for (Descriptor* end : {&pipe.reading, &pipe.writing}) {
        if (end->number() > STDERR_FILENO) {
            continue;
        }
        *end = Descriptor{fcntl(end->number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1)};
        if (end->number() == -1) {
            return std::unexpected{errno};
        }
    }
    (void)fcntl(pipe.reading.number(), F_SETFL, O_NONBLOCK);
    return pipe;
}

QCoro::Task<std::optional<QString>> readText(Descriptor from) {
    Utf8Text text;
    const auto block = std::make_unique<std::array<char, blockBytes>>();
    std::size_t left = maxBytes;
    for (bool isOpen = true; isOpen && left > 0;) {
        co_await readable(from.number());
        const ssize_t count = read(from.number(), block->data(), std::min(left, blockBytes));
        text.append({block->data(), std::max<ssize_t>(count, 0)});
        left -= static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        isOpen = count > 0 || (count == -1 && (errno == EINTR || errno == EAGAIN));
    }
    from.close();
    co_return left > 0 ? text.whole() : text.cutOff();
}
