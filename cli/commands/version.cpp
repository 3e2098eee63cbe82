#include "cli/commands/version.h"

#include <string_view>

#include "cli/scene/effect.h"
#include "commit.h"

namespace cli {
namespace {

// Only the module knows which it chooses, and its about text says so.
std::string instructionSet(hostkit::Session& session) {
  constexpr std::string_view kLabel = "Instruction set: ";
  const std::string about = session.about();
  const std::size_t at = about.find(kLabel);
  if (at == std::string::npos) return "unknown";
  const std::size_t start = at + kLabel.size();
  return about.substr(start, about.find('\r', start) - start);
}

std::string moduleLines() {
  try {
    Effect effect(loadModule(""));
    return "module          " + versionText(effect.session().report().version) +
           "\ninstruction set " + instructionSet(effect.session());
  } catch (const std::exception& error) {
    return "module          none: " + std::string(error.what());
  }
}

}  // namespace

std::string programVersion() {
  return "brisel " BRISEL_VERSION "\ncommit          " BRISEL_COMMIT "\n" + moduleLines();
}

}  // namespace cli
