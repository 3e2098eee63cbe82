#include <iostream>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/parameter_listing.h"
#include "cli/scene/effect.h"

namespace cli {
namespace {

struct ParamsOptions {
  bool json = false;
  std::string module;
};

void listParameters(const ParamsOptions& options) {
  Effect effect(options.module);
  const hostkit::ParameterSet& parameters = effect.session().parameters();
  if (options.json) {
    std::cout << parameterJson(parameters).dump(2) << '\n';
  } else {
    std::cout << parameterTable(parameters);
  }
}

}  // namespace

void addParamsCommand(CLI::App& app) {
  const auto options = std::make_shared<ParamsOptions>();
  CLI::App* command = app.add_subcommand("params", "List the effect's parameters");
  command->add_flag("--json", options->json, "As JSON, for scripts");
  addModuleOption(*command, options->module);
  command->callback([options] { listParameters(*options); });
}

}  // namespace cli
