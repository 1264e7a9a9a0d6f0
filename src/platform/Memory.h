#pragma once

namespace Memory {

/// Hands the pages that the allocator holds and nobody uses back to the system. Takes about a millisecond: for moments
/// at which much was freed, such as after a window was closed. Any thread.
void giveBackUnused();

}
