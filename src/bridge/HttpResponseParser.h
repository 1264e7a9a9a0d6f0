#pragma once

#include "bridge/BridgeError.h"

#include <QByteArray>

#include <expected>
#include <optional>

/// One answer of an HTTP/1.x server. Without a status it was not HTTP at all.
struct HttpResponse final {
    std::optional<int> status;
    QByteArray body; ///< of a 200 only
};

/// Puts an HTTP/1.x response to a GET together from the bytes of a connection, as they come. Knows bodies of a stated
/// length, chunked ones, and those that end with the connection; passes over interim responses (1xx). A final status
/// other than 200 is the whole answer: neither its body nor how that is framed matters.
class HttpResponseParser final {
public:
    static constexpr auto maxBodyBytes = qsizetype{8} * 1024 * 1024;
    /// Of everything but the body: status line, headers, the lines between chunks, trailers, interim responses.
    static constexpr auto maxHeadBytes = qsizetype{64} * 1024;

    enum class Body { kept, discarded };

    /// Nothing while more is to come; else the response, or why there will be none.
    using Outcome = std::optional<std::expected<HttpResponse, BridgeError>>;

    /// A body that is discarded has the same limits, but takes no memory.
    explicit HttpResponseParser(Body body = Body::kept)
        : m_keepsBody{body == Body::kept} {}

    /// Takes the next bytes. Not to be called again after an outcome.
    [[nodiscard]] Outcome take(QByteArrayView bytes);

    /// The peer has closed its side: what has come is all there is.
    [[nodiscard]] std::expected<HttpResponse, BridgeError> finish();

private:
    enum class State { statusLine, headers, chunkSize, chunkEnd, trailers, sizedBody, bodyToTheEnd, chunkData };

    /// What the headers say of the body.
    struct Framing final {
        bool isMalformed = false;
        bool isChunked = false;
        std::optional<qint64> length;
    };

    Outcome takeLine(QByteArrayView line);
    Outcome takeHeaderLine(QByteArrayView line);
    void endHeader();
    Outcome takeEndOfHeaders();
    Outcome takeChunkSize(QByteArrayView line);
    Outcome takeBody(QByteArrayView& bytes);

    const bool m_keepsBody;
    State m_state = State::statusLine;
    QByteArray m_line;   ///< what has come of it
    QByteArray m_header; ///< the last one, which the next line may continue
    qsizetype m_headBytes = 0;
    qsizetype m_bodyBytes = 0;
    HttpResponse m_response;
    Framing m_framing;
    qint64 m_remaining = 0; ///< of the body or chunk
};
