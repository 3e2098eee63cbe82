// The scene that a window shows and changes: a file's text, with every step back to its beginning.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUndoStack>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "desk/document/placed_text.h"
#include "desk/document/recovery_file.h"
#include "desk/document/scene_state.h"
#include "desk/document/scene_text.h"
#include "effect/values.h"
#include "scene/preset_library.h"

class QFileSystemWatcher;
class QTimer;

namespace desk {

/// Belongs to the window's thread. Nothing here throws: what fails is told by problem(), one
/// sentence, and leaves all as it was. Layers are counted from 0 at the bottom; a scene without
/// [[layer]] has one layer, 0. Frames count from 0.
///
/// Each edit is one step of undoStack(), but those between beginGesture() and endGesture(), as
/// while a slider is dragged, are one together.
class SceneDocument : public QObject {
  Q_OBJECT

 public:
  /// `presets` are those that scenes may name.
  explicit SceneDocument(scene::PresetLibrary presets, QObject* parent = nullptr);
  ~SceneDocument() override;

  // --- Files. False when it failed or, for those that replace the scene, nothing was replaced.
  // Whether unsaved changes may go is for the caller to ask before.

  /// A new scene without a file; with a preset's name, of its look.
  void startNew(const QString& preset = {});
  /// A text that is no sound scene is opened as well: textProblem() says why, and nothing but an
  /// empty scene is shown until it is mended.
  bool open(const QString& path);
  bool save();  // to path(), which is not empty
  /// In another folder the scene names the same files, by what they are called from there.
  bool saveAs(const QString& path);
  /// Absolute; empty while the scene has no file.
  const QString& path() const { return path_; }
  /// For titles: "fire.toml" or "Untitled".
  QString name() const;
  bool isModified() const { return !undoStack_.isClean(); }

  /// A clip or still that is shown in place of the scene's input without becoming a part of it, as
  /// -i does; empty for the scene's own.
  void setInput(const QString& path);
  const QString& input() const { return input_; }
  /// A folder that scenes may name files in, besides their own.
  void allow(const QString& folder);
  const std::vector<std::string>& allowed() const { return allowed_; }
  /// Of a file that the scene names and may not read, as its folder is not allowed; empty when
  /// there is none.
  QString folderToAllow() const;
  /// The same written into the scene, as a path relative to its file where there is one; its
  /// folder is allowed then.
  void setSceneInput(const QString& path);

  // --- What it says now.

  QUndoStack& undoStack() { return undoStack_; }
  const QString& text() const { return now_->text; }
  /// To be kept, and handed back to stateOf() or setText() wherever the scene is then.
  const PlacedText& placedText() const { return *now_; }
  /// This and all below is of the last text that is a sound scene, for as long as the newest is
  /// not. Never null.
  const SharedState& state() const;
  /// Why the newest text is none, with file and line; empty when it is one. Edits fail then, and
  /// undo, redo and reloading are what helps.
  const QString& textProblem() const { return textProblem_; }

  int layerCount() const;
  /// Whether the layers are [[layer]] tables, which have names, can be moved and removed.
  bool hasLayerTables() const;
  /// "Layer 2" for one without a name.
  QString layerName(int layer) const;

  /// In the units of a person: see scene::ParamValue. Points are fractions of the frame.
  scene::ParamValue value(int layer, brisel::ParamIndex parameter, double frame) const;
  /// As the effect has them, for grayingOf() and the like.
  brisel::Values values(int layer, double frame) const;
  ValueOrigin origin(int layer, brisel::ParamIndex parameter) const;
  /// In ascending order, times in frames; none for a parameter that does not change over time.
  std::vector<ParamKey> keys(int layer, brisel::ParamIndex parameter) const;
  /// Those that have keys, in the order of their indices.
  std::vector<brisel::ParamIndex> keyedParameters(int layer) const;
  /// Times in frames; of more than one key the shape changes over time.
  std::optional<scene::Mask> mask(int layer) const;
  QStringList presets(int layer) const;
  const scene::PresetLibrary& presetLibrary() const { return presets_; }

  // --- Edits. A parameter is changed where its value comes from: in [params] where the scene says
  // it for all layers, else in the layer's own table.

  /// A constant, or the value of the key at that frame, which is made when there are keys but none
  /// there.
  void setValue(int layer, brisel::ParamIndex parameter, const scene::ParamValue& value,
                double frame);
  /// Several of them as one step that the menu calls `label`.
  void setValues(int layer,
                 const std::vector<std::pair<brisel::ParamIndex, scene::ParamValue>>& values,
                 double frame, const QString& label);
  /// A key of the value that the parameter has there; the first makes it keyed.
  void addKey(int layer, brisel::ParamIndex parameter, double frame);
  /// The last key that goes leaves its value as a constant.
  void removeKey(int layer, brisel::ParamIndex parameter, double frame);
  /// One that is there already gives way.
  void moveKey(int layer, brisel::ParamIndex parameter, double from, double to);
  void copyKey(int layer, brisel::ParamIndex parameter, double from, double to);
  void setEase(int layer, brisel::ParamIndex parameter, double frame, const scene::Ease& ease);
  /// All of them at once.
  void setKeys(int layer, brisel::ParamIndex parameter, const std::vector<ParamKey>& keys,
               const QString& label);
  /// Those of several parameters as one step.
  void setKeys(int layer,
               const std::vector<std::pair<brisel::ParamIndex, std::vector<ParamKey>>>& keys,
               const QString& label);

