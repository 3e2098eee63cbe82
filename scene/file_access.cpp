#include "scene/file_access.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <system_error>

#include "scene/text/errors.h"

namespace scene {

namespace fs = std::filesystem;

fs::path fileNamedBy(const fs::path& scene, const std::string& text) {
  if (text == "-") return scene.parent_path() / "./-";  // else it would be standard input
  return scene.parent_path() / text;
}

bool liesBelow(const fs::path& file, const fs::path& folder) {
  std::error_code error;
  const fs::path top = fs::canonical(folder.empty() ? "." : folder, error);
  if (error) return false;
  const fs::path whole = fs::weakly_canonical(fs::absolute(file, error), error);
  if (error) return false;
  return std::ranges::mismatch(top, whole).in1 == top.end();
}

void checkAccess(const fs::path& file, const fs::path& scene, const FileAccess& access,
                 const std::string& what) {
  const auto covers = [&](const fs::path& folder) { return liesBelow(file, folder); };
  if (covers(scene.parent_path()) || std::ranges::any_of(access.folders, covers)) return;
  std::error_code error;
  const fs::path folder = fs::weakly_canonical(fs::absolute(file, error), error).parent_path();
  if (error) {  // a link that leads to itself, say
    throw WorkError(what + " " + inQuotes(file.string()) + " cannot be found: " + error.message());
  }
  std::string remedy = "; move it there";
  if (!access.option.empty()) {
    remedy += ", or allow its folder with " + access.option + " " + inQuotes(folder.string());
  }
  throw WorkError(what + " " + inQuotes(file.string()) + " lies outside the scene's folder" +
                  remedy);
}

std::string textOfFile(const fs::path& file, const std::string& name) {
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (!fs::exists(status)) throw WorkError(name + " does not exist");
  if (fs::is_directory(status)) throw WorkError(name + " is a folder");
  // Which could keep its reader waiting for ever.
  if (!fs::is_regular_file(status)) throw WorkError(name + " is a device or a pipe, not a file");
  const std::uintmax_t size = fs::file_size(file, error);
  if (!error && size > kMaxFileBytes) {
    throw WorkError(name + " is larger than " + std::to_string(kMaxFileBytes >> 20) +
                    " MB, the most that is read");
  }
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw WorkError(name + " cannot be read: " + std::strerror(errno));
  try {
    return {std::istreambuf_iterator<char>(stream), {}};
  } catch (const std::ios_base::failure&) {
    throw WorkError(name + " cannot be read: " + std::strerror(errno));
  }
}

}  // namespace scene
