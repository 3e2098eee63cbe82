// How this process and those that it starts deal with memory.
#pragma once

#include <cstdint>
#include <filesystem>

namespace cli {

// Keeps what is freed for the next picture: giving pages back to the system and getting them
// cleared again, for every frame, costs more than many a step of the work. Call once, at start.
void keepFreedMemory();

// Bytes that the machine has, or fewer where a control group, as containers and batch systems make
// them, lets this process have no more. `system` is where files of the system are.
std::uint64_t availableMemory(const std::filesystem::path& system = "/");

}  // namespace cli
