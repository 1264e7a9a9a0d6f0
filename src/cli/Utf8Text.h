#pragma once

#include <QString>
#include <QStringDecoder>

#include <optional>

/// A text that comes as UTF-8, in pieces of any size, and is kept unchanged.
class Utf8Text final {
public:
    void append(QByteArrayView bytes) { m_text += QString{m_decoder(bytes)}; }

    /// Nothing when the bytes so far are not UTF-8 throughout.
    [[nodiscard]] std::optional<QString> whole() {
        const QString unused = m_decoder("x"); // an error after a part of a character
        return cutOff();
    }

    /// The same, but a last character of which a part is missing is left out.
    [[nodiscard]] std::optional<QString> cutOff() const {
        return m_decoder.hasError() ? std::nullopt : std::optional{m_text};
    }

private:
    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    QString m_text;
};
