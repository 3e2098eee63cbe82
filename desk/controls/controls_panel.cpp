#include "desk/controls/controls_panel.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "cli/scene/manual_texts.h"
#include "desk/document/value_text.h"
#include "effect/graying.h"

namespace desk {
namespace {

using brisel::ParameterSpec;
using brisel::ParamIndex;
using brisel::ParamKind;

enum Column { kName, kEditor };

constexpr int kPictureTime = 40;  // milliseconds
constexpr int kSameTurn = 700;    // milliseconds, longer than until a held key repeats
constexpr int kLeastWidth = 260;  // pixels; the panel scrolls what it has no room for
constexpr char kKeyHere[] = "◆";
constexpr char kNoKeyHere[] = "◇";
constexpr char kReset[] = "↺";

QString toolTipOf(const ParameterSpec& parameter,
                  const std::map<std::string, cli::ManualText>& texts) {
  const auto found = texts.find(parameter.label);
  if (found == texts.end()) return {};
  const cli::ManualText& text = found->second;
  QString tip = QStringLiteral("<p><b>%1</b></p><p>%2</p>")
                    .arg(QString::fromUtf8(parameter.label).toHtmlEscaped(),
                         QString::fromStdString(text.description).toHtmlEscaped());
  if (!text.items.empty()) {
    tip += QStringLiteral("<dl>");
    for (const std::string& item : scene::itemsOf(parameter)) {
      const auto meaning = text.items.find(item);
      if (meaning == text.items.end()) continue;
      tip += QStringLiteral("<dt><b>%1</b></dt><dd>%2</dd>")
                 .arg(QString::fromStdString(item).toHtmlEscaped(),
                      QString::fromStdString(meaning->second).toHtmlEscaped());
    }
    tip += QStringLiteral("</dl>");
  }
  if (!text.grayed.empty()) {
    tip += QStringLiteral("<p>Grayed out %1.</p>")
               .arg(QString::fromStdString(text.grayed).toHtmlEscaped());
  }
  return tip;
}

}  // namespace

ControlsPanel::ControlsPanel(Preview& preview, QWidget* parent)
    : QWidget(parent), preview_(preview), search_(new QLineEdit), tree_(new QTreeWidget) {
  search_->setPlaceholderText("Search");
  search_->setAccessibleName("Search for a parameter");
  search_->setClearButtonEnabled(true);
  auto* resetAll = new QPushButton("Reset all");
  connect(resetAll, &QPushButton::clicked, this,
          [this] { preview_.document().resetAll(preview_.layer()); });
  tree_->setHeaderLabels({"Parameter", "Value"});  // which screen readers alone get
  tree_->setMinimumWidth(kLeastWidth);
  tree_->setHeaderHidden(true);
  tree_->setAccessibleName("Parameters");
  tree_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  tree_->setFrameShape(QFrame::NoFrame);
  tree_->viewport()->setAutoFillBackground(false);  // so that fields stand out, in the dark as well
  tree_->setSelectionMode(QAbstractItemView::NoSelection);
  tree_->setFocusPolicy(Qt::TabFocus);  // not by a click on a button of a row
  tree_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(tree_, &QTreeWidget::customContextMenuRequested, this, &ControlsPanel::openMenu);

  auto* top = new QHBoxLayout;
  top->addWidget(search_, 1);
  top->addWidget(resetAll);
  auto* column = new QVBoxLayout(this);
  column->addLayout(top);
  column->addWidget(tree_, 1);
  addRows();
  tree_->header()->setSectionResizeMode(kName, QHeaderView::ResizeToContents);
  tree_->header()->setSectionResizeMode(kEditor, QHeaderView::Stretch);

  connect(search_, &QLineEdit::textChanged, this, &ControlsPanel::find);
  // The picture comes first.
  auto* afterPicture = new QTimer(this);
  afterPicture->setSingleShot(true);
  afterPicture->setInterval(kPictureTime);
  connect(afterPicture, &QTimer::timeout, this, &ControlsPanel::refresh);
  const auto refreshSoon = [afterPicture] {
    if (!afterPicture->isActive()) afterPicture->start();
  };
  connect(&preview_.document(), &SceneDocument::changed, this, refreshSoon);
  connect(&preview_, &Preview::frameChanged, this, refreshSoon);
  connect(&preview_, &Preview::layerChanged, this, refreshSoon);
}

void ControlsPanel::addRows() {
  const auto texts = cli::readManualTexts();
  QTreeWidgetItem* group = tree_->invisibleRootItem();
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    const ParameterSpec& parameter = brisel::parameterSpec(index);
    if (parameter.kind == ParamKind::GroupEnd) {
      group = group->parent() ? group->parent() : tree_->invisibleRootItem();
      continue;
    }
    if (parameter.kind == ParamKind::Panel) continue;  // the effect draws it
    auto* item = new QTreeWidgetItem(group, {QString::fromUtf8(parameter.label)});
    item->setToolTip(kName, toolTipOf(parameter, texts));
    Row row{static_cast<ParamIndex>(index), item};
    if (parameter.kind == ParamKind::GroupStart) {
      group = item;
      item->setExpanded(!item->parent());
      item->setData(kEditor, Qt::AccessibleTextRole, "Group");
    } else {
      addEditor(row);
    }
    rows_.push_back(row);
  }
}

