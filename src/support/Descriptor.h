#pragma once

#include <utility>

#include <unistd.h>

/// Owns one open file descriptor, or none.
class Descriptor final {
public:
    Descriptor() = default;
    explicit Descriptor(int number)
        : m_number{number} {}
    Descriptor(Descriptor&& other) noexcept
        : m_number{std::exchange(other.m_number, none)} {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return m_number != none; }
    [[nodiscard]] int number() const { return m_number; }

    void close() {
        if (isOpen()) {
            ::close(std::exchange(m_number, none));
        }
    }

private:
    static constexpr int none = -1;
    int m_number = none;
};
