#include "Fuzz.h"

#include <QCoreApplication>
#include <QHashFunctions>

#include <cstdio>
#include <cstdlib>

void Fuzz::fail(std::source_location place) {
    std::fprintf(stderr, "%s:%u: does not hold\n", place.file_name(), static_cast<unsigned>(place.line()));
    std::abort();
}

QByteArray Fuzz::view(const std::uint8_t* data, std::size_t size) {
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

Fuzz::Choices::Choices(const QByteArray& input)
    : m_random{static_cast<unsigned>(qHashBits(input.constData(), static_cast<std::size_t>(input.size()), 1))} {}

qsizetype Fuzz::Choices::below(qsizetype count) {
    return static_cast<qsizetype>(m_random()) % count;
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication application{*argc, *argv};
    return 0;
}
