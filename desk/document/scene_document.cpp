#include "desk/document/scene_document.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSaveFile>
#include <QTimer>
#include <algorithm>
#include <bitset>
#include <cmath>
#include <deque>
#include <map>

#include "cli/scene/starter_scene.h"
#include "cli/support/errors.h"
#include "desk/document/recovery_file.h"
#include "desk/document/value_text.h"
#include "scene/file_access.h"
#include "scene/scene.h"

namespace desk {
namespace {

using brisel::ParamIndex;
using ParamSet = std::bitset<brisel::kParamCount>;

constexpr std::size_t kTextsKept = 8;    // parsed, for going back and forth between them
constexpr int kSettlingTime = 50;        // milliseconds in which an editor writes a file
constexpr int kRecoveryInterval = 2000;  // milliseconds after a change
constexpr double kSameFrame = 1e-6;

QString labelOf(ParamIndex parameter) {
  return QString::fromUtf8(brisel::parameterSpec(parameter).label);
}

scene::ParamValue personsValue(const brisel::Values& values, ParamIndex parameter,
                               brisel::FrameSize frame) {
  constexpr double kOne = 65536;
  switch (brisel::parameterSpec(parameter).kind) {
    case brisel::ParamKind::Color: {
      const brisel::ByteColor color = values.color(parameter);
      return {static_cast<double>(color.red), static_cast<double>(color.green),
              static_cast<double>(color.blue)};
    }
    case brisel::ParamKind::Point:
      return {values[parameter].number / kOne / frame.width,
              values[parameter].y / kOne / frame.height};
    default:
      return {values.number(parameter)};
  }
}

template <class Keys>
auto keyAt(Keys& keys, double frame) {
  return std::ranges::find_if(
      keys, [&](const auto& key) { return std::abs(key.time - frame) < kSameFrame; });
}

/// The key at that frame, made with that value when there is none, and the ease of the one before.
template <class Key>
void setKey(std::vector<Key>& keys, double frame, const decltype(Key::value)& value) {
  if (const auto there = keyAt(keys, frame); there != keys.end()) {
    there->value = value;
    return;
  }
  const auto after = std::ranges::upper_bound(keys, frame, {}, &Key::time);
  scene::Keyframe made{.time = frame};
  if (after != keys.begin()) made.ease = std::prev(after)->ease;
  keys.insert(after, Key(made, value));
}

/// What of the scene's layers is needed besides what they render.
struct LayerFacts {
  ParamSet byOwnPresets;
  ParamSet bySharedPresets;
};

}  // namespace

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
  /// Throws as cli::probeInput() does.
  cli::MediaInfo operator()(const scene::Scene& scene, const cli::InputChoices& reading,
                            const cli::SceneOptions& options) {
    const QFileInfo file(QString::fromStdString(scene.input.string()));
    const QDateTime changed = file.lastModified();
    const auto found = known_.find(scene.input);
    if (found != known_.end() && changed.isValid() && found->second.changed == changed) {
      return found->second.info;
    }
    cli::MediaInfo info = cli::probeInput(scene, reading, options);
    known_.insert_or_assign(scene.input, Known{changed, info});
    return info;
  }

 private:
  struct Known {
    QDateTime changed;
    cli::MediaInfo info;
  };
  std::map<std::filesystem::path, Known> known_;
};

class TextStep : public QUndoCommand {
 public:
  TextStep(SceneDocument& document, QString after, const QString& label, int gesture)
      : QUndoCommand(label),
        document_(document),
        before_(document.text()),
        after_(std::move(after)),
        gesture_(gesture) {}

  const QString& before() const { return before_; }
  int gesture() const { return gesture_; }
  void undo() override { document_.take(before_); }
  void redo() override { document_.take(after_); }
  int id() const override { return gesture_ > 0 ? 1 : -1; }
  bool mergeWith(const QUndoCommand* other) override {
    const auto* next = static_cast<const TextStep*>(other);
    if (next->gesture_ != gesture_) return false;
    after_ = next->after_;
    setObsolete(after_ == before_);
    return true;
  }

 private:
  SceneDocument& document_;
  QString before_;
  QString after_;
  int gesture_;
};

