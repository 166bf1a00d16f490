// A Qt window with one label and nothing else: what the console's start is measured against.

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <cstdio>

namespace {

class BareLabel : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    if (painted_) return;
    painted_ = true;
    QTimer::singleShot(0, this, [] {
      std::puts("painted");
      std::fflush(stdout);
    });
  }

 private:
  bool painted_ = false;
};

}  // namespace

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  BareLabel label(QStringLiteral("Lineweir"));
  label.resize(628, 484);
  label.show();
  return QApplication::exec();
}
