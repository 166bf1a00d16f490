#include "desktop/dialogs.h"

#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "desktop/core_text.h"

namespace lineweir {
namespace {

const QString product = QStringLiteral("Lineweir");

}  // namespace

QString qt_filter(const std::string& filter) {
  const QStringList parts = shown_text(filter).split(u'|');
  QStringList filters;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QString text = parts[i];
    const auto bracket = text.lastIndexOf(u'(');
    if (bracket > 0) text = text.left(bracket).trimmed();
    QString pattern = parts[i + 1];
    pattern.replace(u';', u' ');
    if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
    filters += QStringLiteral("%1 (%2)").arg(text, pattern);
  }
  return filters.join(QLatin1String(";;"));
}

std::optional<std::string> SystemDialogs::ask_file(const platform::FileQuestion& question) {
  const QString title = shown_text(question.title);
  const QString path = shown_text(question.default_path);
  const QString filter = qt_filter(question.filter);
  const QString chosen = question.for_saving
                             ? QFileDialog::getSaveFileName(front(), title, path, filter)
                             : QFileDialog::getOpenFileName(front(), title, path, filter);
  if (chosen.isEmpty()) return std::nullopt;
  return core_text(chosen);
}

std::optional<std::string> SystemDialogs::ask_input(const std::string& prompt,
                                                    const std::string& default_text) {
  bool accepted = false;
  const QString text = QInputDialog::getText(
      front(), product, shown_text(prompt), QLineEdit::Normal, shown_text(default_text), &accepted);
  if (!accepted) return std::nullopt;
  return core_text(text);
}

bool SystemDialogs::ask_yes_no(const std::string& question) {
  return QMessageBox::question(front(), product, shown_text(question)) == QMessageBox::Yes;
}

std::optional<platform::FontChoice> SystemDialogs::ask_font(const platform::FontChoice& present) {
  QFont font(QString::fromStdString(present.name), present.size);
  font.setBold(present.bold);
  font.setItalic(present.italic);
  bool accepted = false;
  const QFont chosen = QFontDialog::getFont(&accepted, font, front());
  if (!accepted) return std::nullopt;
  return platform::FontChoice{chosen.family().toStdString(), chosen.pointSize(), chosen.bold(),
                              chosen.italic()};
}

void SystemDialogs::message(const std::string& text) {
  QMessageBox::information(front(), product, shown_text(text));
}

}  // namespace lineweir