SceneDocument::SceneDocument(scene::PresetLibrary presets, QObject* parent)
    : QObject(parent),
      presets_(std::move(presets)),
      probe_(std::make_unique<InputProbe>()),
      recovery_(std::make_unique<RecoveryFile>()),
      watcher_(new QFileSystemWatcher(this)),
      settling_(new QTimer(this)),
      untilRecovery_(new QTimer(this)) {
  settling_->setSingleShot(true);
  settling_->setInterval(kSettlingTime);
  connect(watcher_, &QFileSystemWatcher::fileChanged, settling_, qOverload<>(&QTimer::start));
  connect(watcher_, &QFileSystemWatcher::directoryChanged, settling_, qOverload<>(&QTimer::start));
  connect(settling_, &QTimer::timeout, this, &SceneDocument::lookAtDisk);
  untilRecovery_->setSingleShot(true);
  untilRecovery_->setInterval(kRecoveryInterval);
  connect(untilRecovery_, &QTimer::timeout, this, &SceneDocument::keepForRecovery);
  connect(&undoStack_, &QUndoStack::cleanChanged, this, [this](bool clean) {
    if (clean) forgetRecovery();
    emit savedStateChanged();
  });
  startNew();
}

SceneDocument::~SceneDocument() {
  undoStack_.disconnect(this);
  recovery_->remove();
}

// --- Files

void SceneDocument::startNew(const QString& preset) {
  std::vector<std::string> presets;
  if (!preset.isEmpty()) presets.push_back(preset.toStdString());
  start(QString::fromStdString(cli::starterScene("scene.toml", presets)), {});
}

bool SceneDocument::open(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    emit problem(tr("The scene \"%1\" cannot be opened: %2").arg(path, file.errorString()));
    return false;
  }
  const QByteArray bytes = file.readAll();
  const QString text = QString::fromUtf8(bytes);
  if (text.toUtf8() != bytes) {  // saving it would change what cannot be read
    emit problem(tr("The scene \"%1\" is no text in UTF-8").arg(path));
    return false;
  }
  start(text, QFileInfo(path).absoluteFilePath());
  onDisk_ = bytes;
  return true;
}

/// Of a text that is no sound scene an empty one is shown until it is mended.
void SceneDocument::start(const QString& text, const QString& path) {
  path_ = path;
  forgetRecovery();
  kept_.clear();
  allowed_.clear();  // for the scene before
  undoStack_.clear();
  onDisk_.clear();
  watch();
  state_ = parse(QString())->state;
  take(text);
  emit replaced();
  emit savedStateChanged();
}

bool SceneDocument::save() {
  if (!write(path_, text_)) return false;
  undoStack_.setClean();
  return true;
}

bool SceneDocument::saveAs(const QString& path) {
  const QString absolute = QFileInfo(path).absoluteFilePath();
  const QDir folder = QFileInfo(absolute).dir();
  QString text = text_;
  if (parsed_ && folder != QFileInfo(path_).dir()) {
    try {
      const SceneText& old = parsed_->text;
      text = QString::fromStdString(old.withFilesFrom(folder.path().toStdString()));
      for (const std::filesystem::path& file : old.files()) {
        allowed_.push_back(file.parent_path().string());
      }
    } catch (const std::exception& error) {
      emit problem(QString::fromUtf8(error.what()));
      return false;
    }
  }
  if (!write(absolute, text)) return false;
  path_ = absolute;
  watch();
  kept_.clear();  // whose messages and inputs are those of the old place
  if (text == text_) {
    take(text_);
  } else {
    push(text, tr("Save As"));
  }
  undoStack_.setClean();
  emit savedStateChanged();
  return true;
}

bool SceneDocument::write(const QString& path, const QString& text) {
  QByteArray bytes = text.toUtf8();
  if ((onDisk_ + bytes).contains("\r\n")) bytes.replace("\r\n", "\n").replace("\n", "\r\n");
  QSaveFile file(path);
  // commit() alone overlooks that what was buffered finds no room, and replaces the file by
  // nothing.
  const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                         file.flush() && file.commit();
  if (!isWritten) {
    emit problem(tr("The scene could not be saved as \"%1\": %2").arg(path, file.errorString()));
    return false;
  }
  onDisk_ = bytes;
  forgetRecovery();
  return true;
}

QString SceneDocument::name() const {
  return path_.isEmpty() ? tr("Untitled") : QFileInfo(path_).fileName();
}

void SceneDocument::setInput(const QString& path) {
  input_ = path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
  kept_.clear();
  take(text_);
}

void SceneDocument::allow(const QString& folder) {
  allowed_.push_back(folder.toStdString());
  kept_.clear();
  take(text_);
}

