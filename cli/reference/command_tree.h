// What a person can type behind `brisel`, read off the program's own description of its command
// line, for what is generated from it: man pages and shell completion.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace cli {

enum class ValueKind { None, File, Scene, Preset, Setting, Label, Choice, Other };

struct OptionInfo {
  std::vector<std::string> names;  // "-o", "--output"; of an argument its name, "SCENE"
  std::string value;               // as --help shows it, "FILE"; empty for flags and arguments
  ValueKind kind;
  std::vector<std::string> choices;  // of Choice
  std::vector<std::string> help;     // lines
  bool required;
  bool repeats;

  // The first clause of its help.
  std::string summary() const;
};

struct CommandInfo {
  std::string name;  // "render"; of the program itself "brisel"
  std::string description;
  std::vector<OptionInfo> options;
  std::vector<OptionInfo> arguments;
};

struct CommandTree {
  CommandInfo program;
  std::vector<CommandInfo> commands;
  std::string footer;
};

CommandTree commandTree(const CLI::App& app);

}  // namespace cli
