#include "Fuzz.h"

#include <QList>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

constexpr qsizetype longestText = 64; // bytes
const QByteArrayList values =
    QByteArray{R"(null true false {} [] "" 0 -1 -0.5 2.5 64.5 99.995 12 1e-308 1.7e308 9.3e18 1e400 9007199254740993 )"
               R"(9223372036854775807 "\ud83e")"}
        .split(' ')
    << '"' + QByteArray(2000, 'x') + "\xF0\x9F\xA7\xAD\"";

}

std::size_t Fuzz::mutateJson(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    static const QRegularExpression token{uR"("[^"]*"|[-+.\w]+|\{[^{}]*\}|\[[^\[\]]*\])"_s};
    const QByteArray input{reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
    QList<std::pair<qsizetype, qsizetype>> found;
    // Latin-1 has a character for each byte.
    for (const auto& match : token.globalMatch(QString::fromLatin1(input))) {
        found.append({match.capturedStart(), match.capturedLength()});
    }
    Choices choices{input + QByteArray::number(seed)};
    if (found.isEmpty() || choices.oneIn(3)) {
        return LLVMFuzzerMutate(data, size, most);
    }
    const auto [at, length] = found.at(choices.below(found.size()));
    const auto [otherAt, otherLength] = found.at(choices.below(found.size()));
    QByteArray text = input.mid(at, length);
    if (choices.oneIn(2)) {
        text = choices.oneIn(3) ? input.mid(otherAt, otherLength) : values.at(choices.below(values.size()));
    } else if (length > 2 && length < longestText) {
        QByteArray inner = text.mid(1, length - 2);
        const auto before = static_cast<std::size_t>(inner.size());
        inner.resize(longestText);
        const auto after = LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(inner.data()), before, longestText);
        text = text.front() + inner.first(static_cast<qsizetype>(after)) + text.back();
    } else {
        text = text + ',' + text;
    }
    const QByteArray changed = QByteArray{input}.replace(at, length, text);
    if (static_cast<std::size_t>(changed.size()) > most) {
        return LLVMFuzzerMutate(data, size, most);
    }
    std::ranges::copy(changed, data);
    return static_cast<std::size_t>(changed.size());
}