QString SceneDocument::folderToAllow() const {
  try {
    const SceneText text(text_.toStdString(), path_.toStdString());
    const std::filesystem::path own = text.file().parent_path();
    for (const std::filesystem::path& file : text.files()) {
      const auto covers = [&](const std::filesystem::path& folder) {
        return scene::liesBelow(file, folder);
      };
      if (covers(own) || std::ranges::any_of(allowed_, covers)) continue;
      return QFileInfo(QString::fromStdString(file.string())).absoluteDir().absolutePath();
    }
  } catch (const std::exception&) {  // the text is what is wrong
  }
  return {};
}

void SceneDocument::setSceneInput(const QString& path) {
  input_.clear();
  if (!path.isEmpty()) allowed_.push_back(QFileInfo(path).absolutePath().toStdString());
  kept_.clear();
  const QString absolute = QFileInfo(path).absoluteFilePath();
  const QString name =
      path_.isEmpty() ? absolute : QFileInfo(path_).dir().relativeFilePath(absolute);
  edit(tr("Set Input"), [&](const SceneText& text) {
    return text.withSceneKey("input", path.isEmpty() ? "" : tomlString(name.toStdString()));
  });
}

// --- From text to state

std::shared_ptr<const SceneDocument::Parsed> SceneDocument::parse(const QString& text) const {
  const auto known = std::ranges::find(kept_, text, [](const auto& kept) { return kept->source; });
  if (known != kept_.end()) return *known;
  const std::filesystem::path file =
      (path_.isEmpty() ? QDir().absoluteFilePath(QStringLiteral("Untitled.toml")) : path_)
          .toStdString();
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
          choice.origin == scene::Origin::kLayer ? facts[i].byOwnPresets : facts[i].bySharedPresets;
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

void SceneDocument::take(const QString& text) {
  text_ = text;
  const QString oldProblem = std::exchange(textProblem_, QString());
  try {
    parsed_ = parse(text);
    keep(parsed_);
    state_ = parsed_->state;
  } catch (const std::exception& error) {
    parsed_.reset();
    textProblem_ = QString::fromUtf8(error.what());
  }
  if (!untilRecovery_->isActive()) untilRecovery_->start();  // however long changes go on
  emit changed();
  if (textProblem_ != oldProblem) emit textProblemChanged();
}

SharedState SceneDocument::stateOf(const QString& text) const {
  try {
    const auto other = parse(text);
    keep(other);
    return other->state;
  } catch (const std::exception&) {
    return nullptr;
  }
}

SharedState SceneDocument::stateBeforeLastStep() const {
  if (undoStack_.index() == 0) return nullptr;
  return stateOf(
      static_cast<const TextStep*>(undoStack_.command(undoStack_.index() - 1))->before());
}

// --- What it says

int SceneDocument::layerCount() const {
  return static_cast<int>(state_->layers.size());
}

bool SceneDocument::hasLayerTables() const {
  return parsed_ && parsed_->text.layerCount() > 0;
}

QString SceneDocument::layerName(int layer) const {
  const std::string& name = state_->plan.scene.layers[static_cast<std::size_t>(layer)].name;
  return name.empty() ? tr("Layer %1").arg(layer + 1) : QString::fromStdString(name);
}

LayerChoice SceneDocument::tableOf(int layer) const {
  if (!hasLayerTables()) return std::nullopt;
  return static_cast<std::size_t>(layer);
}

/// The table that says what the parameter is, or would.
LayerChoice SceneDocument::ownerOf(int layer, ParamIndex parameter) const {
  const LayerChoice own = tableOf(layer);
  if (!own || parsed_->text.sets(own, parameter)) return own;
  const bool isShared = parsed_->text.sets(std::nullopt, parameter) &&
                        !parsed_->layers[*own].byOwnPresets[static_cast<std::size_t>(parameter)];
  return isShared ? std::nullopt : own;
}

scene::ParamValue SceneDocument::value(int layer, ParamIndex parameter, double frame) const {
  return personsValue(values(layer, frame), parameter, state_->plan.layer);
}

brisel::Values SceneDocument::values(int layer, double frame) const {
  return state_->layers[static_cast<std::size_t>(layer)].at(frame);
}

ValueOrigin SceneDocument::origin(int layer, ParamIndex parameter) const {
  if (!parsed_) return ValueOrigin::kDefault;
  const LayerChoice owner = ownerOf(layer, parameter);
  if (parsed_->text.sets(owner, parameter)) {
    return owner ? ValueOrigin::kLayer : ValueOrigin::kScene;
  }
  const LayerFacts& facts = parsed_->layers[static_cast<std::size_t>(layer)];
  const auto index = static_cast<std::size_t>(parameter);
  return facts.byOwnPresets[index] || facts.bySharedPresets[index] ? ValueOrigin::kPreset
                                                                   : ValueOrigin::kDefault;
}

std::vector<ParamKey> SceneDocument::keys(int layer, ParamIndex parameter) const {
  if (!parsed_) return {};
  const LayerChoice owner = ownerOf(layer, parameter);
  if (!parsed_->text.isKeyed(owner, parameter)) return {};
  const scene::Origin origin = owner ? scene::Origin::kLayer : scene::Origin::kScene;
  const auto& settings = state_->plan.scene.layers[static_cast<std::size_t>(layer)].settings;
  const auto setting = std::ranges::find_if(settings, [&](const scene::Setting& candidate) {
    return candidate.origin == origin && candidate.label == brisel::parameterSpec(parameter).label;
  });
  if (setting == settings.end()) return {};
  return scene::bindSettings({*setting}, state_->plan.layer, state_->plan.rate).front().keys;
}

std::vector<ParamIndex> SceneDocument::keyedParameters(int layer) const {
  std::vector<ParamIndex> keyed;
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    const auto parameter = static_cast<ParamIndex>(index);
    if (parsed_ && parsed_->text.isKeyed(ownerOf(layer, parameter), parameter)) {
      keyed.push_back(parameter);
    }
  }
  return keyed;
}

