#include "Fuzz.h"

#include "bridge/HttpResponseParser.h"

#include <algorithm>
#include <array>

using Fuzz::Choices;
using Fuzz::require;

namespace {

using Body = HttpResponseParser::Body;
using Answer = std::expected<HttpResponse, BridgeError>;

const QByteArray interim = "HTTP/1.1 103 Early\r\nContent-Length: 7\r\nTransfer-Encoding: chunked\r\n\r\n";
constexpr std::array errorKinds{BridgeError::Kind::connectionLost, BridgeError::Kind::malformedResponse,
                                BridgeError::Kind::responseTooLarge};

/// What comes of the bytes after which the peer closes, whole or in pieces of at most `longestPiece`.
Answer parsed(QByteArrayView bytes, Choices* choices = nullptr, qsizetype longestPiece = 0, Body keep = Body::kept) {
    HttpResponseParser parser{keep};
    while (!bytes.isEmpty()) {
        const qsizetype wanted = choices ? 1 + choices->below(longestPiece) : bytes.size();
        const auto piece = bytes.first(std::min(wanted, bytes.size()));
        bytes = bytes.sliced(piece.size());
        if (auto outcome = parser.take(piece)) {
            return *std::move(outcome);
        }
    }
    return parser.finish();
}

bool same(const Answer& a, const Answer& b) {
    if (!a || !b) {
        return !a && !b && a.error() == b.error();
    }
    return a->status == b->status && a->body == b->body;
}

QByteArray chunked(const QByteArray& body, Choices& choices) {
    QByteArray text;
    for (qsizetype at = 0; at < body.size();) {
        const auto piece = body.mid(at, 1 + choices.below(body.size()));
        text += QByteArray::number(piece.size(), 16) + "\r\n" + piece + "\r\n";
        at += piece.size();
    }
    return text + "0\r\n\r\n";
}

/// A response that was understood is understood again when it is framed in any of the three ways.
void requireEveryFraming(const HttpResponse& response, Choices& choices) {
    const QByteArray head = "HTTP/1.1 " + QByteArray::number(*response.status) + " Any\r\n";
    const std::array<QByteArray, 3> framings{
        head + "Content-Length: " + QByteArray::number(response.body.size()) + "\r\n\r\n" + response.body,
        head + "Transfer-Encoding: chunked\r\n\r\n" + chunked(response.body, choices),
        head + "\r\n" + response.body,
    };
    for (const auto& framing : framings) {
        require(same(parsed(framing), response));
    }
}

}

/// The input is what a peer sends before it closes.
void Fuzz::http(const QByteArray& input) {
    Choices choices{input};
    const auto answer = parsed(input);
    const auto discarded = parsed(input, &choices, 16, Body::discarded);
    require(discarded ? answer && discarded->status == answer->status && discarded->body.isEmpty()
                      : same(discarded, answer));
    require(same(parsed(input, &choices, 1), answer));
    require(same(parsed(input, &choices, 2 + input.size() / 4), answer));
    require(!choices.oneIn(4) || same(parsed(QByteArray{interim + input}), answer));
    if (!answer) {
        require(std::ranges::find(errorKinds, answer.error().kind) != errorKinds.end() &&
                !answer.error().text.isEmpty());
        return;
    }
    require(answer->body.size() <= input.size());
    if (answer->status != 200) {
        require(answer->body.isEmpty() && (!answer->status || (*answer->status > 200 && *answer->status <= 999)));
        return;
    }
    requireEveryFraming(*answer, choices);
}
