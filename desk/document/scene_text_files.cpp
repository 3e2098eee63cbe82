#include <algorithm>

#include "desk/document/scene_tables.h"
#include "desk/document/value_text.h"
#include "scene/file_access.h"

namespace desk {
namespace {

namespace fs = std::filesystem;

/// A value that names a file, and for masks a path in it.
struct FileName {
  const toml::node* node;
  std::string file;
  std::string part;  // "#star"
};

std::vector<FileName> fileNames(const TomlEdit& toml) {
  std::vector<FileName> names;
  const auto take = [&](const toml::table* table, const char* key) {
    const toml::value<std::string>* value = table ? (*table)[key].as_string() : nullptr;
    if (!value) return;
    const std::string& text = value->get();
    if (text.empty()) return;
    const bool isMask = key == std::string_view("mask");
    const std::size_t end = isMask ? text.rfind('#') : std::string::npos;
    names.push_back({value, text.substr(0, end), end < text.size() ? text.substr(end) : ""});
  };
  take(tableIn(toml.root(), "scene"), "input");
  take(tableIn(toml.root(), "scene"), "mask");
  const toml::array* layers = layersOf(toml);
  for (std::size_t i = 0; layers && i < layers->size(); ++i) take((*layers)[i].as_table(), "mask");
  return names;
}

/// Through folders that are links; the file itself may be one.
fs::path withoutLinks(const fs::path& file) {
  return fs::weakly_canonical(file.parent_path()) / file.filename();
}

}  // namespace

std::vector<fs::path> SceneText::files() const {
  std::vector<fs::path> files;
  for (const FileName& name : fileNames(*toml_)) {
    files.push_back(scene::fileNamedBy(file_, name.file));
  }
  return files;
}

std::string SceneText::withFilesFrom(const fs::path& folder) const {
  std::vector<FileName> names = fileNames(*toml_);
  const auto offset = [&](const FileName& name) { return toml_->spanOf(*name.node).begin; };
  std::ranges::sort(names, std::ranges::greater(), offset);  // those in front stay where they are
  std::string moved = text();
  for (const FileName& name : names) {
    const auto file = fs::absolute(scene::fileNamedBy(file_, name.file));
    const bool isAbsolute = fs::path(name.file).is_absolute();
    if (isAbsolute && !scene::liesBelow(file, folder)) continue;
    fs::path seen = file.lexically_normal().lexically_relative(folder);
    // Of a folder that is a link, ".." is above what it leads to.
    const fs::path real = withoutLinks(file);
    if (withoutLinks(folder / seen) != real) {
      seen = real.lexically_relative(fs::weakly_canonical(folder));
    }
    const TomlEdit::Span span = toml_->spanOf(*name.node);
    moved.replace(span.begin, span.end - span.begin, tomlString(seen.string() + name.part));
  }
  return checked(std::move(moved), file_);
}

}  // namespace desk
