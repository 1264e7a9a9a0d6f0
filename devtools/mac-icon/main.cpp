// Draws the icon of the bundle: `mac-icon SVG ICNS`. To be run again when the drawing changes.
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <QBuffer>
#include <QtEndian>

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// One picture of the file: its type, which says what it is for, and its width and height in pixels.
struct Entry {
    QByteArrayView type;
    int side;
};

constexpr std::array entries{
    Entry{"icp4", 16},  Entry{"ic11", 32},  Entry{"icp5", 32},  Entry{"ic12", 64},  Entry{"ic07", 128},
    Entry{"ic13", 256}, Entry{"ic08", 256}, Entry{"ic14", 512}, Entry{"ic09", 512}, Entry{"ic10", 1024},
};

/// Icons of this platform keep a margin; the drawing has less of one of its own.
constexpr qreal share = 0.92;

QByteArray picture(QSvgRenderer& drawing, int side) {
    QImage image{side, side, QImage::Format_ARGB32_Premultiplied};
    image.fill(Qt::transparent);
    QPainter painter{&image};
    const qreal margin = side * (1 - share) / 2;
    drawing.render(&painter, QRectF{margin, margin, side * share, side * share});
    painter.end();
    QByteArray bytes;
    QBuffer buffer{&bytes};
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray block(QByteArrayView type, const QByteArray& content) {
    constexpr qsizetype head = 8;
    QByteArray bytes = type.toByteArray() + QByteArray{head / 2, '\0'};
    qToBigEndian(static_cast<quint32>(content.size() + head), bytes.data() + head / 2);
    return bytes + content;
}

}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application{argc, argv};
    const QStringList words = QGuiApplication::arguments();
    QSvgRenderer drawing;
    if (words.size() != 3 || !drawing.load(words[1])) {
        return EXIT_FAILURE;
    }
    QByteArray content;
    for (const Entry& entry : entries) {
        content += block(entry.type, picture(drawing, entry.side));
    }
    const QByteArray icon = block("icns", content);
    QFile file{words[2]};
    return file.open(QFile::WriteOnly) && file.write(icon) == icon.size() ? EXIT_SUCCESS : EXIT_FAILURE;
}
