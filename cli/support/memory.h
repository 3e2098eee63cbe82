// How this process and those that it starts deal with memory.
#pragma once

#include <cstdint>

namespace cli {

// Keeps what is freed for the next picture: giving pages back to the system and getting them
// cleared again, for every frame, costs more than many a step of the work. Call once, at start.
void keepFreedMemory();

// Bytes that the machine has.
std::uint64_t machineMemory();

}  // namespace cli