void ControlsPanel::addEditor(Row& row) {
  const ParameterSpec& parameter = brisel::parameterSpec(row.parameter);
  if (parameter.kind == ParamKind::Mask) return;
  SceneDocument& document = preview_.document();
  row.editor = ValueEditor::make(parameter, tree_);
  row.editor->setToolTip(row.item->toolTip(kName));
  connect(row.editor, &ValueEditor::edited, this,
          [this, index = row.parameter](const scene::ParamValue& value) { take(index, value); });
  connect(row.editor, &ValueEditor::gestureBegan, &document, &SceneDocument::beginGesture);
  connect(row.editor, &ValueEditor::gestureEnded, &document, &SceneDocument::endGesture);
  connect(row.editor, &ValueEditor::gestureCanceled, &document, &SceneDocument::cancelGesture);

  auto* editing = new QWidget(tree_);
  auto* line = new QHBoxLayout(editing);
  line->setContentsMargins({});
  line->setSpacing(0);
  line->addWidget(row.editor, 1);
  const auto addButton = [&](const QString& name, const QString& toolTip) {
    auto* button = new QToolButton(editing);
    button->setAutoRaise(true);
    button->setAccessibleName(name.arg(row.item->text(kName)));
    button->setToolTip(toolTip);
    line->addWidget(button);
    return button;
  };
  row.reset = addButton("Reset of %1", "Back to what the presets or the effect say");
  row.reset->setText(QString::fromUtf8(kReset));
  QSizePolicy keepsItsPlace = row.reset->sizePolicy();
  keepsItsPlace.setRetainSizeWhenHidden(true);
  row.reset->setSizePolicy(keepsItsPlace);
  connect(row.reset, &QToolButton::clicked, this,
          [this, index = row.parameter] { preview_.document().reset(preview_.layer(), index); });
  row.key = addButton("Key of %1", "Set a key at this frame, or take it away");
  row.key->setCheckable(true);
  connect(row.key, &QToolButton::clicked, this,
          [this, index = row.parameter] { toggleKey(index); });
  tree_->setItemWidget(row.item, kEditor, editing);
}

void ControlsPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  int least = 0;
  for (const Row& row : rows_) {
    if (row.editor) least = std::max(least, row.editor->parentWidget()->minimumSizeHint().width());
  }
  tree_->header()->setMinimumSectionSize(least);
  refresh();
}

void ControlsPanel::refresh() {
  if (!isVisible()) return;
  for (Row& row : rows_) refreshRow(row);
  gray(preview_.document().values(preview_.layer(), preview_.frame()));
}

/// What a key that is held or a wheel turns in quick succession is one step.
void ControlsPanel::take(ParamIndex parameter, const scene::ParamValue& value) {
  SceneDocument& document = preview_.document();
  if (turned_ == parameter && sinceTurn_.isValid() && !sinceTurn_.hasExpired(kSameTurn)) {
    document.resumeGesture(gesture_);
  } else {
    gesture_ = document.beginGesture();
  }
  Row& edited = *std::ranges::find(rows_, parameter, &Row::parameter);
  edited.shown = value;
  document.setValue(preview_.layer(), parameter, value, preview_.frame());
  document.endGesture();
  turned_ = parameter;
  sinceTurn_.start();
  refreshRow(edited);  // which the document may have refused
}

