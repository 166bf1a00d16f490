#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace lineweir {

// Asks for a text or for a number of something, whose unit then stands behind the field.
class InputDialog final : public QDialog {
 public:
  InputDialog(QWidget* owner, const QString& prompt, const QString& default_text,
              const QString& unit);

  QString text() const;

 private:
  // Seconds of more than a minute are told in minutes too.
  void tell_duration(const QString& typed);

  QLineEdit* field_;
  QLabel* duration_ = nullptr;
};

}  // namespace lineweir
