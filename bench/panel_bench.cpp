// What a person waits for in the effect controls: reading a library of presets when an instance is
// set up, and composing the picture of a preset row when it is drawn.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "plugin/controls/preset_list.h"
#include "plugin/controls/thumbnail_strip.h"

namespace {

constexpr int kThumbnailWidth = 88;
constexpr int kThumbnailHeight = 65;

/// A folder with an index of `count` presets in each row and a thumbnail for every one of them.
class Library {
 public:
  explicit Library(int count)
      : folder_((std::filesystem::temp_directory_path() / "brisel_panel_bench").string() + "/"),
        index_(folder_ + "Drizzen.prs") {
    std::filesystem::create_directories(folder_);
    std::ofstream index(index_, std::ios::binary);
    index << "; presets\r\n";
    for (const char* section : {"Emmiter", "Geometry"}) {
      index << '[' << section << "]\r\n";
      for (int i = 0; i < count; ++i) {
        const std::string name = section + std::to_string(i);
        index << name << ".txt " << name << ".bmp\r\n";
        writeThumbnail(folder_ + name + ".bmp");
      }
    }
  }
  ~Library() { std::filesystem::remove_all(folder_); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  brisel::PresetFolders folders() const { return {index_, folder_}; }

 private:
  static void writeThumbnail(const std::string& path) {
    std::string file(54 + kThumbnailWidth * 3 * kThumbnailHeight, '\x40');
    const auto put = [&](std::size_t offset, int value) {
      for (std::size_t i = 0; i < 4; ++i) file[offset + i] = static_cast<char>(value >> 8 * i);
    };
    put(10, 54);
    put(18, kThumbnailWidth);
    put(22, kThumbnailHeight);
    put(28, 24);
    std::ofstream(path, std::ios::binary) << file;
  }

  std::string folder_;
  std::string index_;
};

void readLibrary(benchmark::State& state) {
  const Library library(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    brisel::PresetList lists[] = {brisel::readPresetList(library.folders(), "Emmiter"),
                                  brisel::readPresetList(library.folders(), "Geometry")};
    benchmark::DoNotOptimize(lists);
  }
}

void composeRow(benchmark::State& state) {
  const Library library(static_cast<int>(state.range(0)));
  brisel::PresetList list = brisel::readPresetList(library.folders(), "Geometry");
  brisel::setFrame({0, 0, 1025, 75}, list);
  brisel::layOutRow(list);
  brisel::normalizeScroll(list);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(composeStrip(list));
}

BENCHMARK(readLibrary)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(composeRow)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
