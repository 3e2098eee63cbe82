#include "cli/commands/scene_schema.h"

#include <stdexcept>

#include "scene/color_text.h"
#include "scene/frame_rate.h"
#include "scene/keyframe.h"
#include "scene/parameter_values.h"
#include "scene/scene.h"
#include "scene/scene_keys.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr double kMostDegrees = 32767;    // as much as the host can hold, either way from 0
constexpr double kMostFractions = 32767;  // of a frame of one pixel; fewer of larger ones

Json numbers(double least, double greatest) {
  return {{"type", "number"}, {"minimum", least}, {"maximum", greatest}};
}

Json wholeNumbers(int least, int greatest) {
  return {{"type", "integer"}, {"minimum", least}, {"maximum", greatest}};
}

Json text() {
  return {{"type", "string"}, {"minLength", 1}};
}

Json listOf(const Json& item, int count) {
  return {{"type", "array"}, {"items", item}, {"minItems", count}, {"maxItems", count}};
}

Json shared(const char* definition) {
  return {{"$ref", std::string("#/definitions/") + definition}};
}

// What the table of that name at the top of the file takes.
Json sameAs(const char* table) {
  return {{"$ref", std::string("#/properties/") + table}};
}

// An object with these keys and no others. Throws std::logic_error for a key without values.
Json table(std::span<const scene::SceneKey> keys, const Json& values) {
  Json properties = Json::object();
  for (const scene::SceneKey& key : keys) {
    if (!values.contains(key.name)) {
      throw std::logic_error("the schema has no values for the key " + std::string(key.name));
    }
    properties[key.name] = values[key.name];
    properties[key.name]["description"] = key.meaning;
  }
  return {{"type", "object"}, {"properties", properties}, {"additionalProperties", false}};
}

Json maskReference() {
  return {{"type", "string"}, {"pattern", "^.+#.+$"}};
}

Json presetList() {
  return {{"type", "array"}, {"items", text()}};
}

Json layerList() {
  const Json layer =
      table(scene::kLayerKeys, {{"name", text()},
                                {"presets", presetList()},
                                {"mask", {{"anyOf", {maskReference(), sameAs("mask")}}}},
                                {"params", sameAs("params")}});
  return {{"type", "array"}, {"items", layer}, {"minItems", 1}, {"maxItems", scene::kMaxLayers}};
}

Json sceneTable() {
  const Json rate = {
      {"anyOf",
       {{{"type", "number"}, {"exclusiveMinimum", 0}, {"maximum", scene::kMaxFramesPerSecond}},
        {{"type", "string"}, {"pattern", R"(^\s*[0-9.]+\s*(/\s*[0-9]+\s*)?$)"}}}}};
  return table(scene::kSceneKeys, {{"size", listOf(wholeNumbers(1, scene::kMaxSide), 2)},
                                   {"frames", wholeNumbers(1, scene::kMaxFrames)},
                                   {"preroll", wholeNumbers(0, scene::kMaxFrames)},
                                   {"fps", rate},
                                   {"depth", {{"enum", {8, 16}}}},
                                   {"quality", {{"enum", {"high", "low"}}}},
                                   {"input", text()},
                                   {"mask", maskReference()},
                                   {"presets", presetList()}});
}

// A constant, or keyframes of it.
Json overTime(const Json& value, bool eases) {
  Json key = table(scene::kKeyframeKeys,
                   {{"frame", shared("time")}, {"value", value}, {"ease", shared("ease")}});
  if (!eases) key["properties"].erase("ease");
  key["required"] = {"frame", "value"};
  return {{"anyOf", {value, {{"type", "array"}, {"items", key}, {"minItems", 1}}}}};
}

Json maskTable() {
  Json mask = table(scene::kMaskKeys,
                    {{"path", overTime(text(), true)}, {"inverted", {{"type", "boolean"}}}});
  mask["required"] = {"path"};
  return mask;
}

Json easeSchema() {
  const Json time = numbers(0, 1);
  const Json share = numbers(-scene::kMostShare, scene::kMostShare);
  Json handles = listOf({time, share, time, share}, 4);
  return {{"anyOf", {{{"enum", scene::easeNames()}}, handles}}};
}

Json colorSchema() {
  return {{"anyOf",
           {{{"type", "string"}, {"pattern", "^#([0-9a-fA-F]{3}|[0-9a-fA-F]{6})$"}},
            {{"enum", scene::colorNames()}},
            listOf(wholeNumbers(0, 255), 3)}}};
}

Json constantSchema(const brisel::ParameterSpec& parameter) {
  using brisel::ParamKind;
  switch (parameter.kind) {
    case ParamKind::WholeNumber:
      return wholeNumbers(parameter.validMin, parameter.validMax);
    case ParamKind::Number:
      return numbers(parameter.validMin, parameter.validMax);
    case ParamKind::Angle:
      return numbers(-kMostDegrees, kMostDegrees);
    case ParamKind::Checkbox:
      return {{"type", "boolean"}};
    case ParamKind::Color:
      return shared("color");
    case ParamKind::Point:
      return listOf(numbers(-kMostFractions, kMostFractions), 2);
    case ParamKind::Popup: {
      const std::vector<std::string> items = scene::itemsOf(parameter);
      return {{"anyOf", {{{"enum", items}}, wholeNumbers(1, static_cast<int>(items.size()))}}};
    }
    default:
      throw std::logic_error("the schema has no values for " + scene::inQuotes(parameter.label));
  }
}

}  // namespace

Json sceneSchema(const std::vector<ListedParameter>& parameters) {
  Json values = Json::object();
  const Json described = parameterJson(parameters);
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const auto& parameter = brisel::parameterSpec(parameters[i].declared->index);
    if (!scene::takesValue(parameter.kind)) continue;
    Json value = overTime(constantSchema(parameter), scene::isInterpolated(parameter.kind));
    value["description"] = described[i]["description"];
    value["default"] = described[i]["default"];
    values[parameter.label] = value;
  }
  const Json params = {{"type", "object"}, {"properties", values}, {"additionalProperties", false}};
  Json schema = {{"$schema", "http://json-schema.org/draft-07/schema#"},
                 {"title", "Scene of brisel"},
                 {"definitions",
                  {{"time",
                    {{"anyOf",
                      {{{"type", "number"}},
                       {{"type", "string"}, {"pattern", R"(^\s*[-+0-9.eE]+\s*s\s*$)"}}}}}},
                   {"ease", easeSchema()},
                   {"color", colorSchema()}}}};
  schema.update(table(scene::kTables, {{"scene", sceneTable()},
                                       {"params", params},
                                       {"mask", maskTable()},
                                       {"layer", layerList()}}));
  return schema;
}

std::filesystem::path installedSchema() {
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  const auto schema = (folder / "../share/brisel/scene.schema.json").lexically_normal();
  return std::filesystem::exists(schema) ? schema : std::filesystem::path();
}

}  // namespace cli
