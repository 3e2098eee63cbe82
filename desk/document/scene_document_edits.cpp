#include "desk/document/scene_document.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "desk/document/key_list.h"
#include "desk/document/scene_document_parsed.h"
#include "desk/document/value_text.h"
#include "scene/scene.h"

namespace desk {
namespace {

using brisel::ParamIndex;

QString labelOf(ParamIndex parameter) {
  return QString::fromUtf8(brisel::parameterSpec(parameter).label);
}

}  // namespace

SceneText SceneDocument::withText(const SceneText& old, std::string text) {
  return {std::move(text), old.file()};
}

std::string SceneDocument::withValueAt(const SceneText& text, int layer, ParamIndex parameter,
                                       const scene::ParamValue& value, double frame) const {
  const LayerChoice owner = ownerOf(layer, parameter);
  const std::vector<ParamKey> before = keys(layer, parameter);
  if (before.empty()) return text.withValue(owner, parameter, value);
  std::vector<ParamKey> after = before;
  setKey(after, frame, value);
  return text.withKeys(owner, parameter, after, before);
}

void SceneDocument::setValue(int layer, ParamIndex parameter, const scene::ParamValue& value,
                             double frame) {
  setValues(layer, {{parameter, value}}, frame, tr("Change %1").arg(labelOf(parameter)));
}

void SceneDocument::setValues(int layer,
                              const std::vector<std::pair<ParamIndex, scene::ParamValue>>& values,
                              double frame, const QString& label) {
  edit(label, [&](SceneText text) {
    for (const auto& [parameter, value] : values) {
      text = withText(text, withValueAt(text, layer, parameter, value, frame));
    }
    return text.text();
  });
}

void SceneDocument::setKeys(int layer, ParamIndex parameter, const std::vector<ParamKey>& keys,
                            const QString& label) {
  setKeys(layer, {{parameter, keys}}, label);
}

void SceneDocument::setKeys(int layer,
                            const std::vector<std::pair<ParamIndex, std::vector<ParamKey>>>& keys,
                            const QString& label) {
  edit(label, [&](SceneText text) {
    for (const auto& [parameter, after] : keys) {
      text = withText(text, text.withKeys(ownerOf(layer, parameter), parameter, after,
                                          this->keys(layer, parameter)));
    }
    return text.text();
  });
}

void SceneDocument::addKey(int layer, ParamIndex parameter, double frame) {
  std::vector<ParamKey> keys = this->keys(layer, parameter);
  if (keyAt(keys, frame) != keys.end()) return;
  setKey(keys, frame, value(layer, parameter, frame));
  setKeys(layer, parameter, keys, tr("Add Key of %1").arg(labelOf(parameter)));
}

void SceneDocument::removeKey(int layer, ParamIndex parameter, double frame) {
  std::vector<ParamKey> keys = this->keys(layer, parameter);
  const auto there = keyAt(keys, frame);
  if (there == keys.end()) return;
  const QString label = tr("Remove Key of %1").arg(labelOf(parameter));
  if (keys.size() == 1) {
    edit(label, [&](const SceneText& text) {
      return text.withValue(ownerOf(layer, parameter), parameter, there->value);
    });
    return;
  }
  keys.erase(there);
  setKeys(layer, parameter, keys, label);
}

void SceneDocument::moveKey(int layer, ParamIndex parameter, double from, double to) {
  putKey(layer, parameter, from, to, false);
}

void SceneDocument::copyKey(int layer, ParamIndex parameter, double from, double to) {
  putKey(layer, parameter, from, to, true);
}

void SceneDocument::putKey(int layer, ParamIndex parameter, double from, double to, bool isCopy) {
  std::vector<ParamKey> keys = this->keys(layer, parameter);
  const auto there = keyAt(keys, from);
  if (there == keys.end() || std::abs(from - to) < kSameFrame) return;
  ParamKey key = *there;
  key.time = to;
  if (!isCopy) keys.erase(there);
  if (const auto other = keyAt(keys, to); other != keys.end()) keys.erase(other);
  keys.insert(std::ranges::upper_bound(keys, to, {}, &ParamKey::time), key);
  setKeys(layer, parameter, keys,
          (isCopy ? tr("Copy Key of %1") : tr("Move Key of %1")).arg(labelOf(parameter)));
}

void SceneDocument::setEase(int layer, ParamIndex parameter, double frame,
                            const scene::Ease& ease) {
  std::vector<ParamKey> keys = this->keys(layer, parameter);
  const auto there = keyAt(keys, frame);
  if (there == keys.end()) return;
  there->ease = ease;
  setKeys(layer, parameter, keys, tr("Ease %1").arg(labelOf(parameter)));
}

void SceneDocument::reset(int layer, ParamIndex parameter) {
  edit(tr("Reset %1").arg(labelOf(parameter)), [&](const SceneText& text) {
    return text.withoutValue(ownerOf(layer, parameter), parameter);
  });
}

void SceneDocument::resetAll(int layer) {
  edit(tr("Reset All"), [&](const SceneText& text) {
    const LayerChoice table = tableOf(layer);
    return withText(text, text.withoutValues(table)).withPresets(table, {});
  });
}

void SceneDocument::applyPreset(int layer, const QString& name) {
  edit(tr("Preset %1").arg(name), [&](SceneText text) {
    const LayerChoice table = tableOf(layer);
    const auto setBy = [&](const std::string& preset) {
      brisel::Values values(state()->plan.layer);
      ParamSet set;
      for (const ParamIndex index :
           presets_.apply(presets_.find({preset, preset}), state()->plan.layer, values)) {
        set.set(static_cast<std::size_t>(index));
      }
      return set;
    };
    const ParamSet set = setBy(name.toStdString());
    for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
      const auto parameter = static_cast<ParamIndex>(index);
      if (!set[static_cast<std::size_t>(index)] || !text.sets(table, parameter)) continue;
      text = withText(text, text.withoutValue(table, parameter));
    }
    // Those before it of which nothing would be left go.
    std::vector<std::string> names = text.presets(table);
    std::erase_if(names, [&](const std::string& old) { return (setBy(old) & ~set).none(); });
    names.push_back(name.toStdString());
    return text.withPresets(table, names);
  });
}

void SceneDocument::applyPresetFile(int layer, const QString& path) {
  const QFileInfo file(path);
  const scene::Preset preset{.row = 0,
                             .name = file.completeBaseName().toStdString(),
                             .file = path.toStdString(),
                             .thumbnail = {}};
  edit(tr("Preset %1").arg(file.fileName()), [&](SceneText text) {
    const brisel::FrameSize size = state()->plan.layer;
    brisel::Values set(size);
    const scene::PresetLibrary anywhere({}, scene::readFileOfSystem);
    const std::vector<ParamIndex> parameters = anywhere.apply(preset, size, set);
    if (parameters.empty()) {
      throw scene::WorkError("\"" + file.fileName().toStdString() +
                             "\" is no preset of the effect");
    }
    for (const ParamIndex parameter : parameters) {
      const scene::ParamValue value = personsValue(set, parameter, size);
      const bool isSame =
          keys(layer, parameter).empty() && this->value(layer, parameter, 0) == value;
      if (!isSame) text = withText(text, text.withValue(tableOf(layer), parameter, value));
    }
    return text.text();
  });
}

}  // namespace desk
