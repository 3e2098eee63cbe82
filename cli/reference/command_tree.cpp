#include "cli/reference/command_tree.h"

#include <sstream>

namespace cli {
namespace {

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

std::string valueOf(const CLI::Option& option) {
  if (option.get_items_expected_max() == 0) return "";
  if (!option.get_option_text().empty()) return option.get_option_text();
  const std::string type = option.get_type_name();
  return type.substr(0, type.find(':'));  // behind it, what its check says
}

// Those that its check takes, as the parser writes them behind the type: "TEXT:{8,16}".
std::vector<std::string> choicesOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t start = type.find('{');
  const std::size_t end = type.find('}');
  if (start == std::string::npos || end == std::string::npos) return {};
  return split(type.substr(start + 1, end - start - 1), ',');
}

ValueKind kindOf(const std::string& value) {
  if (value.empty()) return ValueKind::None;
  if (value.starts_with("FILE") || value == "FOLDER") return ValueKind::File;
  if (value == "PRESET") return ValueKind::Preset;
  if (value == "LABEL=VALUE") return ValueKind::Setting;
  return ValueKind::Other;
}

ValueKind kindOfArgument(const std::string& command, const std::string& name) {
  if (name == "SCENE") return ValueKind::Scene;
  if (name == "PART") return ValueKind::File;
  if (command == "params") return ValueKind::Label;
  return command == "presets" ? ValueKind::Preset : ValueKind::Other;
}

OptionInfo optionInfo(const CLI::Option& option) {
  OptionInfo info{{},
                  valueOf(option),
                  {},
                  {},
                  split(option.get_description(), '\n'),
                  option.get_required(),
                  option.get_expected_max() > 1};
  info.kind = kindOf(info.value);
  info.choices = choicesOf(option);
  if (!info.choices.empty()) info.kind = ValueKind::Choice;
  for (const std::string& name : option.get_snames()) info.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) info.names.push_back("--" + name);
  return info;
}

CommandInfo commandInfo(const CLI::App& app) {
  CommandInfo info{app.get_name(), app.get_description(), {}, {}};
  for (const CLI::Option* option : app.get_options()) {
    OptionInfo described = optionInfo(*option);
    if (!option->get_positional()) {
      info.options.push_back(std::move(described));
      continue;
    }
    described.names = {option->get_name(true)};
    described.value.clear();
    described.kind = kindOfArgument(info.name, described.names.front());
    info.arguments.push_back(std::move(described));
  }
  return info;
}

}  // namespace

std::string OptionInfo::summary() const {
  std::string text;
  for (const std::string& line : help) text += (text.empty() ? "" : " ") + line;
  return text.substr(0, text.find_first_of(";:"));
}

CommandTree commandTree(const CLI::App& app) {
  CommandTree tree{commandInfo(app), {}, app.get_footer()};
  for (const CLI::App* command : app.get_subcommands({})) {
    tree.commands.push_back(commandInfo(*command));
  }
  return tree;
}

}  // namespace cli
