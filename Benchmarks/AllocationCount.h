// Heap allocations made by this thread so far: the global allocation
// functions are replaced (AllocationCount.cpp) to count them, so that a
// benchmark can report how many allocations one operation makes.
#pragma once

#include <cstdint>

namespace corvel {

[[nodiscard]] std::uint64_t allocationCount();

}  // namespace corvel
