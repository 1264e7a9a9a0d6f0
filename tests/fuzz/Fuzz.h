#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <random>
#include <source_location>

/// What the fuzz targets share. One process tries millions of inputs, so what costs time is made once.
namespace Fuzz {

[[noreturn]] void fail(std::source_location place);

/// Says where and ends the process when this does not hold, so that the input is kept.
inline void require(bool holds, std::source_location place = std::source_location::current()) {
    if (!holds) {
        fail(place);
    }
}

/// The input itself, not a copy, so that reading beyond its end is noticed.
[[nodiscard]] QByteArray view(const std::uint8_t* data, std::size_t size);

/// Choices that the input does not hold, such as where it is cut: always the same ones for the same input.
class Choices final {
public:
    explicit Choices(const QByteArray& input);

    /// From 0 to below `count`.
    [[nodiscard]] qsizetype below(qsizetype count);
    [[nodiscard]] bool oneIn(qsizetype count) { return below(count) == 0; }

private:
    std::minstd_rand m_random;
};

}
