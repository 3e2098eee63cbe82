#include "desk/window/message_area.h"

#include <QAccessible>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace desk {

MessageArea::MessageArea(QWidget* parent) : QWidget(parent), bars_(new QVBoxLayout(this)) {
  bars_->setContentsMargins({});
  bars_->setSpacing(0);
}

void MessageArea::say(Subject subject, const QString& sentence,
                      const std::vector<Answer>& answers) {
  withdraw(subject);
  auto* bar = new QFrame;
  bar->setFrameShape(QFrame::StyledPanel);
  bar->setAutoFillBackground(true);
  bar->setBackgroundRole(QPalette::ToolTipBase);
  bar->setForegroundRole(QPalette::ToolTipText);
  bar->setAccessibleName(sentence);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(8, 4, 4, 4);

  auto* icon = new QLabel;
  const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
  row->addWidget(icon);

  auto* text = new QLabel(sentence);
  text->setTextFormat(Qt::PlainText);  // file names are no markup
  text->setWordWrap(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setForegroundRole(QPalette::ToolTipText);
  row->addWidget(text, 1);

  for (const Answer& answer : answers) {
    auto* button = new QPushButton(answer.label);
    connect(button, &QPushButton::clicked, this, [this, subject, act = answer.act] {
      withdraw(subject);
      act();
    });
    row->addWidget(button);
  }
  auto* close = new QToolButton;
  close->setAutoRaise(true);
  close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close->setToolTip("Dismiss");
  close->setAccessibleName("Dismiss");
  connect(close, &QToolButton::clicked, this, [this, subject] { withdraw(subject); });
  row->addWidget(close);

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
