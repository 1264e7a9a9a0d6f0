#include "bridge/HttpResponseParser.h"

#include "support/Rows.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Kind = BridgeError::Kind;

namespace {

constexpr qsizetype maxHead = 65'536;
constexpr qsizetype maxBody = 8'388'608;

HttpResponseParser::Outcome parse(HttpResponseParser& parser, QByteArrayView bytes, qsizetype pieceSize) {
    for (qsizetype at = 0; at < bytes.size(); at += pieceSize) {
        if (auto outcome = parser.take(bytes.sliced(at).first(qMin(pieceSize, bytes.size() - at)))) {
            return outcome;
        }
    }
    return std::nullopt;
}

/// The status and the body, or the error's text; "more" when the response is not complete.
QString parsed(const QByteArray& bytes, qsizetype pieceSize, bool closes = true) {
    HttpResponseParser parser;
    auto outcome = parse(parser, bytes, pieceSize);
    if (!outcome) {
        if (!closes) {
            return u"more"_s;
        }
        outcome = parser.finish();
    }
    const auto& answer = *outcome;
    return !answer          ? answer.error().text
           : answer->status ? QString::number(*answer->status) + u' ' + QString::fromUtf8(answer->body)
                            : u"not HTTP"_s;
}

QByteArray ok(const QByteArray& fields, const QByteArray& rest = {}) {
    return "HTTP/1.1 200 OK\r\n" + fields + "\r\n" + rest;
}

QByteArray chunked(const QByteArray& rest) {
    return ok("Transfer-Encoding: chunked\r\n", rest);
}

/// A response with a head of this size.
QByteArray withHead(qsizetype headBytes) {
    const auto head = [](qsizetype padding) {
        return ok("X: " + QByteArray(padding, 'x') + "\r\nContent-Length: 2\r\n");
    };
    return head(headBytes - head(0).size()) + "{}";
}

/// A response of one-byte chunks whose lines, with those of the head and of the end, have this size together.
QByteArray withChunkLines(qsizetype lineBytes) {
    const QByteArray head = chunked({});
    const QByteArray end = "0\r\n\r\n";
    QByteArray chunks = "1\r\nx\r\n";
    chunks = chunks.repeated(1000);
    const qsizetype padding = lineBytes - head.size() - end.size() - 1000 * 5 - 6;
    return head + chunks + "1;" + QByteArray(padding, 'e') + "\r\nx\r\n" + end;
}

}

