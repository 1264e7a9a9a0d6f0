#include "bridge/BridgeError.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Description {
    BridgeError::Kind kind;
    QLatin1StringView text;
};

constexpr std::array descriptions{
    Description{BridgeError::Kind::badUrl, "The address of the server is not valid."_L1},
    Description{BridgeError::Kind::cannotConnect, "Could not connect to the server."_L1},
    Description{BridgeError::Kind::timedOut, "The request timed out."_L1},
    Description{BridgeError::Kind::connectionLost, "The network connection was lost."_L1},
    Description{BridgeError::Kind::malformedResponse, "The answer of the server was garbled."_L1},
    Description{BridgeError::Kind::responseTooLarge, "The server sent more data than expected."_L1},
    Description{BridgeError::Kind::badServerResponse, "The server answered with an error."_L1},
    Description{BridgeError::Kind::cancelled, "The request was cancelled."_L1},
};

}

BridgeError BridgeError::of(Kind kind) {
    const auto* found =
        std::ranges::find_if(descriptions, [kind](const Description& description) { return description.kind == kind; });
    return {kind, found == descriptions.end() ? QString() : QString{found->text}};
}
