#include "bridge/HttpResponseParser.h"

#include <QTest>

namespace {

/// A response with a body of two bytes, whose head has this size.
QByteArray responseWithHead(qsizetype headBytes) {
    const QByteArray start = "HTTP/1.1 200 OK\r\nX-Padding: ";
    const QByteArray end = "\r\nContent-Length: 2\r\n\r\n";
    return start + QByteArray(headBytes - start.size() - end.size(), 'x') + end + "{}";
}

}

/// What comes of a response when its bytes come in pieces; what it means is tested with the client.
class TestHttpResponseParser final : public QObject {
    Q_OBJECT

private slots:
    void longestHeadIsTheSameInPiecesOfAnySize_data();
    void longestHeadIsTheSameInPiecesOfAnySize();
};

void TestHttpResponseParser::longestHeadIsTheSameInPiecesOfAnySize_data() {
    QTest::addColumn<qsizetype>("pieceSize");
    QTest::addColumn<qsizetype>("headBytes");
    QTest::addColumn<bool>("expected");
    constexpr qsizetype most = HttpResponseParser::mostHeadBytes;
    for (const qsizetype pieceSize : {qsizetype{1}, qsizetype{7}, 2 * most}) {
        QTest::addRow("longest, %d at a time", int(pieceSize)) << pieceSize << most << true;
        QTest::addRow("too long, %d at a time", int(pieceSize)) << pieceSize << most + 1 << false;
    }
}

void TestHttpResponseParser::longestHeadIsTheSameInPiecesOfAnySize() {
    QFETCH(const qsizetype, pieceSize);
    QFETCH(const qsizetype, headBytes);
    QFETCH(const bool, expected);
    const QByteArray response = responseWithHead(headBytes);
    HttpResponseParser parser;
    HttpResponseParser::Outcome outcome;
    for (qsizetype at = 0; at < response.size() && !outcome; at += pieceSize) {
        outcome = parser.take(QByteArrayView{response}.sliced(at).first(qMin(pieceSize, response.size() - at)));
    }
    QVERIFY(outcome);
    QCOMPARE(outcome->has_value(), expected);
    if (expected) {
        QCOMPARE(outcome->value().body, QByteArray("{}"));
    } else {
        QCOMPARE(outcome->error().kind, BridgeError::Kind::responseTooLarge);
    }
}

QTEST_GUILESS_MAIN(TestHttpResponseParser)
#include "TestHttpResponseParser.moc"