  /// Back to what the presets or the effect say.
  void reset(int layer, brisel::ParamIndex parameter);
  void resetAll(int layer);  // presets as well
  /// As a click on its thumbnail in a host: what the layer says of a parameter that the preset sets
  /// gives way, and the preset is the last of the layer's presets.
  void applyPreset(int layer, const QString& name);
  /// One that is not in the library, which the scene cannot name: its values as constants.
  void applyPresetFile(int layer, const QString& path);

  /// The outline at a frame: of a mask with keys, that of the key there, made when there is none;
  /// one of another number of vertices takes the place of all keys. None removes the mask.
  void setMaskShape(int layer, const std::optional<scene::MaskShape>& shape, double frame);
  void setMaskInverted(int layer, bool inverted);
  /// All of it, its keys' times in frames; none removes it.
  void setMask(int layer, const std::optional<scene::Mask>& mask, const QString& label);

  void addLayer(const QString& name);
  void removeLayer(int layer);
  void renameLayer(int layer, const QString& name);
  void moveLayer(int from, int to);

  void setSize(int width, int height);  // pixels, 1 .. scene::kMaxSide
  void setFrames(int frames);           // 1 .. scene::kMaxFrames
  void setPreroll(int steps);
  void setRate(const QString& framesPerSecond);  // "25", "30000/1001"
  void setDepth(int bits);                       // 8 or 16

  /// The whole text, as one step: for snapshots.
  void setText(const PlacedText& text, const QString& label);

  /// What comes until endGesture() is one step, with the label of its first edit. A gesture within
  /// another is a part of it.
  int beginGesture();
  /// Goes on with one that has ended, where its step is still the last; else as beginGesture().
  void resumeGesture(int gesture);
  void endGesture();
  /// Instead of its end: takes back what came since its beginning.
  void cancelGesture();

  // --- A/B.

  /// The scene as it was before the last step; null where there is none or its text is not sound.
  SharedState stateBeforeLastStep() const;
  /// The state of a text as this document would have it; null where it is not sound.
  SharedState stateOf(const PlacedText& text) const;

  // --- What survives a crash.

  /// A scene that an earlier run did not save, if there is one: until it is restored or discarded.
  static std::optional<Recovered> findRecovered() { return RecoveryFile::findOne(); }
  static void discard(const Recovered& recovered) { RecoveryFile::discard(recovered); }
  /// Opens the scene, where it is another, with its unsaved text, which undo takes back.
  void restore(const Recovered& recovered);

  /// Follows the file where no system tells of changes, as on some networks.
  void lookAtDisk();
  /// Takes what is on the disk in place of unsaved changes, which undo brings back; the answer to
  /// changedOnDisk(). Where that is no text, nothing is taken.
  void reload();

 signals:
  /// Text, values or layers are others than before, or others than an edit would have had them that
  /// was refused; state() is new where the text is sound.
  void changed();
  /// Another file, or none: path(), name() and all that was said before is gone.
  void replaced();
  /// isModified() or path() has changed.
  void savedStateChanged();
  /// textProblem() has changed.
  void textProblemChanged();
  /// One sentence for the person at the window.
  void problem(const QString& sentence);
  /// Another program has changed the file while there are unsaved changes here: a bar asks, and
  /// reload() or nothing is the answer. Without unsaved changes it was reloaded already.
  void changedOnDisk();

 private:
  friend class TextStep;
  class InputProbe;
  struct Parsed;

  void start(const QString& text, const QString& path);
  bool write(const QString& path, const QString& text);
  std::shared_ptr<const Parsed> parse(const QString& text) const;
  std::shared_ptr<const Parsed> parsed(const QString& text,
                                       const std::filesystem::path& file) const;
  void keep(std::shared_ptr<const Parsed> parsed) const;
  void take(std::shared_ptr<PlacedText> text);
  void edit(const QString& label,
            const std::function<std::string(const SceneText& text)>& makeText);
  void refuse(const QString& why);
  void push(const QString& text, const QString& label);
  static SceneText withText(const SceneText& old, std::string text);
  std::string withValueAt(const SceneText& text, int layer, brisel::ParamIndex parameter,
                          const scene::ParamValue& value, double frame) const;
  void putKey(int layer, brisel::ParamIndex parameter, double from, double to, bool isCopy);
  void setSceneKey(const QString& label, const char* key, const QString& value);
  LayerChoice tableOf(int layer) const;
  LayerChoice ownerOf(int layer, brisel::ParamIndex parameter) const;
  LayerChoice ownerOfMask(int layer) const;
  void watch();
  void loseDisk(const QString& why);
  bool keepForRecovery();
  void forgetRecovery();

  scene::PresetLibrary presets_;
  std::unique_ptr<InputProbe> probe_;
  std::unique_ptr<RecoveryFile> recovery_;
  QUndoStack undoStack_;
  QString path_;
  QString input_;
  std::vector<std::string> allowed_;
  std::shared_ptr<PlacedText> now_ = std::make_shared<PlacedText>();
  QString textProblem_;
  std::shared_ptr<const Parsed> parsed_;                    // the last that was sound; never null
  mutable std::deque<std::shared_ptr<const Parsed>> kept_;  // the newest first
  int gesturesOpen_ = 0;
  int gesture_ = 0;  // the one going on; 0 between them
  int gestures_ = 0;
  QByteArray onDisk_;        // what the file has, as far as is known; or null
  QString diskProblem_;      // why it cannot be read, once that is told
  QString recoveryProblem_;  // the same of writing what is kept for a crash
  QFileSystemWatcher* watcher_;
  QTimer* settling_;       // of the file on disk
  QTimer* untilRecovery_;  // is written
};

}  // namespace desk
