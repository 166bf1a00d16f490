#include "desktop/length_field.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>

#include "desktop/units_in_words.h"

namespace lineweir {
namespace {

constexpr int right_edge = 6;

}  // namespace

LengthField::LengthField(QLineEdit& field)
    : QObject(&field), field_(field), length_(new QLabel(&field)) {
  length_->setAttribute(Qt::WA_TransparentForMouseEvents);
  length_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  // What isn't typed steps back behind what is.
  length_->setForegroundRole(QPalette::PlaceholderText);
  field.installEventFilter(this);
  connect(&field, &QLineEdit::textChanged, this, &LengthField::show_length);
  show_length();
  place();
}

int LengthField::room(const QLineEdit& field) {
  return field.fontMetrics().horizontalAdvance(QStringLiteral("000 mm")) + right_edge;
}

bool LengthField::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange) place();
  return false;
}

void LengthField::show_length() {
  bool number = false;
  const int twips = field_.text().trimmed().toInt(&number);
  const QString length = number && twips > 0 ? millimetres_of(twips) : QString();
  length_->setText(length);
  field_.setAccessibleDescription(length);
}

void LengthField::place() {
  const int width = room(field_);
  field_.setTextMargins(0, 0, width, 0);
  length_->setGeometry(field_.width() - width, 0, width - right_edge, field_.height());
}

}  // namespace lineweir
