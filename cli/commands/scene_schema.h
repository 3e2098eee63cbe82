// The JSON schema of scene files, by which editors complete, explain and check them.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <vector>

#include "cli/commands/parameter_listing.h"

namespace cli {

// For the parameters that the module declares. Stricter than the program in two points: labels,
// items and colors are taken only as they are spelled here.
nlohmann::ordered_json sceneSchema(const std::vector<ListedParameter>& parameters);

// Its path next to this program; empty when it is not there.
std::filesystem::path installedSchema();

}  // namespace cli
