// Scenes to start from.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace cli {

// The text of a scene with comments, for a file of that name; of those presets' look where there
// are any.
std::string starterScene(const std::filesystem::path& name,
                         const std::vector<std::string>& presets = {});

}  // namespace cli
