#include "cli/scene/manual_texts.h"

#include <regex>
#include <string_view>

#include "scene/toml_parser.h"

extern "C" const char kBriselManualParameters[];
extern "C" const char kBriselManualParametersEnd[];

namespace cli {
namespace {

std::string plainText(std::string text) {
  static const std::regex kLinks("<a [^>]*>[^<]*</a>");  // lead to other chapters
  static const std::regex kNames(R"(\[\[|\]\]|</?em>)");
  static const std::regex kTags("<[^>]*>");
  text = std::regex_replace(text, kLinks, "");
  text = std::regex_replace(text, kNames, "\"");
  text = std::regex_replace(text, kTags, "");
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

ManualText manualText(const toml::table& table) {
  ManualText text{plainText(table["text"].value_or("")), plainText(table["gray"].value_or("")), {}};
  if (const toml::table* items = table["items"].as_table()) {
    for (const auto& [item, node] : *items) {
      text.items[std::string(item.str())] = plainText(node.value_or(""));
    }
  }
  return text;
}

}  // namespace

std::map<std::string, ManualText> readManualTexts() {
  const toml::table tables =
      toml::parse(std::string_view(kBriselManualParameters, kBriselManualParametersEnd));
  std::map<std::string, ManualText> texts;
  for (const auto& [label, node] : tables) {
    texts[std::string(label.str())] = manualText(*node.as_table());
  }
  return texts;
}

}  // namespace cli
