// Draws the program's icon: `application-icon SVG FILE…`, where each file is called after its width in pixels, such as
// 64.png, or ends in .icns for a bundle. The build makes the former; the latter is made by hand when the drawing
// changes.
#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// One picture of a bundle's icon: its type, which says what it is for, and its width and height in pixels.
struct Entry {
    QByteArrayView type;
    int side;
};

constexpr std::array entries{
    Entry{"icp4", 16},  Entry{"ic11", 32},  Entry{"icp5", 32},  Entry{"ic12", 64},  Entry{"ic07", 128},
    Entry{"ic13", 256}, Entry{"ic08", 256}, Entry{"ic14", 512}, Entry{"ic09", 512}, Entry{"ic10", 1024},
};

/// Icons in a bundle keep a margin; the drawing has less of one of its own.
constexpr qreal bundleShare = 0.92;

QByteArray picture(QSvgRenderer& drawing, int side, qreal share = 1) {
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

QByteArray bundleIcon(QSvgRenderer& drawing) {
    QByteArray content;
    for (const Entry& entry : entries) {
        content += block(entry.type, picture(drawing, entry.side, bundleShare));
    }
    return block("icns", content);
}

bool write(QSvgRenderer& drawing, const QString& name) {
    const QFileInfo information{name};
    const int side = information.baseName().toInt();
    const QByteArray bytes = information.suffix() == "icns"_L1 ? bundleIcon(drawing) : picture(drawing, side);
    QFile file{name};
    return !bytes.isEmpty() && file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size();
}

}

int main(int argc, char** argv) {
    QSvgRenderer drawing;
    if (argc < 3 || !drawing.load(QFile::decodeName(argv[1]))) {
        return EXIT_FAILURE;
    }
    for (int index = 2; index < argc; ++index) {
        if (!write(drawing, QFile::decodeName(argv[index]))) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
