#include "JsonMutator.h"

#include "Fuzz.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <limits>

using namespace Qt::StringLiterals;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

constexpr std::size_t longestText = 64; // bytes
constexpr std::array wholeNumbers{
    std::numeric_limits<qint64>::min(), qint64{-1}, qint64{0}, qint64{1}, qint64{12}, (qint64{1} << 53) + 1,
    std::numeric_limits<qint64>::max()};
constexpr std::array numbers{-0.5, 0.125, 0.5, 2.5, 64.5, 99.995, 1e-308, 9.3e18, 1.7e308};

class Mutation final {
public:
    explicit Mutation(unsigned seed)
        : m_random{seed} {}

    [[nodiscard]] bool isOneOf(int count) { return m_random.bounded(count) == 0; }

    [[nodiscard]] QJsonValue of(const QJsonValue& value) {
        if (value.isObject() && !value.toObject().isEmpty() && !isOneOf(16)) {
            return ofObject(value.toObject());
        }
        if (value.isArray() && !value.toArray().isEmpty() && !isOneOf(16)) {
            return ofArray(value.toArray());
        }
        return value.isString() && !isOneOf(8) ? ofText(value.toString()) : any();
    }

private:
    QJsonValue ofObject(QJsonObject object) {
        const QString key = object.keys().at(m_random.bounded(int(object.size())));
        if (isOneOf(16)) {
            object.remove(key);
        } else if (isOneOf(16)) {
            object.insert(ofText(key), object.value(key));
        } else {
            object.insert(key, of(object.value(key)));
        }
        return object;
    }

    QJsonValue ofArray(QJsonArray array) {
        const int at = m_random.bounded(int(array.size()));
        const int to = m_random.bounded(int(array.size()));
        if (isOneOf(8)) {
            array.insert(to, array.at(at));
        } else if (isOneOf(12)) {
            array.removeAt(at);
        } else if (isOneOf(8)) {
            const QJsonValue moved = array.takeAt(at);
            array.insert(to, moved);
        } else {
            array.replace(at, of(array.at(at)));
        }
        return array;
    }

    QString ofText(const QString& text) {
        QByteArray bytes = text.toUtf8().left(longestText);
        const auto size = static_cast<std::size_t>(bytes.size());
        bytes.resize(longestText);
        const auto changed = LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(bytes.data()), size, longestText);
        return QString::fromUtf8(bytes.left(static_cast<qsizetype>(changed)));
    }

    QJsonValue any() {
        const std::array values{
            QJsonValue{QJsonValue::Null},
            QJsonValue{isOneOf(2)},
            QJsonValue{isOneOf(2)},
            QJsonValue{wholeNumbers.at(m_random.generate() % wholeNumbers.size())},
            QJsonValue{numbers.at(m_random.generate() % numbers.size())},
            QJsonValue{m_random.bounded(20)},
            QJsonValue{m_random.bounded(1000.0)},
            QJsonValue{ofText({})},
            QJsonValue{QString{QChar{0xd800 + m_random.bounded(0x800)}}},
            QJsonValue{QString{m_random.bounded(3000), u'x'} + u"\U0001f9ed"},
            QJsonValue{QJsonObject{}},
            QJsonValue{QJsonArray{}},
        };
        return values.at(m_random.generate() % values.size());
    }

    QRandomGenerator m_random;
};

QByteArray text(const QJsonValue& value) {
    return (value.isObject() ? QJsonDocument{value.toObject()} : QJsonDocument{value.toArray()})
        .toJson(QJsonDocument::Compact);
}

}

std::size_t mutateJson(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    Mutation mutation{seed};
    const auto document = QJsonDocument::fromJson(Fuzz::view(data, size));
    if (document.isNull() || mutation.isOneOf(3)) {
        return LLVMFuzzerMutate(data, size, most);
    }
    const QJsonValue before = document.isObject() ? QJsonValue{document.object()} : QJsonValue{document.array()};
    const QByteArray changed = text(mutation.of(before));
    if (static_cast<std::size_t>(changed.size()) > most) {
        return LLVMFuzzerMutate(data, size, most);
    }
    std::ranges::copy(changed, data);
    return static_cast<std::size_t>(changed.size());
}
