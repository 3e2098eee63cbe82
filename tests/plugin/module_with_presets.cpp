#include "tests/plugin/module_with_presets.h"

#include <fstream>
#include <random>
#include <string>
#include <system_error>

namespace tests {
namespace {

constexpr int kEntries = 10;

std::filesystem::path newFolder() {
  static int count = 0;
  return std::filesystem::temp_directory_path() /
         ("brisel_panel_test_" + std::to_string(std::random_device{}()) + "_" +
          std::to_string(count++));
}

std::string thumbnail(int entry) {
  constexpr int kWidth = 88, kHeight = 65;
  std::string file(54, '\0');
  file.append(3 * kWidth * kHeight, static_cast<char>(entry));
  file[10] = 54;
  file[18] = kWidth;
  file[22] = kHeight;
  file[28] = 24;
  return file;
}

}  // namespace

ModuleWithPresets::ModuleWithPresets() : folder_(newFolder()) {
  const auto presets = folder_ / "Corvane/Drizzen";
  std::filesystem::create_directories(presets);
  const auto write = [&](const std::string& name, const std::string& text) {
    std::ofstream(presets / name, std::ios::binary) << text;
  };
  std::string index = "; index\r\n[Emmiter]\r\n";
  for (int i = 0; i < kEntries; ++i) {
    const std::string name = "p" + std::to_string(i);
    index += name + ".txt " + name + ".bmp\r\n";
    write(name + ".txt", "Tessaro parameters\r\nIntensity\r\n" + std::to_string(20 + i) +
                             "\r\nStart\r\n0.25 0.5\r\nColor rainbow\r\n25\r\n");
    write(name + ".bmp", thumbnail(i));
  }
  write("Drizzen.prs", index + "[Geometry]\r\nmissing.txt missing.bmp\r\n");
  std::filesystem::copy_file(BRISEL_MODULE_PATH, module());
}

ModuleWithPresets::~ModuleWithPresets() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path ModuleWithPresets::module() const {
  return folder_ / std::filesystem::path(BRISEL_MODULE_PATH).filename();
}

}  // namespace tests
