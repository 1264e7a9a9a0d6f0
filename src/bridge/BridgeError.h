#pragma once

#include <QString>

/// Why a call to the bridge, or the decoding of its answer, failed: a kind for the program and one line for a person.
struct BridgeError final {
    enum class Kind {
        badUrl,
        cannotConnect,
        timedOut,
        connectionLost,
        malformedResponse,
        responseTooLarge,
        badServerResponse,
        cancelled,
        keyNotFound,
        typeMismatch,
        valueNotFound,
        dataCorrupted,
    };

    Kind kind;
    QString text;

    /// The error of a kind up to `cancelled`, whose text is always the same; those after it are about a value.
    [[nodiscard]] static BridgeError of(Kind kind);

    friend bool operator==(const BridgeError&, const BridgeError&) = default;
};
