#pragma once

#include <QObject>

namespace lineweir {

// Says PRACTICE in front of the title of each window of the program, the system's own included.
class PracticeTitles final : public QObject {
 public:
  PracticeTitles();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace lineweir
