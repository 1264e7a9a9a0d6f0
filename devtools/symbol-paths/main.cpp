// Writes a C++ function that knows the drawings of all symbols, so that the companion needs no SVG: `symbol-paths CPP
// SVG…`. Run by the build.
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QSvgRenderer>
#include <QTextStream>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int grid = 16;

/// Keeps the paths that are filled or stroked, in the order of drawing.
class PathRecorder final : public QPaintEngine, public QImage {
public:
    PathRecorder()
        : QPaintEngine{AllFeatures}
        , QImage{grid, grid, Format_ARGB32_Premultiplied} {
        m_stream.setVersion(QDataStream::Qt_6_4);
    }

    [[nodiscard]] QByteArray drawing() const { return m_bytes; }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath& path) override {
        const QPen pen = state->pen();
        const bool isStroked = pen.style() != Qt::NoPen && pen.brush().style() != Qt::NoBrush;
        const bool isFilled = state->brush().style() != Qt::NoBrush;
        if (isFilled || isStroked) {
            m_stream << (isStroked ? pen : QPen{Qt::NoPen}) << isFilled << path;
        }
    }
    [[nodiscard]] QPaintEngine::Type type() const override { return User; }
    [[nodiscard]] QPaintEngine* paintEngine() const override { return const_cast<PathRecorder*>(this); }

private:
    QByteArray m_bytes;
    QDataStream m_stream{&m_bytes, QDataStream::WriteOnly};
};

/// Nothing for a file that is no drawing.
QByteArray drawing(const QString& file) {
    PathRecorder recorder;
    if (QSvgRenderer renderer; renderer.load(file)) {
        QPainter painter{&recorder};
        renderer.render(&painter);
    }
    return recorder.drawing();
}

QByteArray escaped(const QByteArray& bytes) {
    QByteArray text;
    for (const char byte : bytes) {
        text += "\\" + QByteArray::number(static_cast<uchar>(byte), 8).rightJustified(3, '0');
    }
    return text;
}

}

int main(int argc, char** argv) {
    QFile file{argc > 1 ? QFile::decodeName(argv[1]) : QString{}};
    if (!file.open(QFile::WriteOnly)) {
        return EXIT_FAILURE;
    }
    QTextStream text{&file};
    text << "#include <QString>\n\nQByteArray symbolDrawing(QStringView name) {\n";
    for (int index = 2; index < argc; ++index) {
        const QString source = QFile::decodeName(argv[index]);
        const QByteArray bytes = drawing(source);
        if (bytes.isEmpty()) {
            return EXIT_FAILURE;
        }
        text << "    if (name == QLatin1StringView{\"" << QFileInfo{source}.completeBaseName() << "\"}) {\n"
             << "        return QByteArray::fromRawData(\"" << escaped(bytes) << "\", " << bytes.size()
             << ");\n    }\n";
    }
    text << "    return {};\n}\n";
    text.flush();
    return text.status() == QTextStream::Ok && file.error() == QFile::NoError ? EXIT_SUCCESS : EXIT_FAILURE;
}
