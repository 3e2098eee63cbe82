// A copy of the module with presets of the tests' own next to it.
#pragma once

#include <filesystem>

#include "tests/support/temporary_folder.h"

namespace tests {

// Ten emitter presets, of which number i sets the intensity 20 + i and shows a thumbnail of the
// gray level i, and a star preset whose files are missing. Must outlive the loaded module: Windows
// removes no library that is in use.
class ModuleWithPresets {
 public:
  ModuleWithPresets();

  const std::filesystem::path& folder() const { return folder_.path(); }
  std::filesystem::path module() const;

 private:
  TemporaryFolder folder_;
};

}  // namespace tests
