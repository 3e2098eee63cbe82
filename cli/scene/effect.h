// The effect, loaded and set up through the small host.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "hostkit/module.h"
#include "hostkit/session.h"
#include "scene/preset_library.h"

namespace cli {

inline constexpr char kModuleName[] = "VellixDrizzen_64.AEX";

// Where the module is: the file asked for, else next to this program, else in ../lib/brisel/ from
// there. Throws WorkError naming the places searched when it is not found.
std::filesystem::path findModule(const std::string& askedFor);

// "2.0.0 develop, build 1" of the host's packed version number.
std::string versionText(A_u_long version);

// The presets that a module shows: those in its folder.
scene::PresetLibrary presetsBeside(const std::filesystem::path& module);

// Stays loaded while any instance of its effect needs it.
using SharedModule = std::shared_ptr<const hostkit::Module>;

// `askedFor` as for findModule. Throws WorkError or hostkit::Error when there is no such module.
SharedModule loadModule(const std::string& askedFor);

// One instance.
class Effect {
 public:
  // Throws WorkError or hostkit::Error when the module cannot be used: too old, or parameters of
  // another effect.
  explicit Effect(SharedModule module);

  const std::filesystem::path& path() const { return module_->path(); }
  hostkit::Session& session() { return session_; }
  const hostkit::Session& session() const { return session_; }

 private:
  SharedModule module_;
  hostkit::Session session_;
};

}  // namespace cli
