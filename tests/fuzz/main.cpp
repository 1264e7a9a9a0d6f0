// One program for all targets; the environment's VORNA_TARGET chooses.

#include "Fuzz.h"

#include <QCoreApplication>
#include <QHashFunctions>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

using Mutate = std::size_t (*)(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed);

std::size_t mutateBytes(std::uint8_t* data, std::size_t size, std::size_t most, unsigned) {
    return LLVMFuzzerMutate(data, size, most);
}

struct Target final {
    QByteArrayView name;
    void (*run)(const QByteArray& input);
    Mutate mutate;
};

constexpr std::array targets{
    Target{"account", Fuzz::account, Fuzz::mutateJson},
    Target{"defaults", Fuzz::defaults, mutateBytes},
    Target{"http", Fuzz::http, mutateBytes},
    Target{"monitor", Fuzz::monitor, Fuzz::mutateJson},
    Target{"tool", Fuzz::tool, mutateBytes},
};

const Target& target() {
    static const auto& found = *std::ranges::find(targets, qgetenv("VORNA_TARGET"), &Target::name);
    return found;
}

}

void Fuzz::fail(std::source_location place) {
    std::fprintf(stderr, "%s:%u: does not hold\n", place.file_name(), static_cast<unsigned>(place.line()));
    std::abort();
}

Fuzz::Choices::Choices(const QByteArray& input)
    : m_random{static_cast<unsigned>(qHashBits(input.constData(), static_cast<std::size_t>(input.size()), 1))} {}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication application{*argc, *argv};
    Fuzz::require(&target() != targets.end());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    target().run(QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    return target().mutate(data, size, most, seed);
}
