#pragma once

#include "bridge/BridgeError.h"

#include <QByteArray>

#include <expected>
#include <optional>

/// One answer of an HTTP/1.x server. Without a status it was not HTTP at all.
struct HttpResponse final {
    std::optional<int> status;
    QByteArray body;
};

/// Puts an HTTP/1.x response to a GET together from the bytes of a connection, as they come. Knows bodies of a stated
/// length, chunked ones, and those that end with the connection; passes over interim responses (1xx).
class HttpResponseParser final {
public:
    static constexpr auto mostBodyBytes = qsizetype{8} * 1024 * 1024;
    static constexpr auto mostHeadBytes = qsizetype{64} * 1024;

    /// Nothing while more is to come; else the response, or why there will be none.
    using Outcome = std::optional<std::expected<HttpResponse, BridgeError>>;

    /// Takes the next bytes. Not to be called again after an outcome.
    [[nodiscard]] Outcome take(QByteArrayView bytes);

    /// The peer has closed its side: what has come is all there is.
    [[nodiscard]] std::expected<HttpResponse, BridgeError> finish();

private:
    enum class State { statusLine, headers, sizedBody, bodyToTheEnd, chunkSize, chunkData, chunkEnd, trailers };

    Outcome takeLine(QByteArrayView line);
    Outcome takeStatusLine(QByteArrayView line);
    Outcome takeHeader(QByteArrayView line);
    Outcome takeEndOfHeaders();
    Outcome takeChunkSize(QByteArrayView line);
    Outcome takeChunkEnd(QByteArrayView line);
    Outcome takeTrailer(QByteArrayView line);
    Outcome takeBody(QByteArrayView& bytes);
    Outcome append(QByteArrayView bytes);
    Outcome complete();

    State m_state = State::statusLine;
    QByteArray m_line;
    qsizetype m_headBytes = 0;
    HttpResponse m_response;
    bool m_chunked = false;
    std::optional<qint64> m_length;
    qint64 m_remaining = 0;
};
