// A step of a document's undo stack.
#pragma once

#include <QUndoCommand>
#include <memory>
#include <utility>

#include "desk/document/scene_document.h"

namespace desk {

/// From one text of the document to another. Steps next to each other share the text between them,
/// so that what becomes of it where the scene is saved in another folder holds for both.
class TextStep : public QUndoCommand {
 public:
  TextStep(SceneDocument& document, std::shared_ptr<PlacedText> after, const QString& label,
           int gesture)
      : QUndoCommand(label),
        document_(document),
        before_(document.now_),
        after_(std::move(after)),
        gesture_(gesture) {}

  const PlacedText& before() const { return *before_; }
  int gesture() const { return gesture_; }
  void undo() override { document_.take(before_); }
  void redo() override { document_.take(after_); }
  int id() const override { return gesture_ > 0 ? 1 : -1; }
  bool mergeWith(const QUndoCommand* other) override {
    const auto* next = static_cast<const TextStep*>(other);
    if (next->gesture_ != gesture_) return false;
    after_ = next->after_;
    setObsolete(after_->text == before_->text);
    return true;
  }

 private:
  SceneDocument& document_;
  std::shared_ptr<PlacedText> before_;
  std::shared_ptr<PlacedText> after_;
  int gesture_;
};

}  // namespace desk
