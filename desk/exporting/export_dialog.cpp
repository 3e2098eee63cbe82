#include "desk/exporting/export_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <algorithm>
#include <system_error>

#include "cli/media/output_files.h"
#include "cli/support/errors.h"

namespace desk {
namespace {

struct Format {
  const char* name;
  const char* ending;  // of the output's name
  const char* codec = "";
};

constexpr Format kFormats[] = {{"H.264 clip over black (.mp4)", ".mp4"},
                               {"ProRes 4444 clip with alpha (.mov)", ".mov"},
                               {"Lossless clip with alpha (.mov)", ".mov", "png"},
                               {"VP9 clip with alpha (.webm)", ".webm"},
                               {"PNG pictures with alpha", "_%04d.png"},
                               {"OpenEXR pictures with alpha", "_%04d.exr"},
                               {"Animated GIF over black (.gif)", ".gif"},
                               {"Animated PNG with alpha (.apng)", ".apng"},
                               {"Animated WebP with alpha (.webp)", ".webp"}};
constexpr const char* kScales[] = {"Full", "1/2", "1/3", "1/4"};

/// Of the frames, those whose output is there. Throws WorkError or UsageError when it cannot be
/// written.
std::vector<std::filesystem::path> outputsThere(const cli::OutputOptions& output,
                                                cli::FrameRange range, cli::Depth depth) {
  const cli::OutputTarget target = cli::parseOutputTarget(output);
  std::vector<std::filesystem::path> there;
  for (const int frame : cli::framesToWrite(target, range, depth, output)) {
    if (!target.holdsPictures() && frame > range.first) break;
    std::filesystem::path file = target.fileOf(frame);
    std::error_code error;
    if (std::filesystem::exists(file, error)) there.push_back(std::move(file));
  }
  return there;
}

}  // namespace

ExportDialog::ExportDialog(const SceneDocument& document, ExportQueue& queue, ExportMemory& memory,
                           cli::FrameRange range, QWidget* parent)
    : QDialog(parent),
      document_(document),
      queue_(queue),
      memory_(memory),
      format_(new QComboBox),
      output_(new QLineEdit),
      first_(new QSpinBox),
      last_(new QSpinBox),
      scale_(new QComboBox) {
  setWindowTitle("Export");
  for (const Format& format : kFormats) format_->addItem(format.name);
  for (const char* scale : kScales) scale_->addItem(scale);
  fill(range);
  connect(first_, &QSpinBox::valueChanged, last_, &QSpinBox::setMinimum);
  first_->setAccessibleName("First frame");
  last_->setAccessibleName("Last frame");

  auto* browse = new QPushButton("Browse…");
  auto* file = new QHBoxLayout;
  file->addWidget(output_, 1);
  file->addWidget(browse);
  auto* frames = new QHBoxLayout;
  frames->addWidget(first_, 1);
  frames->addWidget(last_, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  buttons->addButton("Export", QDialogButtonBox::AcceptRole);
  auto* form = new QFormLayout(this);
  form->addRow("&Format", format_);
  form->addRow("&Output", file);
  static_cast<QLabel*>(form->labelForField(file))->setBuddy(output_);
  output_->setAccessibleName("Output");
  output_->setMinimumWidth(360);
  form->addRow("F&rames", frames);
  static_cast<QLabel*>(form->labelForField(frames))->setBuddy(first_);
  form->addRow("&Resolution", scale_);
  form->addRow(buttons);
  connect(browse, &QPushButton::clicked, this, &ExportDialog::browse);
  connect(format_, &QComboBox::activated, this, &ExportDialog::takeFormat);
  connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::add);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

/// As the scene was exported last, or else any.
void ExportDialog::fill(cli::FrameRange range) {
  const int end = document_.state()->plan.frames - 1;
  for (QSpinBox* field : {first_, last_}) field->setRange(0, end);
  first_->setValue(range.first);
  last_->setValue(range.last);
  const ExportChoice last = memory_.of(document_.path());
  format_->setCurrentIndex(std::max(0, format_->findText(last.format)));
  scale_->setCurrentIndex(std::max(0, scale_->findText(last.scale)));
  const bool isSaved = !document_.path().isEmpty();
  const QFileInfo scene(document_.path());
  QString folder = last.folder;
  if (folder.isEmpty()) folder = isSaved ? scene.absolutePath() : QDir::homePath();
  QString name = last.name;
  if (name.isEmpty()) {
    name =
        (isSaved ? scene.completeBaseName() : "stars") + kFormats[format_->currentIndex()].ending;
  }
  output_->setText(QDir(folder).filePath(name));
}

void ExportDialog::browse() {
  const QString chosen =
      QFileDialog::getSaveFileName(this, "Export as", output_->text(), QString(), nullptr,
                                   QFileDialog::DontConfirmOverwrite);  // which add() asks
  if (!chosen.isEmpty()) output_->setText(chosen);
}

/// The name keeps what stands before the ending of its format.
void ExportDialog::takeFormat() {
  QString name = output_->text();
  for (const Format& format : kFormats) {
    if (!name.endsWith(QLatin1String(format.ending))) continue;
    name.chop(static_cast<int>(qstrlen(format.ending)));
    break;
  }
  output_->setText(name + kFormats[format_->currentIndex()].ending);
}

void ExportDialog::add() {
  ExportJob job;
  job.name = document_.name();
  job.scene = document_.placedText();
  job.output = QFileInfo(output_->text()).absoluteFilePath();
  const cli::ScenePlan& plan = document_.state()->plan;
  const cli::FrameRange range{first_->value(), last_->value()};
  const Format& format = kFormats[format_->currentIndex()];
  cli::OutputOptions output;
  output.name = job.output.toStdString();
  if (job.output.endsWith(QLatin1String(format.ending))) output.codec = format.codec;
  output.overwrite = true;  // once it is agreed to
  try {
    if (!document_.textProblem().isEmpty()) {
      throw cli::WorkError(document_.textProblem().toStdString());
    }
    const auto there = outputsThere(output, range, plan.depth);
    if (!there.empty()) {
      if (!mayReplace(there)) return;
      job.arguments << "--overwrite";
    }
  } catch (const std::exception& error) {
    return warn(QString::fromUtf8(error.what()));
  }
  job.frames = range.count();
  if (job.frames != plan.frames) {
    job.arguments << "--frames" << QString::fromStdString(cli::rangeText(range));
  }
  if (!output.codec.empty()) job.arguments << "--codec" << format.codec;
  if (scale_->currentIndex() > 0) job.arguments << "--scale" << scale_->currentText();
  for (const std::string& allowed : document_.allowed()) {
    const QString folder = QString::fromStdString(allowed);
    if (QFileInfo(folder).isDir()) job.arguments << "--allow" << folder;
  }
  if (!document_.input().isEmpty()) job.arguments << "--input" << document_.input();
  const QFileInfo file(job.output);
  memory_.keep(document_.path(), {.format = format_->currentText(),
                                  .folder = file.absolutePath(),
                                  .name = file.fileName(),
                                  .scale = scale_->currentText()});
  queue_.add(std::move(job));
  accept();
}

void ExportDialog::warn(const QString& sentence) {
  QMessageBox box(QMessageBox::Warning, windowTitle(), sentence, QMessageBox::Ok, this);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

bool ExportDialog::mayReplace(const std::vector<std::filesystem::path>& files) {
  const QString name = QString::fromStdString(files.front().filename().string());
  const QString what =
      files.size() == 1 ? name : QString("%1 and %2 more").arg(name).arg(files.size() - 1);
  QMessageBox box(QMessageBox::Question, windowTitle(), "Replace " + what + "?",
                  QMessageBox::Yes | QMessageBox::No, this);
  box.setTextFormat(Qt::PlainText);
  return box.exec() == QMessageBox::Yes;
}

}  // namespace desk
