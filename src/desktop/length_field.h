#pragma once

#include <QObject>

class QLabel;
class QLineEdit;

namespace lineweir {

// Shows in a field for a length in twips, behind the number, how long that is.
class LengthField final : public QObject {
 public:
  // Belongs to the field.
  explicit LengthField(QLineEdit& field);

  // The room that the length has in the field at the right, in the field's letters.
  static int room(const QLineEdit& field);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show_length();
  void place();

  QLineEdit& field_;
  QLabel* length_;
};

}  // namespace lineweir
