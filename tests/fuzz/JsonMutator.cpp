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
constexpr std::array numbers{-9.3e18, -1.0,   -0.5,   0.0, 0.125, 0.5, 1.0, 2.5, 12.0, 64.5, 99.995, 9007199254740993.0,
                             9.3e18,  1e-308, 1.7e308};

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
        const QJsonValue value = isOneOf(16) ? object.take(key) : of(object.value(key));
        if (object.contains(key) || isOneOf(2)) {
            object.insert(object.contains(key) ? key : ofText(key), value);
        }
        return object;
    }

    QJsonValue ofArray(QJsonArray array) {
        const int at = m_random.bounded(int(array.size()));
        const QJsonValue value = isOneOf(8) ? array.takeAt(at) : array.at(at);
        if (isOneOf(2)) {
            array.insert(m_random.bounded(int(array.size()) + 1), value);
        } else if (at < array.size()) {
            array.replace(at, of(value));
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
            QJsonValue{numbers.at(m_random.generate() % numbers.size())},
            QJsonValue{std::numeric_limits<qint64>::max() - m_random.bounded(2)},
            QJsonValue{m_random.bounded(20)},
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

}

std::size_t Fuzz::mutateJson(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    Mutation mutation{seed};
    const auto input = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto document = QJsonDocument::fromJson(input);
    if (document.isNull() || mutation.isOneOf(3)) {
        return LLVMFuzzerMutate(data, size, most);
    }
    const QJsonArray whole{document.isObject() ? QJsonValue{document.object()} : QJsonValue{document.array()}};
    const QByteArray changed = QJsonDocument{QJsonArray{mutation.of(whole.first())}}.toJson(QJsonDocument::Compact);
    const QByteArrayView inner = QByteArrayView{changed}.sliced(1).chopped(1);
    if (static_cast<std::size_t>(inner.size()) > most) {
        return LLVMFuzzerMutate(data, size, most);
    }
    std::ranges::copy(inner, data);
    return static_cast<std::size_t>(inner.size());
}
