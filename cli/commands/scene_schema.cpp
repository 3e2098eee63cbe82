#include "cli/commands/scene_schema.h"

#include <stdexcept>

#include "cli/media/frame_rate.h"
#include "cli/scene/color_text.h"
#include "cli/scene/keyframe.h"
#include "cli/scene/param_values.h"
#include "cli/scene/scene.h"
#include "cli/scene/scene_keys.h"

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
Json table(std::span<const SceneKey> keys, const Json& values) {
  Json properties = Json::object();
  for (const SceneKey& key : keys) {
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
  const Json layer = table(kLayerKeys, {{"name", text()},
                                        {"presets", presetList()},
                                        {"mask", {{"anyOf", {maskReference(), sameAs("mask")}}}},
                                        {"params", sameAs("params")}});
  return {{"type", "array"}, {"items", layer}, {"minItems", 1}, {"maxItems", kMaxLayers}};
}

Json sceneTable() {
  const Json rate = {
      {"anyOf",
       {{{"type", "number"}, {"exclusiveMinimum", 0}, {"maximum", kMaxFramesPerSecond}},
        {{"type", "string"}, {"pattern", R"(^\s*[0-9.]+\s*(/\s*[0-9]+\s*)?$)"}}}}};
  return table(kSceneKeys, {{"size", listOf(wholeNumbers(1, kMaxSide), 2)},
                            {"frames", wholeNumbers(1, kMaxFrames)},
                            {"preroll", wholeNumbers(0, kMaxFrames)},
                            {"fps", rate},
                            {"depth", {{"enum", {8, 16}}}},
                            {"quality", {{"enum", {"high", "low"}}}},
                            {"input", text()},
                            {"mask", maskReference()},
                            {"presets", presetList()}});
}

// A constant, or keyframes of it.
Json overTime(const Json& value, bool eases) {
  Json key =
      table(kKeyframeKeys, {{"frame", shared("time")}, {"value", value}, {"ease", shared("ease")}});
  if (!eases) key["properties"].erase("ease");
  key["required"] = {"frame", "value"};
  return {{"anyOf", {value, {{"type", "array"}, {"items", key}, {"minItems", 1}}}}};
}

Json maskTable() {
  Json mask =
      table(kMaskKeys, {{"path", overTime(text(), true)}, {"inverted", {{"type", "boolean"}}}});
  mask["required"] = {"path"};
  return mask;
}

Json easeSchema() {
  const Json time = numbers(0, 1);
  const Json share = numbers(-kMostShare, kMostShare);
  Json handles = listOf({time, share, time, share}, 4);
  return {{"anyOf", {{{"enum", easeNames()}}, handles}}};
}

Json colorSchema() {
  return {{"anyOf",
           {{{"type", "string"}, {"pattern", "^#([0-9a-fA-F]{3}|[0-9a-fA-F]{6})$"}},
            {{"enum", colorNames()}},
            listOf(wholeNumbers(0, 255), 3)}}};
}

Json constantSchema(const hostkit::Parameter& parameter) {
  const auto range = hostkit::validRange(parameter);
  switch (parameter.type()) {
    case PF_Param_SLIDER:
      return wholeNumbers(static_cast<int>(range->min), static_cast<int>(range->max));
    case PF_Param_FIX_SLIDER:
      return numbers(range->min, range->max);
    case PF_Param_ANGLE:
      return numbers(-kMostDegrees, kMostDegrees);
    case PF_Param_CHECKBOX:
      return {{"type", "boolean"}};
    case PF_Param_COLOR:
      return shared("color");
    case PF_Param_POINT:
      return listOf(numbers(-kMostFractions, kMostFractions), 2);
    case PF_Param_POPUP:
      return {{"anyOf",
               {{{"enum", parameter.items}},
                wholeNumbers(1, static_cast<int>(parameter.items.size()))}}};
    default:
      throw std::logic_error("the schema has no values for \"" + parameter.label + '"');
  }
}

}  // namespace

Json sceneSchema(const std::vector<ListedParameter>& parameters) {
  Json values = Json::object();
  const Json described = parameterJson(parameters);
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const hostkit::Parameter& parameter = *parameters[i].declared;
    if (!takesValue(parameter.type())) continue;
    Json value = overTime(constantSchema(parameter), isInterpolated(parameter.type()));
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
  schema.update(table(kTables, {{"scene", sceneTable()},
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
