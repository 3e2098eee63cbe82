// Sentences for the person at the window, each with what can be done about it.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

class QVBoxLayout;

namespace desk {

/// Bars below each other; as high as they need, nothing while there is nothing to say.
class MessageArea : public QWidget {
  Q_OBJECT

 public:
  /// What a message is about: a new one takes the place of the last about the same.
  enum class Subject { Failure, Text, Disk, Recovery, Picture, Export };

  /// A button; the bar goes when it is pressed.
  struct Answer {
    QString label;
    std::function<void()> act;
  };

  explicit MessageArea(QWidget* parent = nullptr);

  /// Until it is answered or closed, or another takes its place.
  void say(Subject subject, const QString& sentence, const std::vector<Answer>& answers = {});
  void withdraw(Subject subject);
  /// What is said about it; empty when nothing is.
  QString sentence(Subject subject) const;

 private:
  QVBoxLayout* bars_;
  std::map<Subject, QWidget*> shown_;
};

}  // namespace desk
