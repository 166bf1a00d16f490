#include "desktop/input_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "desktop/units_in_words.h"

namespace lineweir {
namespace {

constexpr int widest_number = 8;
constexpr int input_field_edges = 16;
constexpr int letters_of_prompt_line = 44;

const QString seconds_unit = QStringLiteral("seconds");

}  // namespace

InputDialog::InputDialog(QWidget* owner, const QString& prompt, const QString& default_text,
                         const QString& unit)
    : QDialog(owner), field_(new QLineEdit(default_text)) {
  auto* all = new QVBoxLayout(this);
  auto* question = new QLabel(prompt);
  question->setTextFormat(Qt::PlainText);
  question->setWordWrap(true);
  question->setMinimumWidth(fontMetrics().averageCharWidth() * letters_of_prompt_line);
  question->setBuddy(field_);
  all->addWidget(question);

  auto* answer = new QHBoxLayout;
  answer->addWidget(field_);
  if (!unit.isEmpty()) {
    field_->setFixedWidth(fontMetrics().horizontalAdvance(u'0') * widest_number +
                          input_field_edges);
    answer->addWidget(new QLabel(unit));
    answer->addStretch();
  }
  all->addLayout(answer);
  field_->setAccessibleName(prompt);
  field_->setAccessibleDescription(unit);
  field_->selectAll();

  if (unit == seconds_unit) {
    duration_ = new QLabel;
    all->addWidget(duration_);
    connect(field_, &QLineEdit::textChanged, this, &InputDialog::tell_duration);
    tell_duration(default_text);
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  all->addWidget(buttons);
}

QString InputDialog::text() const { return field_->text(); }

void InputDialog::tell_duration(const QString& typed) {
  constexpr int minute = 60;
  bool number = false;
  const int seconds = typed.trimmed().toInt(&number);
  const bool long_enough = number && seconds >= minute;
  duration_->setText(long_enough ? duration_in_words(seconds) : QString());
  field_->setAccessibleDescription(long_enough ? duration_->text() : seconds_unit);
}

}  // namespace lineweir
