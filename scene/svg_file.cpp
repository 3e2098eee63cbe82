#include "scene/svg_file.h"

#include <pugixml.hpp>

#include <algorithm>
#include <string_view>
#include <vector>

#include "scene/file_access.h"
#include "scene/text/errors.h"
#include "scene/text/nearest_name.h"

namespace scene {
namespace {

// The element's name without a namespace's prefix.
std::string_view localName(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  return name.substr(name.find(':') + 1);
}

class PathFinder : public pugi::xml_tree_walker {
 public:
  explicit PathFinder(const std::string& id) : id_(id) {}

  bool for_each(pugi::xml_node& node) override {
    const std::string id = node.attribute("id").value();
    if (!id.empty() && localName(node) == "path") ids.push_back(id);
    if (id != id_) return true;
    found = node;
    return false;
  }

  pugi::xml_node found;          // an element of any kind
  std::vector<std::string> ids;  // of the paths passed

 private:
  const std::string& id_;
};

bool isTransformed(pugi::xml_node node) {
  for (; node; node = node.parent()) {
    if (node.attribute("transform")) return true;
  }
  return false;
}

}  // namespace

SvgPath readSvgPath(const std::filesystem::path& file, const std::string& id) {
  const std::string name = file.string();
  const std::string text = textOfFile(file, inQuotes(name));
  const auto place = [&](std::ptrdiff_t offset) {
    const auto end = text.begin() + std::clamp<std::ptrdiff_t>(offset, 0, std::ssize(text));
    return name + ":" + std::to_string(1 + std::count(text.begin(), end, '\n'));
  };

  pugi::xml_document document;
  const pugi::xml_parse_result result = document.load_buffer(text.data(), text.size());
  if (!result) throw WorkError(place(result.offset) + ": not an SVG file: " + result.description());

  PathFinder finder(id);
  document.traverse(finder);
  if (!finder.found) {
    throw WorkError(inQuotes(name) + " has no path with the id " + inQuotes(id) +
                    orNearest(id, finder.ids));
  }
  const std::string where = place(finder.found.offset_debug());
  if (localName(finder.found) != "path") {
    throw WorkError(where + ": " + inQuotes(id) + " is a <" + finder.found.name() +
                    ">, and a mask takes a <path>");
  }
  if (isTransformed(finder.found)) {
    throw WorkError(where + ": a transform moves " + inQuotes(id) +
                    "; a mask takes the numbers of the path as they are, so apply it first");
  }
  return {finder.found.attribute("d").value(), where};
}

}  // namespace scene
