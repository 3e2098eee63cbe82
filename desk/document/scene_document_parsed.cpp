#include "desk/document/scene_document_parsed.h"

#include <algorithm>

#include "cli/support/errors.h"
#include "scene/file_access.h"
#include "scene/scene.h"

namespace desk {
namespace {

using brisel::ParamIndex;

constexpr std::size_t kTextsKept = 8;  // parsed, for going back and forth between them

}  // namespace

std::shared_ptr<const SceneDocument::Parsed> SceneDocument::parse(const QString& text) const {
  const auto known = std::ranges::find(kept_, text, [](const auto& kept) { return kept->source; });
  if (known != kept_.end()) return *known;
  const std::filesystem::path file = sceneFile(path_);
  try {
    return parsed(text, file);
  } catch (const std::exception& error) {  // which names the file with its folder
    QString message = QString::fromUtf8(error.what());
    const QString folder = QString::fromStdString(file.parent_path().string()) + QLatin1Char('/');
    throw scene::WorkError(message.replace(folder, QString()).toStdString());
  }
}

std::shared_ptr<const SceneDocument::Parsed> SceneDocument::parsed(
    const QString& text, const std::filesystem::path& file) const {
  const std::string bytes = text.toStdString();
  SceneText sceneText(bytes, file);
  auto state = std::make_shared<SceneState>();
  cli::SceneOptions options;
  options.input = input_.toStdString();
  options.allowed = allowed_;
  const scene::FileAccess access{{allowed_.begin(), allowed_.end()}, "--allow"};
  scene::Scene scene = scene::sceneFromText(file, bytes, access);
  const bool hasInput = !options.input.empty() || !scene.input.empty();
  try {
    state->plan = cli::planScene(scene, options, std::ref(*probe_));
    if (hasInput && !probe_->problem().empty()) {  // size, length and rate stay
      state->inputProblem = probe_->problem();
      state->plan.scene.input.clear();
      state->plan.input.reset();
    }
  } catch (const std::exception& error) {
    if (!hasInput) throw;
    state->inputProblem = error.what();
    scene.input.clear();
    options.input.clear();
    state->plan = cli::planScene(scene, options);
  }
  const cli::ScenePlan& plan = state->plan;
  std::vector<LayerFacts> facts(plan.scene.layers.size());
  for (std::size_t i = 0; i < plan.scene.layers.size(); ++i) {
    state->layers.emplace_back(plan.scene, i, scene::Surroundings{plan.layer, plan.rate, hasInput},
                               presets_);
    for (const scene::PresetChoice& choice : plan.scene.layers[i].presets) {
      ParamSet& set =
          choice.origin == scene::Origin::Layer ? facts[i].byOwnPresets : facts[i].bySharedPresets;
      brisel::Values values(plan.layer);
      for (const ParamIndex index : presets_.apply(presets_.find(choice), plan.layer, values)) {
        set.set(static_cast<std::size_t>(index));
      }
    }
  }
  return std::make_shared<const Parsed>(
      Parsed{text, std::move(sceneText), std::move(state), std::move(facts)});
}

void SceneDocument::keep(std::shared_ptr<const Parsed> parsed) const {
  if (std::ranges::find(kept_, parsed) != kept_.end()) return;
  kept_.push_front(std::move(parsed));
  if (kept_.size() > kTextsKept) kept_.pop_back();
}

}  // namespace desk