/// What comes of a response, however its bytes are cut.
class TestHttpResponseParser final : public QObject {
    Q_OBJECT

private slots:
    void responsesAreUnderstoodInPiecesOfAnySize_data() {
        const Rows<QByteArray, QString> row{"bytes", "outcome"};
        const QString good = u"200 {}"_s;
        const QString garbled = BridgeError::of(Kind::malformedResponse).text;
        const QString tooLarge = BridgeError::of(Kind::responseTooLarge).text;
        const QString lost = BridgeError::of(Kind::connectionLost).text;

        row("stated length", ok("Content-Length: 2\r\n", "{}"), good);
        row("stated length, more behind it", ok("Content-Length: 2\r\n", "{}x"), good);
        row("to the end", ok({}, "{}"), good);
        row("without a reason", "HTTP/1.0 200\r\n\r\n{}", good);
        row("bare line feeds", ok("A: b\r\nContent-Length: 2\r\n", "{}").replace("\r\n", "\n"), good);
        row("names in any case", ok("cONTENT-lENGTH:2\r\n", "{}x"), good);
        row("length twice the same", ok("Content-Length: 2\r\nContent-Length: 2\r\n", "{}x"), good);
        row("chunks", chunked("1 ;x=y\r\n{\r\n01\r\n}\r\n000\r\nTrailer: x\r\n\r\n"), good);
        row("chunks, sizes in any case", chunked("A\r\n0123456789\r\na\r\n0123456789\r\n0\r\n\r\n"),
            u"200 01234567890123456789"_s);
        row("codings in any case", ok("tRANSFER-eNCODING: Chunked\r\n", "2\r\n{}\r\n0\r\n\r\n"), good);
        row("chunks win over a length",
            ok("Content-Length: 9\r\nTransfer-Encoding: chunked\r\n", "2\r\n{}\r\n0\r\n\r\n"), good);
        row("interim responses",
            "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Hints\r\nContent-Length: -1\r\nx\r\n\r\n" + ok({}, "{}"), good);

        row("folded", ok("X: a\r\n b\r\n\tc\r\n", "{}"), good);
        row("folded length", ok("Content-Length:\r\n\t 2 \r\n", "{}x"), good);
        row("folded coding", ok("Transfer-Encoding:\r\n chunked\r\n", "2\r\n{}\r\n0\r\n\r\n"), good);
        row("a fold does not join digits", ok("Content-Length: 1\r\n 0\r\n", "{}"), garbled);
        row("a fold of something that is no header", ok("nonsense\r\n : x\r\n", "{}"), good);
        row("a fold in front of all headers", ok(" Content-Length: 9\r\nContent-Length: 2\r\n", "{}x"), good);
        row("a fold of blanks alone", ok("Content-Length: 2\r\n  \r\n", "{}x"), good);
        row("a fold does not reach over a status",
            "HTTP/1.1 100 C\r\nContent-Length:\r\n\r\nHTTP/1.1 200 OK\r\n 1\r\n\r\n{}", good);

        const QByteArrayList fields{"Content-Length: -2",
                                    "Content-Length: +2",
                                    "Content-Length:",
                                    "Content-Length: 2, 2",
                                    "Content-Length: 99999999999999999999",
                                    "Content-Length: 0x2",
                                    "Content-Length: 2\r\nContent-Length: 3",
                                    "Content-Length: x\r\nContent-Length: 2",
                                    "Transfer-Encoding: gzip",
                                    "Transfer-Encoding: gzip, chunked",
                                    "Transfer-Encoding:",
                                    "Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked",
                                    "nonsense",
                                    ": x"};
        for (const auto& field : fields) {
            row(field.constData(), ok(field + "\r\n", "{}"), garbled);
            for (const auto* status : {"201", "204", "304", "404", "500"}) {
                const QByteArray answer = QByteArray{"HTTP/1.1 "} + status + " X\r\n" + field + "\r\n\r\nrest";
                QTest::addRow("%s, %s", status, field.constData())
                    << answer << QString{QLatin1StringView{status} + u' '};
            }
        }
        row("other status, body ignored", "HTTP/1.1 500 X\r\nContent-Length: 99999999\r\n\r\nx", u"500 "_s);
        const QByteArrayList chunks{"\r\n",        "-1\r\n", "g\r\n",  "fffffffffffffffff\r\n",
                                    "1\r\n{}\r\n", ";x\r\n", "0x1\r\n"};
        for (const auto& chunk : chunks) {
            QTest::addRow("chunk %s", chunk.toPercentEncoding().constData()) << chunked(chunk + "{}") << garbled;
        }
        for (const auto* start :
             {"SSH-2.0-OpenSSH_9.2\r\n", "HTTP/2 200\r\n\r\n", "HTTP/1.1 2OO OK\r\n\r\n", "HTTP/1.1 20\r\n",
              "HTTP/1.1 2000 OK\r\n", "HTTP/1.1 099 OK\r\n", "HTTP/1.1  200 OK\r\n", "HTTP/1.1x200 OK\r\n", "\r\n"}) {
            row(start, start, u"not HTTP"_s);
        }
        row("zero bytes", QByteArray(9, '\0'), u"not HTTP"_s);
        for (const auto& start : {QByteArray{}, QByteArray{"HTTP/1."}, QByteArray{"HTTP/1.1 500 X\r\nContent-Le"},
                                  ok("Content-Length: 3\r\n", "{}"), chunked("3\r\n{}"), chunked("2\r\n{}\r\n0\r\n"),
                                  QByteArray{"HTTP/1.1 100 Continue\r\n\r\n"}}) {
            QTest::addRow("closed after %s", start.toPercentEncoding().constData()) << start << lost;
        }

        row("longest head", withHead(maxHead), good);
        row("too long a head", withHead(maxHead + 1), tooLarge);
        row("too long a head of another status", "HTTP/1.1 500 X\r\nX: " + QByteArray(maxHead, 'x'), tooLarge);
        row("most chunk lines", withChunkLines(maxHead), u"200 "_s + QString{1001, u'x'});
        row("too many chunk lines", withChunkLines(maxHead + 1), tooLarge);
        row("too many interim responses", QByteArray{"HTTP/1.1 100 C\r\n\r\n"}.repeated(4000), tooLarge);
        row("too many trailers", chunked("0\r\n" + QByteArray{"X: y\r\n"}.repeated(12'000)), tooLarge);
    }
    void responsesAreUnderstoodInPiecesOfAnySize() {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, outcome);
        for (const qsizetype pieceSize : {qsizetype{1}, qsizetype{7}, 2 * maxHead}) {
            QCOMPARE(parsed(bytes, pieceSize), outcome);
        }
    }

    void nothingIsAwaitedBehindTheEnd_data() {
        const Rows<QByteArray, QString> row{"bytes", "outcome"};
        const QString tooLarge = BridgeError::of(Kind::responseTooLarge).text;
        row("stated length", ok("Content-Length: 2\r\n", "{}"), u"200 {}"_s);
        row("no body", ok("Content-Length: 0\r\n"), u"200 "_s);
        row("chunks", chunked("2\r\n{}\r\n0\r\n\r\n"), u"200 {}"_s);
        row("other status", QByteArray{"HTTP/1.1 204 X\r\n\r\n"}, u"204 "_s);
        row("other status, headers under way", QByteArray{"HTTP/1.1 204 X\r\nA: b\r\n"}, u"more"_s);
        row("to the end", ok({}, "{}"), u"more"_s);
        row("not HTTP", QByteArray{"HTTP/2"}, u"not HTTP"_s);
        row("longest body announced", ok("Content-Length: 8388608\r\n"), u"more"_s);
        row("too long a body announced", ok("Content-Length: 8388609\r\n"), tooLarge);
        row("longest body", ok({}, QByteArray(maxBody, 'x')), u"more"_s);
        row("too long a body", ok({}, QByteArray(maxBody + 1, 'x')), tooLarge);
        row("too long in chunks", chunked("800000\r\n" + QByteArray(maxBody, 'x') + "\r\n1\r\nx"), tooLarge);
    }
    void nothingIsAwaitedBehindTheEnd() {
        QFETCH(const QByteArray, bytes);
        QTEST(parsed(bytes, 100'000, false), "outcome");
    }

    void discardedBodyTakesNoMemory() {
        for (const auto& bytes : {ok("Content-Length: 2\r\n", "{}"), ok({}, "{}"), chunked("2\r\n{}\r\n0\r\n\r\n")}) {
            HttpResponseParser parser{HttpResponseParser::Body::discarded};
            const auto outcome = parse(parser, bytes, bytes.size());
            const auto answer = outcome ? *outcome : parser.finish();
            QVERIFY(answer && answer->status == 200 && answer->body.isNull());
        }
        HttpResponseParser parser{HttpResponseParser::Body::discarded};
        const auto outcome = parser.take(ok({}, QByteArray(maxBody + 1, 'x')));
        QVERIFY(outcome && !*outcome && outcome->error().kind == Kind::responseTooLarge);
    }
};

QTEST_GUILESS_MAIN(TestHttpResponseParser)
#include "TestHttpResponseParser.moc"
