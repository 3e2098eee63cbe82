// A document's sound texts, and what they have been parsed to.
#pragma once

#include <QDateTime>
#include <QFileInfo>
#include <QString>
#include <bitset>
#include <filesystem>
#include <map>
#include <vector>

#include "desk/document/scene_document.h"

namespace desk {

using ParamSet = std::bitset<brisel::kParamCount>;

/// What of the scene's layers is needed besides what they render.
struct LayerFacts {
  ParamSet byOwnPresets;
  ParamSet bySharedPresets;
};

/// A sound text. Never changed once made.
struct SceneDocument::Parsed {
  QString source;
  SceneText text;
  SharedState state;
  std::vector<LayerFacts> layers;
};

/// Looks at inputs, once for each as long as the file stays the same.
class SceneDocument::InputProbe {
 public:
  /// Of one that cannot be read any more it is what is known, with a problem. Otherwise throws as
  /// cli::probeInput() does.
  cli::MediaInfo operator()(const scene::Scene& scene, const cli::InputChoices& reading,
                            const cli::SceneOptions& options) {
    problem_.clear();
    const QFileInfo file(QString::fromStdString(scene.input.string()));
    const QDateTime changed = file.lastModified();
    const auto found = known_.find(scene.input);
    if (found != known_.end() && changed.isValid() && found->second.changed == changed) {
      return found->second.info;
    }
    try {
      cli::MediaInfo info = cli::probeInput(scene, reading, options);
      known_.insert_or_assign(scene.input, Known{changed, info});
      return info;
    } catch (const std::exception& error) {
      if (found == known_.end()) throw;
      problem_ = error.what();
      return found->second.info;
    }
  }

  const std::string& problem() const { return problem_; }  // of the last one; or empty

 private:
  struct Known {
    QDateTime changed;
    cli::MediaInfo info;
  };
  std::map<std::filesystem::path, Known> known_;
  std::string problem_;
};

}  // namespace desk
