// Which files a scene may name, since it may come from a stranger, and how they are read.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace scene {

/// Of a scene, and of an SVG file that it names.
inline constexpr std::uintmax_t kMaxFileBytes = 16 << 20;

/// What the user of a program allows beyond a scene's own folder.
struct FileAccess {
  std::vector<std::filesystem::path> folders;
  std::string option{};  // by which a folder is allowed, for messages; empty: there is none
};

/// The file that a scene names by `text`, relative to the scene's folder.
std::filesystem::path fileNamedBy(const std::filesystem::path& scene, const std::string& text);

/// Whether it does once ".." and links are followed; the file need not exist. An empty folder is
/// the working folder.
bool liesBelow(const std::filesystem::path& file, const std::filesystem::path& folder);

/// Throws WorkError beginning with `what`, such as "the input", unless the file lies below the
/// scene's folder or an allowed one.
void checkAccess(const std::filesystem::path& file, const std::filesystem::path& scene,
                 const FileAccess& access, const std::string& what);

/// All bytes of an ordinary file. Throws WorkError beginning with `name` where it is a folder, a
/// device or a pipe, is larger than kMaxFileBytes, or cannot be read.
std::string textOfFile(const std::filesystem::path& file, const std::string& name);

}  // namespace scene
