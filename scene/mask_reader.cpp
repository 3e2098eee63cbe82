#include "scene/mask_reader.h"

#include <string>

#include "scene/scene_keys.h"
#include "scene/svg_file.h"
#include "scene/svg_path.h"
#include "scene/text/errors.h"
#include "scene/text/numbers.h"

namespace scene {
namespace {

Mask::Key keyFrom(const Setting::Key& written) {
  const auto* data = std::get_if<std::string>(&written.value);
  if (!data) throw WorkError(written.place + ": path is SVG path data in quotes, or keyframes");
  try {
    return {written, maskShapeFromPathData(*data)};
  } catch (const PathDataError& error) {
    throw WorkError(written.place + ": path: " + error.what());
  }
}

// Only outlines with the same vertices have shapes between them.
void checkAlike(const Mask::Key& first, const Mask::Key& key, const std::string& place) {
  const auto complain = [&](const std::string& here, const std::string& there) {
    throw WorkError(place + ": path: the outline at " + timeText(key) + here + ", the one at " +
                    timeText(first) + there + "; all keyframes must be alike");
  };
  const std::size_t count = key.value.vertices.size();
  const std::size_t firstCount = first.value.vertices.size();
  if (count != firstCount) {
    complain(" has " + std::to_string(count) + (count == 1 ? " vertex" : " vertices"),
             " has " + std::to_string(firstCount));
  }
  if (key.value.closed != first.value.closed) {
    complain(key.value.closed ? " is closed" : " is open",
             first.value.closed ? " closed" : " open");
  }
}

std::vector<Mask::Key> outlinesOf(const TomlReader& reader, const TomlEntry& entry) {
  std::vector<Mask::Key> keys;
  for (const Setting::Key& written : reader.keysOf(entry)) {
    keys.push_back(keyFrom(written));
    checkAlike(keys.front(), keys.back(), written.place);
  }
  return keys;
}

MaskShape shapeFromFile(const std::filesystem::path& file, const std::string& id) {
  const SvgPath path = readSvgPath(file, id);
  try {
    return maskShapeFromPathData(path.data);
  } catch (const PathDataError& error) {
    throw WorkError(path.place + ": " + error.what());
  }
}

}  // namespace

Mask readMaskTable(const TomlReader& reader, const TomlEntry& entry) {
  Mask mask;
  for (const TomlEntry& item : inFileOrder(reader.tableOf(entry))) {
    if (item.key == "path") {
      mask.keys = outlinesOf(reader, item);
    } else if (item.key == "inverted") {
      mask.inverted = reader.flagOf(item);
    } else {
      reader.unknownKey(item, "key", namesOf(kMaskKeys));
    }
  }
  if (mask.keys.empty()) reader.fail(*entry.node, "[" + entry.key + "] has no path");
  return mask;
}

Mask readMaskReference(const TomlReader& reader, const TomlEntry& entry, const FileAccess& access) {
  const std::string reference = reader.textOf(entry);
  const std::size_t hash = reference.rfind('#');
  if (hash == std::string::npos || hash == 0 || hash + 1 == reference.size()) {
    reader.fail(*entry.node, entry.key +
                                 " is an SVG file and the id of a path in it, such as "
                                 "\"logo.svg#star\"; path data goes into the table [" +
                                 entry.key + "]");
  }
  try {
    const auto file = fileNamedBy(reader.file(), reference.substr(0, hash));
    checkAccess(file, reader.file(), access, "the file");
    return {{{{0}, shapeFromFile(file, reference.substr(hash + 1))}}};
  } catch (const WorkError& error) {
    reader.fail(*entry.node, entry.key + ": " + error.what());
  }
}

}  // namespace scene
