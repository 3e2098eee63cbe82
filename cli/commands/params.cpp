#include <iostream>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/parameter_listing.h"
#include "cli/scene/effect.h"
#include "cli/support/errors.h"
#include "cli/support/text_table.h"
#include "scene/text/nearest_name.h"

namespace cli {
namespace {

struct ParamsOptions {
  std::vector<std::string> words;
  bool json = false;
  bool names = false;
  std::string module;
};

// The parameters directly in the group.
std::vector<ListedParameter> membersOf(const ListedParameter& group,
                                       const std::vector<ListedParameter>& all) {
  std::vector<ListedParameter> members;
  for (const ListedParameter& parameter : all) {
    const std::size_t depth = group.groups.size();
    if (parameter.groups.size() == depth + 1 && parameter.groups[depth] == group.declared->label) {
      members.push_back(parameter);
    }
  }
  return members;
}

void showOne(const ListedParameter& parameter, const std::vector<ListedParameter>& all) {
  std::cout << parameterDetails(parameter, textWidth());
  if (parameter.declared->type() == PF_Param_GROUP_START) {
    std::cout << '\n' << parameterTable(membersOf(parameter, all), false, textWidth());
  }
}

// The labels that hold the label of the one that was shown.
void showNamesakes(const ListedParameter& shown, const std::vector<ListedParameter>& all) {
  const std::string label = scene::lowerCase(shown.declared->label);
  std::string others;
  for (const ListedParameter& parameter : all) {
    const std::string& other = parameter.declared->label;
    if (parameter.declared == shown.declared ||
        scene::lowerCase(other).find(label) == std::string::npos) {
      continue;
    }
    others += (others.empty() ? "" : ", ") + inQuotes(other);
  }
  if (!others.empty()) std::cout << '\n' << wrapped("See also " + others + ".", 0, textWidth());
}

void listParameters(const ParamsOptions& options) {
  Effect effect(loadModule(options.module));
  const std::vector<ListedParameter> all = listedParameters(effect.session().parameters());
  std::string text;
  for (const std::string& word : options.words) text += (text.empty() ? "" : " ") + word;
  const std::vector<ListedParameter> meant = text.empty() ? all : parametersMeant(all, text);
  if (options.json) {
    std::cout << parameterJson(meant).dump(2) << '\n';
  } else if (options.names) {
    for (const ListedParameter& parameter : meant) std::cout << parameter.declared->label << '\n';
  } else if (meant.size() == 1) {
    showOne(meant.front(), all);
    showNamesakes(meant.front(), all);
  } else {
    std::cout << parameterTable(meant, text.empty(), textWidth());
    if (text.empty()) std::cout << "\n\"brisel params LABEL\" tells all about one of them.\n";
  }
}

}  // namespace

void addParamsCommand(CLI::App& app) {
  const auto options = std::make_shared<ParamsOptions>();
  CLI::App* command = app.add_subcommand("params", "List the effect's parameters, or explain one");
  command
      ->add_option("TEXT", options->words,
                   "A label or a part of it, an item, or a word of a\n"
                   "description; one match is told in full")
      ->type_name("");
  CLI::Option* json = command->add_flag("--json", options->json, "As JSON, for scripts");
  command->add_flag("--names", options->names, "The labels alone, one a line")->excludes(json);
  addModuleOption(*command, options->module);
  command->callback([options] { listParameters(*options); });
}

}  // namespace cli
