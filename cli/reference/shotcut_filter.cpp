// Shotcut's description of the filter: what it is, and the list that its controls show.
#include <nlohmann/json.hpp>

#include "cli/reference/filter_description.h"
#include "scene/parameter_values.h"

namespace cli {
namespace {

using brisel::FilterParameter;
using brisel::FilterSettings;
using brisel::ParamKind;
using Json = nlohmann::ordered_json;

constexpr const char* kMetadataHead = R"(import QtQuick 2.0
import org.shotcut.qml 1.0

Metadata {
    type: Metadata.Filter
    objectName: 'brisel'
    name: 'Brisel'
    keywords: 'stars particles sparkle snow fire fireworks magic glow brisel'
    mlt_service: 'frei0r.brisel'
    qml: 'ui.qml'

    keyframes {
        parameters: [
)";

void describeNumber(Json& row, const DescribedParameter& described, double initial) {
  const bool isPoint = described.spec->kind == ParamKind::Point;
  const double zero = brisel::effectNumber(*described.parameter, 0);
  const double unit = isPoint ? 100 : brisel::effectNumber(*described.parameter, 1) - zero;
  const bool isAngle = described.spec->kind == ParamKind::Angle;
  row["kind"] = "number";
  row["initial"] = decimalText(initial);
  row["zero"] = zero;
  row["unit"] = unit;
  row["least"] = isAngle ? -unit : zero;
  row["most"] = zero + unit;
  row["decimals"] = described.spec->kind == ParamKind::WholeNumber ? 0 : 2;
  const std::string suffix(shownUnit(*described.spec));
  row["suffix"] = suffix.empty() ? suffix : " " + suffix;
}

void describeText(Json& row, const DescribedParameter& described, const std::string& initial) {
  row["initial"] = initial;
  if (described.spec != nullptr) {
    row["kind"] = "list";
    row["values"] = row["shown"] = scene::itemsOf(*described.spec);
  } else if (described.parameter == &brisel::filterParameters()[brisel::kPresetsParameter]) {
    row["kind"] = "list";
    row["values"] = row["shown"] = Json::array();
    for (const DescribedLook& look : describedLooks()) {
      row["values"].push_back(look.preset);
      row["shown"].push_back(look.preset.empty() ? "None" : look.name);
    }
  } else {
    const bool isScene =
        described.parameter == &brisel::filterParameters()[brisel::kSceneParameter];
    row["kind"] = isScene ? "file" : "text";
  }
}

Json rowOf(const DescribedParameter& described, const FilterSettings::Setting& initial) {
  Json row{{"name", described.parameter->name}, {"tip", described.comment()}};
  if (const auto* color = std::get_if<FilterSettings::Color>(&initial)) {
    row["kind"] = "color";
    row["initial"] = colorText(*color);
  } else if (const auto* text = std::get_if<std::string>(&initial)) {
    describeText(row, described, *text);
  } else if (described.parameter->kind == FilterParameter::Kind::Checkbox) {
    row["kind"] = "check";
    row["initial"] = decimalText(std::get<double>(initial));
  } else {
    describeNumber(row, described, std::get<double>(initial));
  }
  return row;
}

}  // namespace

std::map<std::string, std::string> shotcutFilter() {
  Json rows = Json::array();
  std::string metadata = kMetadataHead;
  const auto parameters = describedParameters();
  const DescribedLook look = describedLooks().front();
  std::string heading;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const DescribedParameter& described = parameters[i];
    Json row = rowOf(described, look.settings[i]);
    const std::string group = described.groups.empty() ? "" : described.groups.back();
    row["heading"] = group == heading ? "" : group;
    heading = group;
    if (row["kind"] == "number") {
      const std::string name = "'" + described.parameter->name + "'";
      metadata += "            Parameter { name: " + name + "; property: " + name +
                  "; isCurve: true; minimum: 0; maximum: 1 },\n";
    }
    rows.push_back(std::move(row));
  }
  metadata.erase(metadata.size() - 2, 1);  // the last comma
  return {{"meta.qml", metadata + "        ]\n    }\n}\n"},
          {"parameters.js", ".pragma library\nvar parameters = " + rows.dump(1) + ";\n"}};
}

}  // namespace cli
