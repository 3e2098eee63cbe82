#include "cli/scene/effect.h"

#include <utility>

#include "cli/support/errors.h"
#include "effect/parameters.h"

namespace cli {
namespace {

constexpr A_u_long kOldestVersion = 0x00100001;  // 2.0.0 develop, build 1

void checkVersion(const std::filesystem::path& path, A_u_long version) {
  if (version >= kOldestVersion) return;
  throw WorkError("the module " + inQuotes(path.string()) + " is too old: it is version " +
                  versionText(version) + ", and this command needs " + versionText(kOldestVersion) +
                  " or later");
}

// Values are given by the parameter's index, which never changes.
void checkParameters(const std::filesystem::path& path, const hostkit::ParameterSet& parameters) {
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    const char* const label = brisel::parameterSpec(index).label;
    if (index < parameters.count() &&
        parameters.list()[static_cast<std::size_t>(index)].label == label) {
      continue;
    }
    throw WorkError("the module " + inQuotes(path.string()) + " is another effect: its parameter " +
                    std::to_string(index) + " is not " + inQuotes(label));
  }
}

}  // namespace

std::filesystem::path findModule(const std::string& askedFor) {
  if (!askedFor.empty()) return askedFor;
  const std::filesystem::path folder =
      std::filesystem::read_symlink("/proc/self/exe").parent_path();
  const std::filesystem::path beside = folder / kModuleName;
  const std::filesystem::path installed =
      (folder / "../lib/brisel" / kModuleName).lexically_normal();
  for (const std::filesystem::path& candidate : {beside, installed}) {
    if (std::filesystem::exists(candidate)) return candidate;
  }
  throw WorkError("the module is neither " + inQuotes(beside.string()) + " nor " +
                  inQuotes(installed.string()) + "; name it with --module");
}

scene::PresetLibrary presetsBeside(const std::filesystem::path& module) {
  // The module, too, looks in the folder of the file that a link leads to.
  const auto folder = std::filesystem::canonical(module).parent_path();
  return scene::PresetLibrary(folder / "Corvane" / "Drizzen");
}

std::string versionText(A_u_long version) {
  static const char* const kStages[] = {"develop", "alpha", "beta", "release"};
  const auto bits = [version](int shift, A_u_long mask) { return (version >> shift) & mask; };
  // The high bits of the major number were added on top later.
  const A_u_long major = bits(19, 0x7) | (bits(26, 0xF) << 3);
  return std::to_string(major) + "." + std::to_string(bits(15, 0xF)) + "." +
         std::to_string(bits(11, 0xF)) + " " + kStages[bits(9, 0x3)] + ", build " +
         std::to_string(bits(0, 0x1FF));
}

SharedModule loadModule(const std::string& askedFor) {
  return std::make_shared<const hostkit::Module>(hostkit::Module::load(findModule(askedFor)));
}

Effect::Effect(SharedModule module) : module_(std::move(module)), session_(*module_) {
  session_.open();
  checkVersion(path(), session_.report().version);
  checkParameters(path(), session_.parameters());
}

}  // namespace cli
