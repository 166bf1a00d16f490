#include "desktop/dialogs.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFontDialog>
#include <QFontInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>

#include "desktop/input_dialog.h"
#include "desktop/unread_file_icons.h"
#include "letters/path_text.h"

namespace lineweir {
namespace {

const QString product = QStringLiteral("Lineweir");

// So wide that dates and the names of styles are seen whole.
constexpr int file_dialog_letters = 110;
constexpr int font_dialog_letters = 90;

void widen(QDialog& dialog, int letters) {
  const int width = dialog.fontMetrics().averageCharWidth() * letters;
  dialog.resize(dialog.sizeHint().expandedTo({width, 0}));
}

// Fonts have no more here than a family, a size and a style: lines under and through the letters
// would come to nothing.
void hide_effects(QFontDialog& dialog) {
  for (QGroupBox* group : dialog.findChildren<QGroupBox*>()) {
    if (group->findChild<QCheckBox*>() != nullptr) group->hide();
  }
}

// A question or a message of the system, which shows its text as it stands.
QMessageBox::StandardButton answer_to(QWidget* window, QMessageBox::Icon icon, const QString& text,
                                      QMessageBox::StandardButtons buttons) {
  QMessageBox box(icon, product, text, buttons, window);
  box.setTextFormat(Qt::PlainText);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

// A family for every writing system has no sample of its own.
void show_sample(QFontDialog& dialog) {
  for (QGroupBox* group : dialog.findChildren<QGroupBox*>()) {
    auto* sample = group->findChild<QLineEdit*>();
    if (sample != nullptr && sample->text().isEmpty()) {
      sample->setText(QStringLiteral("3  Ready  0:04:12  Margaret"));
    }
  }
}

}  // namespace

QString qt_filter(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split(u'|');
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

QString SystemDialogs::shown(const std::string& text) const {
  return QString::fromStdString(letters_.to_utf8(text));
}

std::string SystemDialogs::text_of(const QString& shown) const {
  return letters_.from_utf8(shown.toStdString());
}

void SystemDialogs::ask(const std::function<void(QWidget* window)>& question) const {
  const QPointer<QWidget> asking = owner ? owner() : nullptr;
  question(asking);
  if (asking != nullptr && asking->isVisible()) asking->activateWindow();
}

std::optional<std::string> SystemDialogs::ask_file(const platform::FileQuestion& question) {
  const QString path = QFile::decodeName(file_name(letters_, question.default_path).c_str());
  std::optional<std::string> answer;
  ask([&](QWidget* window) {
    UnreadFileIcons icons;
    // The dialog looks at its folder from the first moment on, so it begins where no log is.
    const bool own_words = !question.shown_filter.empty();
    QFileDialog dialog(window,
                       shown(question.shown_title.empty() ? question.title : question.shown_title),
                       QDir::rootPath());
    widen(dialog, file_dialog_letters);
    dialog.setIconProvider(&icons);
    dialog.setDirectory(QDir::current());
    dialog.setNameFilters(
        qt_filter(own_words ? question.shown_filter : question.filter).split(QStringLiteral(";;")));
    const QStringList filters = dialog.nameFilters();
    if (!own_words && question.filter_index >= 1 && question.filter_index <= filters.size()) {
      dialog.selectNameFilter(filters[question.filter_index - 1]);
    }
    dialog.setAcceptMode(question.for_saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(question.for_saving || question.may_be_new ? QFileDialog::AnyFile
                                                                  : QFileDialog::ExistingFile);
    if (!path.isEmpty()) dialog.selectFile(path);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
    answer =
        path_text(letters_, QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString());
  });
  return answer;
}

std::optional<std::string> SystemDialogs::ask_input(const platform::InputQuestion& question) {
  std::optional<std::string> answer;
  ask([&](QWidget* window) {
    InputDialog dialog(window, shown(question.prompt), shown(question.default_text),
                       shown(question.unit));
    dialog.setWindowTitle(product);
    if (dialog.exec() == QDialog::Accepted) answer = text_of(dialog.text());
  });
  return answer;
}

bool SystemDialogs::ask_yes_no(const std::string& question) {
  bool yes = false;
  ask([&](QWidget* window) {
    yes = answer_to(window, QMessageBox::Question, shown(question),
                    QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
  });
  return yes;
}

std::optional<platform::FontChoice> SystemDialogs::ask_font(const platform::FontChoice& present) {
  QFont font(shown(present.name), present.size);
  font.setBold(present.bold);
  font.setItalic(present.italic);
  // The dialog looks for the style by its name, which differs from family to family.
  font.setStyleName(QFontInfo(font).styleName());
  std::optional<platform::FontChoice> answer;
  ask([&](QWidget* window) {
    QFontDialog dialog(font, window);
    dialog.setWindowTitle(QStringLiteral("Font"));
    hide_effects(dialog);
    show_sample(dialog);
    widen(dialog, font_dialog_letters);
    if (dialog.exec() != QDialog::Accepted) return;
    const QFont chosen = dialog.selectedFont();
    answer = platform::FontChoice{text_of(chosen.family()), chosen.pointSize(), chosen.bold(),
                                  chosen.italic()};
  });
  return answer;
}

void SystemDialogs::message(const std::string& text) {
  ask([&](QWidget* window) {
    answer_to(window, QMessageBox::Information, shown(text), QMessageBox::Ok);
  });
}

}  // namespace lineweir
