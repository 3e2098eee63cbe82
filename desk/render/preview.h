// What the window shows of a scene: which frame and layer, how large, and the picture of that.
#pragma once

#include <QObject>

#include "desk/document/scene_document.h"
#include "desk/render/frame_renderer.h"

namespace desk {

/// Asks for a picture whenever the scene or what is shown of it changes. All widgets share it.
class Preview : public QObject {
  Q_OBJECT

 public:
  explicit Preview(SceneDocument& document, QObject* parent = nullptr);

  SceneDocument& document() const { return document_; }

  /// The one that was gone to; while it plays, of the picture shown.
  int frame() const { return frame_; }
  /// The one that a picture was asked for last.
  int askedFrame() const { return askedFrame_; }
  /// The layer whose controls, handles and keys are shown.
  int layer() const { return layer_; }
  int reduction() const { return reduction_; }
  Backdrop backdrop() const { return backdrop_; }
  /// The last one that was rendered of this scene, maybe of a frame before; without a state before
  /// the first.
  const Picture& picture() const { return picture_; }
  /// Whether it is of what is asked for now.
  bool isUpToDate() const { return picture_.request == asked_; }
  /// Shown in place of the document's own state while it is not null: A/B and snapshots.
  const SharedState& comparedState() const { return compared_; }

 public slots:
  void setFrame(int frame);          // 0 .. the scene's last, or the nearest
  void playTo(int frame);            // the same, once its picture is shown
  void setLayer(int layer);          // one that there is, or the nearest
  void setReduction(int reduction);  // 1 .. 4
  void setBackdrop(desk::Backdrop backdrop);
  void compare(const desk::SharedState& state);  // null: no longer

 signals:
  void frameChanged(int frame);
  void layerChanged(int layer);
  void viewChanged();  // reduction, backdrop or what is compared
  void asked();        // for a picture
  void pictureChanged();

 private:
  void follow();  // the document
  void ask();
  void show(const Picture& picture);
  void startAnew();

  SceneDocument& document_;
  FrameRenderer renderer_;
  int frame_ = 0;
  int askedFrame_ = 0;
  int layer_ = 0;
  int reduction_ = 1;
  Backdrop backdrop_ = Backdrop::Transparent;
  SharedState compared_;
  Picture picture_;
  std::uint64_t asked_ = 0;
  std::uint64_t firstOfScene_ = 0;  // that was asked for
};

}  // namespace desk

Q_DECLARE_METATYPE(desk::Backdrop)
Q_DECLARE_METATYPE(desk::SharedState)