std::optional<scene::Mask> SceneDocument::mask(int layer) const {
  return state_->layers[static_cast<std::size_t>(layer)].mask();
}

QStringList SceneDocument::presets(int layer) const {
  QStringList names;
  for (const auto& choice : state_->plan.scene.layers[static_cast<std::size_t>(layer)].presets) {
    names.append(QString::fromStdString(choice.name));
  }
  return names;
}

// --- Edits

/// `makeText` makes another text of the one there is. What is no sound scene then is refused.
void SceneDocument::edit(const QString& label,
                         const std::function<std::string(const SceneText& text)>& makeText) {
  if (!parsed_) {
    emit problem(
        tr("Nothing can be changed until the scene's text is sound: %1").arg(textProblem_));
    return;
  }
  try {
    const QString text = QString::fromStdString(makeText(parsed_->text));
    if (text == text_) return;
    keep(parse(text));
    push(text, label);
  } catch (const std::exception& error) {
    emit problem(QString::fromUtf8(error.what()));
  }
}

void SceneDocument::push(const QString& text, const QString& label) {
  undoStack_.push(new TextStep(*this, text, label, gesture_));
}

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
  edit(label, [&](const SceneText& text) {
    return text.withKeys(ownerOf(layer, parameter), parameter, keys, this->keys(layer, parameter));
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
      brisel::Values values(state_->plan.layer);
      ParamSet set;
      for (const ParamIndex index :
           presets_.apply(presets_.find({preset, preset}), state_->plan.layer, values)) {
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
    const brisel::FrameSize size = state_->plan.layer;
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

LayerChoice SceneDocument::ownerOfMask(int layer) const {
  const LayerChoice own = tableOf(layer);
  if (!own || parsed_->text.hasMask(own)) return own;
  return parsed_->text.hasMask(std::nullopt) ? std::nullopt : own;
}

void SceneDocument::setMask(int layer, const std::optional<scene::Mask>& mask,
                            const QString& label) {
  edit(label, [&](const SceneText& text) {
    return text.withMask(ownerOfMask(layer), mask, this->mask(layer));
  });
}

void SceneDocument::setMaskShape(int layer, const std::optional<scene::MaskShape>& shape,
                                 double frame) {
  if (!shape) return setMask(layer, std::nullopt, tr("Remove Mask"));
  scene::Mask mask = this->mask(layer).value_or(scene::Mask{});
  const bool isAlike = !mask.keys.empty() &&
                       mask.keys.front().value.vertices.size() == shape->vertices.size() &&
                       mask.keys.front().value.closed == shape->closed;
  if (mask.keys.size() > 1 && isAlike) {
    setKey(mask.keys, frame, *shape);
  } else {
    mask.keys = {scene::Mask::Key({.time = 0}, *shape)};
  }
  setMask(layer, mask, tr("Change Mask"));
}

void SceneDocument::setMaskInverted(int layer, bool inverted) {
  std::optional<scene::Mask> mask = this->mask(layer);
  if (!mask) return;
  mask->inverted = inverted;
  setMask(layer, mask, tr("Invert Mask"));
}

void SceneDocument::addLayer(const QString& name) {
  edit(tr("Add Layer"),
       [&](const SceneText& text) { return text.withNewLayer(name.toStdString()); });
}

void SceneDocument::removeLayer(int layer) {
  if (layerCount() < 2) return;
  edit(tr("Remove Layer"),
       [&](const SceneText& text) { return text.withoutLayer(static_cast<std::size_t>(layer)); });
}

void SceneDocument::renameLayer(int layer, const QString& name) {
  if (!hasLayerTables()) return;
  edit(tr("Rename Layer"), [&](const SceneText& text) {
    return text.withLayerName(static_cast<std::size_t>(layer), name.toStdString());
  });
}

void SceneDocument::moveLayer(int from, int to) {
  edit(tr("Move Layer"), [&](const SceneText& text) {
    return text.withLayerMoved(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
  });
}

void SceneDocument::setSceneKey(const QString& label, const char* key, const QString& value) {
  edit(label, [&](const SceneText& text) { return text.withSceneKey(key, value.toStdString()); });
}

void SceneDocument::setSize(int width, int height) {
  setSceneKey(tr("Change Size"), "size", QStringLiteral("[%1, %2]").arg(width).arg(height));
}

void SceneDocument::setFrames(int frames) {
  setSceneKey(tr("Change Length"), "frames", QString::number(frames));
}

void SceneDocument::setPreroll(int steps) {
  setSceneKey(tr("Change Pre-roll"), "preroll", QString::number(steps));
}

void SceneDocument::setRate(const QString& framesPerSecond) {
  bool isWhole = false;
  framesPerSecond.toInt(&isWhole);
  setSceneKey(tr("Change Frame Rate"), "fps",
              isWhole ? framesPerSecond
                      : QString::fromStdString(tomlString(framesPerSecond.toStdString())));
}

void SceneDocument::setDepth(int bits) {
  setSceneKey(tr("Change Depth"), "depth", QString::number(bits));
}

void SceneDocument::setText(const QString& text, const QString& label) {
  if (text != text_) push(text, label);
}

void SceneDocument::beginGesture() {
  if (gesturesOpen_++ == 0) gesture_ = ++gestures_;
}

void SceneDocument::endGesture() {
  if (--gesturesOpen_ == 0) gesture_ = 0;
}

void SceneDocument::cancelGesture() {
  const int canceled = gesture_;
  endGesture();
  if (undoStack_.index() == 0) return;
  const auto* last = static_cast<const TextStep*>(undoStack_.command(undoStack_.index() - 1));
  if (last->gesture() == canceled) undoStack_.undo();
}

// --- The file on disk

void SceneDocument::watch() {
  const QStringList old = watcher_->files() + watcher_->directories();
  if (!old.isEmpty()) watcher_->removePaths(old);
  if (path_.isEmpty()) return;
  // Editors that replace the file are seen by its folder.
  watcher_->addPath(QFileInfo(path_).absolutePath());
  if (QFileInfo::exists(path_)) watcher_->addPath(path_);
}

void SceneDocument::lookAtDisk() {
  if (path_.isEmpty()) return;
  if (!QFileInfo::exists(path_)) {
    if (onDisk_.isNull()) return;  // told already
    onDisk_.clear();
    undoStack_.resetClean();
    untilRecovery_->start();
    emit problem(tr("%1 is no longer there; save to write it again").arg(name()));
    return;
  }
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) return;
  if (!watcher_->files().contains(path_)) watcher_->addPath(path_);
  const QByteArray bytes = file.readAll();
  if (bytes == onDisk_) return;
  onDisk_ = bytes;
  if (bytes == text_.toUtf8()) {  // it is back
    undoStack_.setClean();
  } else if (isModified()) {
    emit changedOnDisk();
  } else {
    reload();
  }
}

void SceneDocument::reload() {
  setText(QString::fromUtf8(onDisk_), tr("Change on Disk"));
  undoStack_.setClean();
}

// --- Recovery

void SceneDocument::keepForRecovery() {
  if (isModified()) recovery_->write(path_, text_);
}

void SceneDocument::forgetRecovery() {
  untilRecovery_->stop();
  recovery_->remove();
}

void SceneDocument::restore(const Recovered& recovered) {
  if (recovered.path.isEmpty() || !QFileInfo::exists(recovered.path) || !open(recovered.path)) {
    start({}, recovered.path);
  }
  setText(recovered.text, tr("Recover"));
  keepForRecovery();
  RecoveryFile::discard(recovered);
}

}  // namespace desk
