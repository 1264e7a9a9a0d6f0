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

/// Choices that the input does not hold, such as where it is cut: always the same ones for the same input.
class Choices final {
public:
    explicit Choices(const QByteArray& input);

    /// From 0 to below `count`.
    [[nodiscard]] qsizetype below(qsizetype count) { return static_cast<qsizetype>(m_random()) % count; }
    [[nodiscard]] bool oneIn(qsizetype count) { return below(count) == 0; }

private:
    std::minstd_rand m_random;
};

/// The targets, each in a file that says what its input is and requires what holds for any. The input is no copy, so
/// that reading beyond its end is noticed.
void account(const QByteArray& input);
void defaults(const QByteArray& input);
void http(const QByteArray& input);
void monitor(const QByteArray& input);
void tool(const QByteArray& input);

/// Changes an input in place and answers its new size: as often the one or other value of the JSON document that it is,
/// which stays one, as its bytes. Without it nearly all inputs would only ever be refused by the parser.
[[nodiscard]] std::size_t mutateJson(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed);

}
