#include "desk/window/message_area.h"

#include <QAccessible>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTextDocument>
#include <QToolButton>
#include <QVBoxLayout>

namespace desk {
namespace {

constexpr int kNarrow = 480;          // pixels, below which answers stand under their sentence
constexpr int kLeastWidth = 120;      // which no message takes from the window
constexpr int kMostCharacters = 400;  // of a sentence; its tool tip has them all
constexpr int kMostOfAnswer = 24;

/// Without its middle, which says least of a path.
QString shortened(const QString& text, int most) {
  if (text.size() <= most) return text;
  const int half = most / 2;
  return text.left(half) + QChar(0x2026) + text.right(most - half - 1);
}

/// Its answers are beside the sentence where there is room.
class MessageBar : public QFrame {
 public:
  MessageBar() : words(new QBoxLayout(QBoxLayout::LeftToRight)), row(new QHBoxLayout(this)) {
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setMinimumWidth(kLeastWidth);
    row->setContentsMargins(8, 4, 4, 4);
  }

  QBoxLayout* words;  // the sentence and its answers
  QHBoxLayout* row;

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QFrame::resizeEvent(event);
    words->setDirection(width() < kNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
  }
};

}  // namespace

MessageArea::MessageArea(QWidget* parent) : QWidget(parent), bars_(new QVBoxLayout(this)) {
  bars_->setContentsMargins({});
  bars_->setSpacing(0);
}

void MessageArea::say(Subject subject, const QString& sentence,
                      const std::vector<Answer>& answers) {
  withdraw(subject);
  auto* bar = new MessageBar;
  bar->setAccessibleName(sentence);

  auto* icon = new QLabel;
  const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
  bar->row->addWidget(icon);
  bar->row->addLayout(bar->words, 1);

  auto* text = new QLabel(shortened(sentence, kMostCharacters));
  text->setTextFormat(Qt::PlainText);  // file names are no markup
  text->setToolTip(Qt::convertFromPlainText(sentence, Qt::WhiteSpaceNormal));
  text->setAccessibleDescription(sentence);  // not the tool tip's markup
  text->setWordWrap(true);
  text->setMinimumWidth(1);  // however long its longest word is
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setForegroundRole(QPalette::ToolTipText);
  bar->words->addWidget(text, 1);

  for (const Answer& answer : answers) {
    auto* button = new QPushButton(shortened(answer.label, kMostOfAnswer).replace("&", "&&"));
    button->setAccessibleName(answer.label);
    connect(button, &QPushButton::clicked, this, [this, subject, act = answer.act] {
      withdraw(subject);
      act();
    });
    bar->words->addWidget(button);
  }
  auto* close = new QToolButton;
  close->setAutoRaise(true);
  close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close->setToolTip("Dismiss");
  close->setAccessibleName("Dismiss");
  connect(close, &QToolButton::clicked, this, [this, subject] { withdraw(subject); });
  bar->row->addWidget(close);

  bars_->addWidget(bar);
  shown_[subject] = bar;
  QAccessibleEvent alert(bar, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void MessageArea::withdraw(Subject subject) {
  const auto found = shown_.find(subject);
  if (found == shown_.end()) return;
  found->second->hide();
  found->second->deleteLater();  // one of its own buttons may be what asks
  shown_.erase(found);
}

QString MessageArea::sentence(Subject subject) const {
  const auto found = shown_.find(subject);
  return found == shown_.end() ? QString() : found->second->accessibleName();
}

}  // namespace desk
