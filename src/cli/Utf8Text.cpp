#include "cli/Utf8Text.h"

#include <QStringDecoder>
#include <QUtf8StringView>

std::optional<QString> utf8Text(std::string_view bytes) {
    const QByteArrayView view{bytes.data(), static_cast<qsizetype>(bytes.size())};
    if (!QUtf8StringView{view.data(), view.size()}.isValidUtf8()) {
        return std::nullopt;
    }
    QStringDecoder decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    return QString{decoder(view)};
}
