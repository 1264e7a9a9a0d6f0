#include "bridge/BridgeError.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

// In the order of the kinds.
constexpr std::array texts{
    "The address of the server is not valid."_L1,
    "Could not connect to the server."_L1,
    "The request timed out."_L1,
    "The network connection was lost."_L1,
    "The answer of the server was garbled."_L1,
    "The server sent more data than expected."_L1,
    "The server answered with an error."_L1,
    "The request was cancelled."_L1,
};
static_assert(texts.size() == static_cast<std::size_t>(BridgeError::Kind::keyNotFound));

}

BridgeError BridgeError::of(Kind kind) {
    return {kind, QString{texts.at(static_cast<std::size_t>(kind))}};
}
