// What the manual says about parameters: docs/manual/parameters.toml, built into the program.
#pragma once

#include <map>
#include <string>

namespace cli {

// Without markup; labels and items that a text mentions are in quotes.
struct ManualText {
  std::string description;
  std::string grayed;                        // "when ...", empty when it never is
  std::map<std::string, std::string> items;  // what each item of a popup does
};

// By label.
std::map<std::string, ManualText> readManualTexts();

}  // namespace cli
