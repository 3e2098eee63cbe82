#include "scene/svg_file.h"
#include "scene/text/errors.h"

namespace scene {

SvgPath readSvgPath(const std::filesystem::path& file, const std::string& id) {
  throw WorkError(inQuotes(file.string()) + " is not read on this system: write what " +
                  inQuotes(id) + " has in \"d\" as path = \"...\" below [mask]");
}

}  // namespace scene
