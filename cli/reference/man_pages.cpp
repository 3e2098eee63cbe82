#include "cli/reference/man_pages.h"

#include <algorithm>

namespace cli {
namespace {

// Text that the formatter takes as it stands.
std::string escaped(const std::string& text) {
  std::string result = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
  for (const char c : text) {
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else {
      result += c;
    }
  }
  return result;
}

std::string bold(const std::string& text) {
  return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(const std::string& text) {
  return "\\fI" + escaped(text) + "\\fR";
}

// Lines with wider gaps are a table that must not be filled.
bool isTabular(const std::string& line) {
  return line.find("  ") != std::string::npos;
}

std::string helpText(const std::vector<std::string>& lines) {
  std::string text;
  bool tabular = false;
  for (const std::string& line : lines) {
    if (isTabular(line) != tabular) {
      tabular = !tabular;
      text += tabular ? ".nf\n" : ".fi\n";
    }
    text += escaped(line) + "\n";
  }
  return text + (tabular ? ".fi\n" : "");
}

std::string entry(const OptionInfo& option) {
  std::string names;
  for (const std::string& name : option.names) {
    const bool isArgument = !name.starts_with('-');
    names += (names.empty() ? "" : ", ") + (isArgument ? italic(name) : bold(name));
  }
  if (!option.value.empty()) names += " " + italic(option.value);
  return ".TP\n" + names + "\n" + helpText(option.help);
}

std::string section(const std::string& title, const std::vector<OptionInfo>& options) {
  std::string text = options.empty() ? "" : ".SH " + title + "\n";
  for (const OptionInfo& option : options) text += entry(option);
  return text;
}

std::string synopsis(const CommandInfo& command) {
  std::string text = ".SH SYNOPSIS\n" + bold("brisel " + command.name);
  for (const OptionInfo& argument : command.arguments) {
    const std::string name = italic(argument.names.front()) + (argument.repeats ? " ..." : "");
    text += argument.required ? " " + name : " [" + name + "]";
  }
  for (const OptionInfo& option : command.options) {
    if (!option.required) continue;
    text += " " + bold(option.names.front()) + " " + italic(option.value);
  }
  return text + " [" + italic("OPTIONS") + "]\n";
}

std::string header(std::string name, const std::string& version, const std::string& description) {
  const std::string title = ".SH NAME\n" + escaped(name) + " \\- " + escaped(description) + "\n";
  std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::toupper(c); });
  return ".TH \"" + name + "\" 1 \"\" \"brisel " + version + "\"\n" + title;
}

std::string commandPage(const CommandInfo& command, const CommandTree& tree,
                        const std::string& version) {
  return header("brisel-" + command.name, version, command.description) + synopsis(command) +
         section("ARGUMENTS", command.arguments) + section("OPTIONS", command.options) +
         ".SH EXIT STATUS\n" + escaped(tree.footer) + "\n.SH SEE ALSO\n.BR brisel (1)\n";
}

std::string programPage(const CommandTree& tree, const std::string& version) {
  std::string text = header("brisel", version, tree.program.description) + ".SH SYNOPSIS\n" +
                     bold("brisel") + " " + italic("COMMAND") + " [" + italic("OPTIONS") +
                     "]\n.SH COMMANDS\n";
  for (const CommandInfo& command : tree.commands) {
    text += ".TP\n.BR brisel\\-" + escaped(command.name) + " (1)\n" + escaped(command.description) +
            "\n";
  }
  return text + section("OPTIONS", tree.program.options) + ".SH EXIT STATUS\n" +
         escaped(tree.footer) + "\n";
}

}  // namespace

std::map<std::string, std::string> manPages(const CommandTree& tree, const std::string& version) {
  std::map<std::string, std::string> pages = {{"brisel.1", programPage(tree, version)}};
  for (const CommandInfo& command : tree.commands) {
    pages["brisel-" + command.name + ".1"] = commandPage(command, tree, version);
  }
  return pages;
}

}  // namespace cli
