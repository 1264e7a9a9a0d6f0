#include "bridge/HttpResponseParser.h"

#include <charconv>
#include <limits>
#include <utility>

namespace {

using Kind = BridgeError::Kind;

constexpr QByteArrayView httpPrefix = "HTTP/1.";
constexpr int firstFinalStatus = 200; // and the one with a body

std::unexpected<BridgeError> failure(Kind kind) {
    return std::unexpected{BridgeError::of(kind)};
}

std::optional<qint64> number(QByteArrayView text, int base) {
    qint64 value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value, base);
    const bool whole = error == std::errc{} && end == text.end() && text.front() != '-';
    return whole ? std::optional{value} : std::nullopt;
}

/// "HTTP/1.1 200 OK" gives 200; what is no status line of HTTP/1.x gives nothing.
std::optional<int> statusOf(QByteArrayView line) {
    constexpr qsizetype begin = 9;
    constexpr qsizetype end = 12;
    const bool framed = line.startsWith(httpPrefix) && line.size() >= end && line[begin - 1] == ' ' &&
                        (line.size() == end || line[end] == ' ');
    const auto status = framed ? number(line.sliced(begin, end - begin), 10) : std::nullopt;
    return status && *status >= 100 ? std::optional{static_cast<int>(*status)} : std::nullopt;
}

}

HttpResponseParser::Outcome HttpResponseParser::take(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        if (m_state >= State::sizedBody) {
            if (auto outcome = takeBody(bytes)) {
                return outcome;
            }
            continue;
        }
        const auto newline = bytes.indexOf('\n');
        const auto part = newline < 0 ? bytes : bytes.first(newline + 1);
        bytes = bytes.sliced(part.size());
        m_line.append(newline < 0 ? part : part.chopped(1));
        m_headBytes += part.size();
        if (m_state == State::statusLine &&
            !m_line.startsWith(httpPrefix.first(qMin(m_line.size(), httpPrefix.size())))) {
            return HttpResponse{};
        }
        if (m_headBytes > maxHeadBytes) {
            return failure(Kind::responseTooLarge);
        }
        if (newline < 0) {
            break;
        }
        const QByteArray line = std::exchange(m_line, {});
        if (auto outcome = takeLine(line.endsWith('\r') ? QByteArrayView{line}.chopped(1) : QByteArrayView{line})) {
            return outcome;
        }
    }
    return std::nullopt;
}

std::expected<HttpResponse, BridgeError> HttpResponseParser::finish() {
    return m_state == State::bodyToTheEnd ? Outcome::value_type{std::move(m_response)} : failure(Kind::connectionLost);
}

HttpResponseParser::Outcome HttpResponseParser::takeLine(QByteArrayView line) {
    switch (m_state) {
    case State::statusLine:
        m_framing = {};
        m_state = State::headers;
        m_response.status = statusOf(line);
        return m_response.status ? std::nullopt : Outcome{HttpResponse{}};
    case State::headers:
        return takeHeaderLine(line);
    case State::chunkSize:
        return takeChunkSize(line);
    case State::chunkEnd:
        m_state = State::chunkSize;
        return line.isEmpty() ? Outcome{} : failure(Kind::malformedResponse);
    default:
        return line.isEmpty() ? Outcome{std::move(m_response)} : std::nullopt;
    }
}

/// A line that begins with a blank continues the header before it, and is passed over where there is none.
HttpResponseParser::Outcome HttpResponseParser::takeHeaderLine(QByteArrayView line) {
    if (line.startsWith(' ') || line.startsWith('\t')) {
        if (!m_header.isEmpty()) {
            m_header.append(line);
        }
        return std::nullopt;
    }
    if (!m_header.isEmpty()) {
        endHeader();
    }
    m_header = line.toByteArray();
    return line.isEmpty() ? takeEndOfHeaders() : std::nullopt;
}

void HttpResponseParser::endHeader() {
    const auto colon = m_header.indexOf(':');
    if (colon <= 0) {
        m_framing.isMalformed = true;
        return;
    }
    const auto name = QByteArrayView{m_header}.first(colon);
    const auto value = QByteArrayView{m_header}.sliced(colon + 1).trimmed();
    if (name.compare("content-length", Qt::CaseInsensitive) == 0) {
        const auto length = number(value, 10);
        m_framing.isMalformed |= !length || (m_framing.length && m_framing.length != length);
        m_framing.length = length;
    } else if (name.compare("transfer-encoding", Qt::CaseInsensitive) == 0) {
        m_framing.isMalformed |= m_framing.isChunked || value.compare("chunked", Qt::CaseInsensitive) != 0;
        m_framing.isChunked = true;
    }
}

HttpResponseParser::Outcome HttpResponseParser::takeEndOfHeaders() {
    if (m_response.status < firstFinalStatus) {
        m_state = State::statusLine;
        return std::nullopt;
    }
    if (m_response.status > firstFinalStatus) {
        return std::move(m_response);
    }
    if (m_framing.isMalformed) {
        return failure(Kind::malformedResponse);
    }
    if (m_framing.isChunked) {
        m_state = State::chunkSize;
        return std::nullopt;
    }
    if (m_framing.length && *m_framing.length > maxBodyBytes) {
        return failure(Kind::responseTooLarge);
    }
    m_state = m_framing.length ? State::sizedBody : State::bodyToTheEnd;
    m_remaining = m_framing.length.value_or(std::numeric_limits<qint64>::max());
    return m_remaining == 0 ? Outcome{std::move(m_response)} : std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::takeChunkSize(QByteArrayView line) {
    const auto size = number(line.first(line.contains(';') ? line.indexOf(';') : line.size()).trimmed(), 16);
    if (!size) {
        return failure(Kind::malformedResponse);
    }
    m_remaining = *size;
    m_state = m_remaining == 0 ? State::trailers : State::chunkData;
    return std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::takeBody(QByteArrayView& bytes) {
    const auto part = bytes.first(static_cast<qsizetype>(qMin<qint64>(m_remaining, bytes.size())));
    bytes = bytes.sliced(part.size());
    m_remaining -= part.size();
    m_bodyBytes += part.size();
    if (m_bodyBytes > maxBodyBytes) {
        return failure(Kind::responseTooLarge);
    }
    if (m_keepsBody) {
        m_response.body.append(part);
    }
    if (m_remaining > 0) {
        return std::nullopt;
    }
    return std::exchange(m_state, State::chunkEnd) == State::sizedBody ? Outcome{std::move(m_response)} : std::nullopt;
}