void ControlsPanel::refreshRow(Row& row) {
  const SceneDocument& document = preview_.document();
  const int layer = preview_.layer();
  const ValueOrigin origin = document.origin(layer, row.parameter);
  const bool isSet = origin == ValueOrigin::Scene || origin == ValueOrigin::Layer;
  QFont font = tree_->font();
  font.setBold(isSet);
  font.setItalic(origin == ValueOrigin::Preset);
  row.item->setFont(kName, font);
  if (row.parameter == brisel::kPath) {
    const auto mask = document.mask(layer);
    row.item->setText(
        kEditor,
        mask ? QStringLiteral("Mask of %1 vertices").arg(mask->keys.front().value.vertices.size())
             : QStringLiteral("None"));
  }
  if (!row.editor) return;
  const scene::ParamValue value = document.value(layer, row.parameter, preview_.frame());
  if (row.shown != value) row.editor->show(value);
  row.shown = value;
  row.item->setData(kEditor, Qt::AccessibleTextRole,
                    QString::fromStdString(valueText(brisel::parameterSpec(row.parameter), value)));
  const std::vector<ParamKey> keys = document.keys(layer, row.parameter);
  const bool isHere = std::ranges::find(keys, preview_.frame(), &ParamKey::time) != keys.end();
  row.key->setChecked(isHere);
  row.key->setText(QString::fromUtf8(isHere ? kKeyHere : kNoKeyHere));
  if (row.isKeyed != !keys.empty()) {
    row.isKeyed = !keys.empty();
    QPalette colors;
    if (!*row.isKeyed) colors.setColor(QPalette::ButtonText, Qt::gray);  // in any theme
    row.key->setPalette(colors);
  }
  row.reset->setVisible(isSet);
}

/// As a host has the effect's rules for every parameter in turn; the last of them counts.
void ControlsPanel::gray(const brisel::Values& values) {
  std::array<bool, brisel::kParamCount> enabled{};
  enabled.fill(true);
  for (std::int32_t changed = 2; changed < brisel::kParamCount; ++changed) {
    const auto states = brisel::grayingOf(values, changed);
    if (!states) continue;
    for (const brisel::ControlState& state : *states) {
      enabled[static_cast<std::size_t>(state.index)] = state.enabled;
    }
  }
  for (const Row& row : rows_) {
    const bool isEnabled = enabled[static_cast<std::size_t>(row.parameter)];
    if (row.item->isDisabled() != isEnabled) continue;
    row.item->setDisabled(!isEnabled);
    if (row.editor) row.editor->setEnabled(isEnabled);
  }
}

/// Leaves the rows that hold all the words, and all of a group that does.
void ControlsPanel::find(const QString& words) {
  const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  const auto holdsAll = [&](const QTreeWidgetItem* item) {
    return std::ranges::all_of(wanted, [&](const QString& word) {
      return item->text(kName).contains(word, Qt::CaseInsensitive);
    });
  };
  const auto isMeant = [&](const QTreeWidgetItem* item) {
    while (item && !holdsAll(item)) item = item->parent();
    return item != nullptr;
  };
  const bool begins = !wanted.isEmpty() && !isSearching_;
  const bool ends = wanted.isEmpty() && isSearching_;
  isSearching_ = !wanted.isEmpty();
  for (Row& row : rows_) {
    if (begins) row.wasExpanded = row.item->isExpanded();
    row.item->setHidden(isSearching_);
  }
  for (const Row& row : rows_) {
    if (ends) row.item->setExpanded(row.wasExpanded);
    if (!isMeant(row.item)) continue;
    row.item->setHidden(false);
    if (!isSearching_) continue;
    for (QTreeWidgetItem* group = row.item->parent(); group; group = group->parent()) {
      group->setHidden(false);
      group->setExpanded(true);
    }
  }
}

void ControlsPanel::openMenu(QPoint at) {
  const QTreeWidgetItem* item = tree_->itemAt(at);
  const auto row = std::ranges::find(rows_, item, &Row::item);
  if (row == rows_.end() || !row->editor) return;
  const ParamIndex parameter = row->parameter;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction("Reset", this,
                  [this, parameter] { preview_.document().reset(preview_.layer(), parameter); });
  menu->addAction("Set or remove key", this, [this, parameter] { toggleKey(parameter); });
  menu->popup(tree_->viewport()->mapToGlobal(at));
}

void ControlsPanel::toggleKey(ParamIndex parameter) {
  SceneDocument& document = preview_.document();
  const std::vector<ParamKey> keys = document.keys(preview_.layer(), parameter);
  if (std::ranges::find(keys, preview_.frame(), &ParamKey::time) != keys.end()) {
    document.removeKey(preview_.layer(), parameter, preview_.frame());
  } else {
    document.addKey(preview_.layer(), parameter, preview_.frame());
  }
  refresh();  // the button, too, where the document has refused
}

}  // namespace desk
