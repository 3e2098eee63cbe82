#include "cli/reference/completions.h"

namespace cli {
namespace {

// The first function offers the lines of its input; names with blanks are quoted by the shell as
// those of files are. The second finds the option whose value is being typed, as the shell takes
// "=" for a word of its own.
constexpr char kHelpers[] = R"(# Completion of brisel for bash, made from its --help.

_brisel_offer() {
  local line wanted=${1#[\"\']}
  wanted=${wanted//\\/}
  compopt -o filenames
  while IFS= read -r line; do
    [[ ${line,,} == "${wanted,,}"* ]] && COMPREPLY+=("$line")
  done
}

_brisel() {
  local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} program=${COMP_WORDS[0]}
  COMPREPLY=()
  if [[ $current == = ]]; then
    current=
  elif [[ $option == = ]]; then
    option=${COMP_WORDS[COMP_CWORD - 2]}
  fi
)";

std::string words(const std::vector<OptionInfo>& options) {
  std::string text;
  for (const OptionInfo& option : options) {
    for (const std::string& name : option.names) text += (text.empty() ? "" : " ") + name;
  }
  return text;
}

std::string fromWords(const std::string& list) {
  return "COMPREPLY=($(compgen -W '" + list + "' -- \"$current\"))";
}

std::string action(const OptionInfo& option) {
  switch (option.kind) {
    case ValueKind::File:
      return "compopt -o default";
    case ValueKind::Scene:
      return "compopt -o filenames; COMPREPLY=($(compgen -f -X '!*.toml' -- \"$current\") "
             "$(compgen "
             "-d -- \"$current\"))";
    case ValueKind::Preset:
      return "_brisel_offer \"$current\" < <(\"$program\" presets --names 2>/dev/null)";
    case ValueKind::Setting:
      return "_brisel_offer \"$current\" < <(\"$program\" params --names 2>/dev/null | sed "
             "'s/$/=/'); "
             "compopt -o nospace";
    case ValueKind::Label:
      return "_brisel_offer \"$current\" < <(\"$program\" params --names 2>/dev/null)";
    case ValueKind::Choice: {
      std::string list;
      for (const std::string& choice : option.choices) list += (list.empty() ? "" : " ") + choice;
      return fromWords(list);
    }
    default:
      return ":";
  }
}

// The values of options, then options, then arguments.
std::string caseOf(const CommandInfo& command) {
  std::string text = "    " + command.name + ")\n      case $option in\n";
  for (const OptionInfo& option : command.options) {
    if (option.kind == ValueKind::None) continue;
    std::string names;
    for (const std::string& name : option.names) names += (names.empty() ? "" : "|") + name;
    text += "        " + names + ") " + action(option) + "; return ;;\n";
  }
  text += "      esac\n      if [[ $current == -* ]]; then\n        " +
          fromWords(words(command.options)) + "\n";
  if (!command.arguments.empty()) {
    text += "      else\n        " + action(command.arguments.front()) + "\n";
  }
  return text + "      fi ;;\n";
}

}  // namespace

std::string bashCompletion(const CommandTree& tree) {
  std::string first = words(tree.program.options) + " help";
  for (const CommandInfo& command : tree.commands) first += " " + command.name;
  std::string text = kHelpers;
  text += "  if ((COMP_CWORD == 1)); then\n    " + fromWords(first) +
          "\n    return\n  fi\n  case $command in\n";
  for (const CommandInfo& command : tree.commands) text += caseOf(command);
  return text + "  esac\n}\ncomplete -F _brisel brisel\n";
}

}  // namespace cli
