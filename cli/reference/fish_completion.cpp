#include "cli/reference/completions.h"

namespace cli {
namespace {

std::string inSingleQuotes(const std::string& text) {
  std::string result = "'";
  for (const char c : text)
    result += c == '\'' || c == '\\' ? std::string("\\") + c : std::string(1, c);
  return result + "'";
}

std::string labels(const std::string& suffix) {
  return "'(brisel params --names 2>/dev/null" + suffix + ")'";
}

// What follows the option, or stands for the argument.
std::string values(const OptionInfo& option) {
  switch (option.kind) {
    case ValueKind::None:
      return "";
    case ValueKind::File:
      return " -r -F";
    case ValueKind::Scene:
      return " -a '(__fish_complete_suffix .toml)'";
    case ValueKind::Preset:
      return " -x -a '(brisel presets --names 2>/dev/null)'";
    case ValueKind::Setting:
      return " -x -a " + labels(" | string replace -r \\'$\\' =");
    case ValueKind::Label:
      return " -x -a " + labels("");
    case ValueKind::Choice: {
      std::string list;
      for (const std::string& choice : option.choices) list += (list.empty() ? "" : " ") + choice;
      return " -x -a " + inSingleQuotes(list);
    }
    case ValueKind::Other:
      return " -x";
  }
  return "";
}

std::string namesOf(const OptionInfo& option) {
  std::string text;
  for (const std::string& name : option.names) {
    text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  return text;
}

}  // namespace

std::string fishCompletion(const CommandTree& tree) {
  std::string text =
      "# Completion of brisel for fish, made from its --help.\ncomplete -c brisel -f\n";
  const std::string first = "complete -c brisel -n __fish_use_subcommand";
  for (const OptionInfo& option : tree.program.options) {
    text += first + namesOf(option) + " -d " + inSingleQuotes(option.summary()) + "\n";
  }
  for (const CommandInfo& command : tree.commands) {
    text += first + " -a " + command.name + " -d " + inSingleQuotes(command.description) + "\n";
  }
  text += first + " -a help -d 'Tell how it is used'\n";
  for (const CommandInfo& command : tree.commands) {
    const std::string within =
        "complete -c brisel -n '__fish_seen_subcommand_from " + command.name + "'";
    for (const OptionInfo& option : command.options) {
      text += within + namesOf(option) + values(option) + " -d " +
              inSingleQuotes(option.summary()) + "\n";
    }
    for (const OptionInfo& argument : command.arguments) {
      text += within + values(argument) + "\n";
    }
  }
  return text;
}

}  // namespace cli
