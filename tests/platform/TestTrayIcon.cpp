#include "platform/linux/TrayIcon.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array sizes{16, 22, 24, 32, 48, 64};
const QStringList filled{u"checkmark.circle.fill"_s, u"exclamationmark.triangle.fill"_s, u"xmark.octagon.fill"_s};
const QStringList open{u"circle.dashed"_s, u"antenna.radiowaves.left.and.right.slash"_s};

qreal linear(qreal component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

qreal luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

qreal contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QImage picture(const QString& symbolName, int size) {
    return TrayIcon::icon(symbolName).pixmap(QSize{size, size}, 1.0).toImage();
}

/// The share of the picture's pixels that stand out from the bar under it by at least three to one.
qreal visibleShare(const QImage& picture, const QColor& bar) {
    QImage shown{picture.size(), QImage::Format_RGB32};
    shown.fill(bar);
    QPainter{&shown}.drawImage(0, 0, picture);
    int visible = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            visible += contrast(shown.pixelColor(x, y), bar) >= 3 ? 1 : 0;
        }
    }
    return qreal(visible) / (shown.width() * shown.height());
}

}

class TestTrayIcon final : public QObject {
    Q_OBJECT

private slots:
    void everyStateStandsOutFromEveryBar() {
        // Plasma's light bar alone and over a wallpaper, Xfce's, and the dark bars of Plasma, GNOME and Xfce.
        const QStringList bars{u"#eff0f1"_s, u"#d2d2d2"_s, u"#f6f5f4"_s, u"#31363b"_s,
                               u"#2a2e32"_s, u"#1d1d20"_s, u"#000000"_s, u"#353535"_s};
        for (const QString& name : filled + open) {
            for (const int size : sizes) {
                const QImage icon = picture(name, size);
                for (const QString& bar : bars) {
                    const qreal share = visibleShare(icon, QColor{bar});
                    QVERIFY2(share > 0.07, qPrintable(u"%1 on %2 at %3: %4"_s.arg(name, bar).arg(size).arg(share)));
                }
            }
        }
    }

    void everyStateHasAColourOfItsOwn() {
        const auto tone = [](const QString& symbolName) { return picture(symbolName, 64).pixelColor(24, 52); };
        const QColor green = tone(filled.at(0));
        const QColor amber = tone(filled.at(1));
        const QColor red = tone(filled.at(2));
        QVERIFY(green.green() > green.red() && green.green() > green.blue());
        QVERIFY(red.red() > 2 * red.green() && red.red() > 2 * red.blue());
        QVERIFY(amber.red() > amber.green() && amber.green() > 2 * amber.blue());
        for (const QString& name : open) {
            const QImage grey = picture(name, 64);
            for (int x = 0; x < grey.width(); ++x) {
                const QColor pixel = grey.pixelColor(x, 8);
                QVERIFY(pixel.alpha() < 255 || pixel.hslSaturationF() < 0.15);
            }
        }
    }

    void everySizeHasAPictureOfItsOwnWithAFilledMark() {
        for (const QString& name : filled) {
            for (const int size : sizes) {
                QVERIFY(TrayIcon::icon(name).availableSizes().contains(QSize(size, size)));
                const QImage shown = picture(name, size);
                QCOMPARE(shown.size(), QSize(size, size));
                QCOMPARE(shown.pixelColor(0, 0).alpha(), 0);
                for (int y = size / 3; y < size * 2 / 3; ++y) {
                    QCOMPARE(shown.pixelColor(size / 2, y).alpha(), 255);
                }
            }
        }
    }

    void pictureIsSquareAndAsSharpAsWhatItIsPaintedOn() {
        const QIcon icon = TrayIcon::icon(filled.first());
        QCOMPARE(icon.pixmap(QSize{48, 16}, 1.0).size(), QSize(16, 16));
        QImage screen{32, 32, QImage::Format_ARGB32_Premultiplied};
        screen.setDevicePixelRatio(2);
        screen.fill(Qt::transparent);
        QPainter painter{&screen};
        icon.paint(&painter, QRect{0, 0, 16, 16});
        painter.end();
        screen.setDevicePixelRatio(1);
        QCOMPARE(screen, picture(filled.first(), 32).convertToFormat(screen.format()));
    }

    void unknownSymbolStillGivesAnIcon() { QVERIFY(!TrayIcon::icon(u"no.such.symbol"_s).availableSizes().isEmpty()); }
};

QTEST_MAIN(TestTrayIcon)
#include "TestTrayIcon.moc"
