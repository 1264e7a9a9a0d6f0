#include "bridge/HttpResponseParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace {

using Kind = BridgeError::Kind;

HttpResponseParser::Outcome failure(Kind kind) {
    return std::unexpected{BridgeError::of(kind)};
}

std::optional<qint64> number(QByteArrayView text, int base) {
    qint64 value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value, base);
    const bool whole = error == std::errc{} && end == text.end() && text.front() != '-';
    return whole ? std::optional{value} : std::nullopt;
}

bool equalsIgnoringCase(QByteArrayView a, const char* b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// "HTTP/1.1 200 OK" gives 200; what is no status line of HTTP/1.x gives nothing.
std::optional<int> statusOf(QByteArrayView line) {
    constexpr qsizetype versionLength = 8;
    constexpr qsizetype statusLength = 3;
    constexpr qsizetype end = versionLength + 1 + statusLength;
    const bool framed = line.startsWith("HTTP/1.") && line.size() >= end && line[versionLength] == ' ' &&
                        (line.size() == end || line[end] == ' ');
    const auto status = framed ? number(line.sliced(versionLength + 1, statusLength), 10) : std::nullopt;
    return status && *status >= 100 ? std::optional{static_cast<int>(*status)} : std::nullopt;
}

bool mayBeStatusLine(QByteArrayView start) {
    constexpr QByteArrayView prefix = "HTTP/1.";
    const auto length = qMin(start.size(), prefix.size());
    return start.first(length) == prefix.first(length);
}

}

HttpResponseParser::Outcome HttpResponseParser::take(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        if (m_state == State::sizedBody || m_state == State::bodyToTheEnd || m_state == State::chunkData) {
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
        if (m_state == State::statusLine && !mayBeStatusLine(m_line)) {
            return HttpResponse{};
        }
        if (m_headBytes > mostHeadBytes) {
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
    if (m_state == State::bodyToTheEnd) {
        return std::move(m_response);
    }
    return std::unexpected{BridgeError::of(Kind::connectionLost)};
}

HttpResponseParser::Outcome HttpResponseParser::takeLine(QByteArrayView line) {
    switch (m_state) {
    case State::statusLine:
        return takeStatusLine(line);
    case State::headers:
        return line.isEmpty() ? takeEndOfHeaders() : takeHeader(line);
    case State::chunkSize:
        return takeChunkSize(line);
    case State::chunkEnd:
        return takeChunkEnd(line);
    default:
        return takeTrailer(line);
    }
}

HttpResponseParser::Outcome HttpResponseParser::takeStatusLine(QByteArrayView line) {
    m_response.status = statusOf(line);
    if (!m_response.status) {
        return HttpResponse{};
    }
    m_chunked = false;
    m_length.reset();
    m_state = State::headers;
    return std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::takeHeader(QByteArrayView line) {
    const auto colon = line.indexOf(':');
    if (colon <= 0) {
        return failure(Kind::malformedResponse);
    }
    const auto name = line.first(colon);
    const auto value = line.sliced(colon + 1).trimmed();
    if (equalsIgnoringCase(name, "content-length")) {
        const auto length = value.isEmpty() ? std::nullopt : number(value, 10);
        if (!length || (m_length && *m_length != *length)) {
            return failure(Kind::malformedResponse);
        }
        m_length = length;
    } else if (equalsIgnoringCase(name, "transfer-encoding")) {
        m_chunked = equalsIgnoringCase(value, "chunked");
        if (!m_chunked) {
            return failure(Kind::malformedResponse);
        }
    }
    return std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::takeEndOfHeaders() {
    constexpr int firstFinalStatus = 200;
    constexpr std::array statusesWithoutBody{204, 304};
    const int status = m_response.status.value_or(0);
    if (status < firstFinalStatus) {
        m_state = State::statusLine;
        return std::nullopt;
    }
    if (std::ranges::find(statusesWithoutBody, status) != statusesWithoutBody.end()) {
        return complete();
    }
    if (m_chunked) {
        m_state = State::chunkSize;
        m_headBytes = 0;
        return std::nullopt;
    }
    if (!m_length) {
        m_state = State::bodyToTheEnd;
        return std::nullopt;
    }
    if (*m_length > mostBodyBytes) {
        return failure(Kind::responseTooLarge);
    }
    m_remaining = *m_length;
    m_state = State::sizedBody;
    return m_remaining == 0 ? complete() : std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::takeChunkSize(QByteArrayView line) {
    const auto extension = line.indexOf(';');
    const auto digits = (extension < 0 ? line : line.first(extension)).trimmed();
    const auto size = digits.isEmpty() ? std::nullopt : number(digits, 16);
    if (!size) {
        return failure(Kind::malformedResponse);
    }
    m_remaining = *size;
    m_headBytes = 0;
    m_state = m_remaining == 0 ? State::trailers : State::chunkData;
    return std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::takeChunkEnd(QByteArrayView line) {
    m_state = State::chunkSize;
    return line.isEmpty() ? std::nullopt : failure(Kind::malformedResponse);
}

HttpResponseParser::Outcome HttpResponseParser::takeTrailer(QByteArrayView line) {
    return line.isEmpty() ? complete() : std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::takeBody(QByteArrayView& bytes) {
    if (m_state == State::bodyToTheEnd) {
        return append(std::exchange(bytes, {}));
    }
    const auto part = bytes.first(static_cast<qsizetype>(qMin<qint64>(m_remaining, bytes.size())));
    bytes = bytes.sliced(part.size());
    m_remaining -= part.size();
    if (auto outcome = append(part)) {
        return outcome;
    }
    if (m_remaining > 0) {
        return std::nullopt;
    }
    if (m_state == State::sizedBody) {
        return complete();
    }
    m_state = State::chunkEnd;
    return std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::append(QByteArrayView bytes) {
    if (m_response.body.size() + bytes.size() > mostBodyBytes) {
        return failure(Kind::responseTooLarge);
    }
    m_response.body.append(bytes);
    return std::nullopt;
}

HttpResponseParser::Outcome HttpResponseParser::complete() {
    return std::move(m_response);
}
