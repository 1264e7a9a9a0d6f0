#include "support/ApprovedRecord.h"

#include "platform/Symbol.h"
#include "support/PaintRecord.h"
#include "ui/VersionLabels.h"

#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QWidget>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;
using Item = PaintRecord::Item;

namespace {

constexpr std::array roleNames{"background"_L1, "surface"_L1, "surfaceElevated"_L1, "border"_L1,  "text"_L1,
                               "textMuted"_L1,  "accent"_L1,  "success"_L1,         "warning"_L1, "danger"_L1};
constexpr std::array kindNames{"fill"_L1, "outline"_L1, "cut"_L1, "text"_L1, "symbol"_L1};

QString number(qreal value) {
    constexpr qreal quarters = 4;
    return QString::number(std::round(value * quarters) / quarters + 0.0);
}

QString placeOf(const QRectF& place) {
    return QStringList{number(place.x()), number(place.y()), number(place.width()), number(place.height())}.join(u' ');
}

QString roleOf(const QColor& colour, const Colours& colours) {
    QString name = colour.name();
    for (std::size_t role = 0; role < roleNames.size(); ++role) {
        if (colours.of(static_cast<ColourRole>(role)).rgb() == QColor{colour.rgb()}.rgb()) {
            name = roleNames.at(role);
            break;
        }
    }
    constexpr qreal thousand = 1000;
    const qreal opacity = std::round(colour.alphaF() * thousand) / 10;
    return opacity < 100 ? name + u' ' + QString::number(opacity) + u'%' : name;
}

/// The colour of a tinted picture: that of its most opaque pixel.
QColor inkOf(const QImage& image) {
    QColor ink{Qt::transparent};
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
        ink = pixel.alpha() > ink.alpha() ? pixel : ink;
    }
    return QColor{ink.rgb()};
}

/// The name of the symbol that looks like the picture.
QString symbolIn(const QImage& image, const QColor& ink) {
    static QHash<std::pair<QByteArray, QRgb>, QString> known;
    const QByteArray pixels{reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()};
    QString& found = known[{pixels, ink.rgb()}];
    if (!found.isEmpty()) {
        return found;
    }
    found = u"(not a symbol)"_s;
    const qreal scale = image.devicePixelRatio();
    for (const auto& file : QDir{QStringLiteral(VORNA_SYMBOLS)}.entryList({u"*.svg"_s})) {
        const auto drawn = Symbol::pixmap(file.chopped(4), image.width() / scale, ink, scale);
        if (drawn.toImage().convertToFormat(image.format()) == image) {
            found = file.chopped(4);
        }
    }
    return found;
}

QString describe(const Item& item, const Colours& colours) {
    QString line = kindNames.at(static_cast<std::size_t>(item.kind)) + u' ';
    switch (item.kind) {
    case Item::Kind::text: {
        QString string = item.string;
        string.replace(VersionLabels::caption(), u"(the version)"_s);
        line += u"“%1” %2 %3 "_s.arg(string, number(item.place.x()), number(item.place.y()));
        line += roleOf(item.colour, colours) + u", "_s + QFontInfo{item.font}.family() + u' ' +
                number(QFontInfo{item.font}.pixelSize() * item.scale) + u' ' + QString::number(item.font.weight());
        if (item.font.letterSpacing() != 0) {
            line += u" tracking "_s + QString::number(item.font.letterSpacing(), 'f', 1);
        }
        return line + (item.font.underline() ? u" underlined"_s : QString{});
    }
    case Item::Kind::symbol: {
        QColor ink = inkOf(item.image);
        const QString name = symbolIn(item.image, ink);
        ink.setAlphaF(item.colour.alphaF());
        return line + name + u' ' + placeOf(item.place) + u' ' + roleOf(ink, colours);
    }
    case Item::Kind::cut:
        return line + placeOf(item.place) + u' ' + item.shape;
    default:
        return line + placeOf(item.place) + u' ' + item.shape + u' ' + roleOf(item.colour, colours);
    }
}

QString withoutPlaces(QString text) {
    static const QRegularExpression place{uR"(^([^“(\d]+|.*”|.*\))( -?[\d.]+)+)"_s,
                                          QRegularExpression::MultilineOption};
    return text.replace(place, u"\\1"_s);
}

QByteArray contentOf(const QString& path) {
    QFile file{path};
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray{};
}

}

QString ApprovedRecord::painted(QWidget& widget, const Colours& colours, QWidget::RenderFlags flags) {
    QString text;
    const PaintRecord record{widget, flags};
    for (const auto& item : record.items()) {
        text += describe(item, colours) + u'\n';
    }
    return text;
}

QString ApprovedRecord::sections(QWidget& window, const Colours& colours) {
    QString layout = u"in %1 x %2\n"_s.arg(window.width()).arg(window.height());
    QString parts;
    for (auto* child : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isVisible()) {
            layout += child->objectName() + u' ' + placeOf(child->geometry()) + u'\n';
            parts += u'\n' + child->objectName() + u'\n' + painted(*child, colours);
        }
    }
    return layout + painted(window, colours, {}) + parts;
}

QString ApprovedRecord::withoutSectionsOf(const QString& base, const QString& sections) {
    const QStringList known = base.split(u"\n\n"_s);
    QStringList parts = sections.split(u"\n\n"_s);
    for (auto& part : parts) {
        part = part.trimmed();
    }
    parts.removeIf([&](const QString& part) {
        return std::ranges::any_of(known, [&part](const QString& other) { return other.trimmed() == part; });
    });
    return parts.join(u"\n\n"_s) + u'\n';
}

QString ApprovedRecord::difference(const QString& name, const QString& text, Places places) {
    const QString approved = QStringLiteral(VORNA_APPROVED) + u'/' + name + u".txt";
    const QString received = QStringLiteral(VORNA_RECEIVED) + u'/' + name + u".txt";
    const QString expected = QString::fromUtf8(contentOf(approved));
    if (places == Places::count ? expected == text : withoutPlaces(expected) == withoutPlaces(text)) {
        QFile::remove(received);
        return {};
    }
    QDir{}.mkpath(QStringLiteral(VORNA_RECEIVED));
    QFile file{received};
    if (!file.open(QFile::WriteOnly) || file.write(text.toUtf8()) < 0) {
        return u"cannot write "_s + received;
    }
    file.close();
    QProcess diff;
    diff.start(u"diff"_s, {u"-U1"_s, QFile::exists(approved) ? approved : u"/dev/null"_s, received});
    diff.waitForFinished();
    return QString::fromUtf8(diff.readAllStandardOutput()) + u"`script/approve` takes what is painted now."_s;
}
