#include "tests/plugin/module_with_presets.h"

#include <fstream>
#include <string>

#include "tests/presets/preset_files.h"

namespace tests {
ModuleWithPresets::ModuleWithPresets() {
  const auto presets = folder() / "Corvane/Drizzen";
  std::filesystem::create_directories(presets);
  const auto write = [&](const std::string& name, const std::string& text) {
    std::ofstream(presets / name, std::ios::binary) << text;
  };
  std::string index = "; index\r\n[Emmiter]\r\n";
  for (int i = 0; i < 10; ++i) {
    const std::string name = "p" + std::to_string(i);
    index += name + ".txt " + name + ".bmp\r\n";
    write(name + ".txt", "Tessaro parameters\r\nIntensity\r\n" + std::to_string(20 + i) +
                             "\r\nStart\r\n0.25 0.5\r\nColor rainbow\r\n25\r\n");
    write(name + ".bmp", bitmap(24, 88, 65, std::string(3 * 88 * 65, static_cast<char>(i)), 54));
  }
  write("Drizzen.prs", index + "[Geometry]\r\nmissing.txt missing.bmp\r\n");
  std::filesystem::copy_file(BRISEL_MODULE_PATH, module());
}

std::filesystem::path ModuleWithPresets::module() const {
  return folder() / std::filesystem::path(BRISEL_MODULE_PATH).filename();
}

}  // namespace tests
