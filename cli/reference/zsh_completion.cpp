#include "cli/reference/completions.h"

namespace cli {
namespace {

constexpr char kHelpers[] = R"zsh(#compdef brisel
# Completion of brisel for zsh, made from its --help.

_brisel_presets() {
  local -a names=(${(f)"$($_brisel_program presets --names 2>/dev/null)"})
  compadd -M 'm:{a-zA-Z}={A-Za-z}' -a names
}

_brisel_labels() {
  local -a names=(${(f)"$($_brisel_program params --names 2>/dev/null)"})
  compadd -M 'm:{a-zA-Z}={A-Za-z}' "$@" -a names
}

)zsh";

// Text within single quotes, where _arguments gives colons and brackets a meaning.
std::string escapedForSpec(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else if (c == '[' || c == ']' || c == ':') {
      result += std::string("\\") + c;
    } else {
      result += c;
    }
  }
  return result;
}

std::string action(const OptionInfo& option) {
  switch (option.kind) {
    case ValueKind::File:
      return "_files";
    case ValueKind::Scene:
      return "_files -g \"*.toml(-.)\"";
    case ValueKind::Preset:
      return "_brisel_presets";
    case ValueKind::Setting:
      return "_brisel_labels -q -S =";
    case ValueKind::Label:
      return "_brisel_labels";
    case ValueKind::Choice: {
      std::string list;
      for (const std::string& choice : option.choices) list += (list.empty() ? "" : " ") + choice;
      return "(" + list + ")";
    }
    default:
      return " ";
  }
}

std::string specOf(const OptionInfo& option) {
  std::string all;
  for (const std::string& name : option.names) all += (all.empty() ? "" : " ") + name;
  std::string specs;
  for (const std::string& name : option.names) {
    const std::string before = option.repeats ? "*" : "(" + all + ")";
    const std::string value = option.kind == ValueKind::None
                                  ? ""
                                  : ":" + escapedForSpec(option.value) + ":" + action(option);
    specs += " \\\n        '" + before + name + "[" + escapedForSpec(option.summary()) + "]" +
             value + "'";
  }
  return specs;
}

std::string caseOf(const CommandInfo& command) {
  std::string text = "    " + command.name + ")\n      _arguments -s";
  for (const OptionInfo& option : command.options) text += specOf(option);
  for (const OptionInfo& argument : command.arguments) {
    text += std::string(" \\\n        '") + (argument.repeats ? "*" : "1") + ":" +
            escapedForSpec(argument.names.front()) + ":" + action(argument) + "'";
  }
  return text + " ;;\n";
}

}  // namespace

std::string zshCompletion(const CommandTree& tree) {
  std::string text = kHelpers;
  text += "_brisel() {\n  local _brisel_program=$words[1] state line\n  local -a commands=(\n";
  for (const CommandInfo& command : tree.commands) {
    text += "    '" + command.name + ":" + escapedForSpec(command.description) + "'\n";
  }
  text += "    'help:Tell how it is used'\n  )\n  _arguments -C";
  for (const OptionInfo& option : tree.program.options) text += specOf(option);
  text +=
      " \\\n        '1:command:{_describe command commands}' '*::argument:->arguments' && return\n"
      "  case $words[1] in\n";
  for (const CommandInfo& command : tree.commands) text += caseOf(command);
  return text + "  esac\n}\n\n_brisel \"$@\"\n";
}

}  // namespace cli
