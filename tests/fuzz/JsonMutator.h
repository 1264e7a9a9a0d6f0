#pragma once

#include <cstddef>
#include <cstdint>

/// Changes an input in place and answers its new size: as often the one or other value of the JSON document that it is,
/// which stays one, as its bytes. Without it nearly all inputs would only ever be refused by the parser.
[[nodiscard]] std::size_t mutateJson(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed);
