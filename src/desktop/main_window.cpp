#include "desktop/main_window.h"

#include <QEvent>
#include <QMenuBar>
#include <algorithm>

namespace lineweir {

MainWindow::MainWindow(Form& form)
    : bar_(new QMenuBar(this)), canvas_(new FormCanvas(form, this)), menus_(form, *bar_) {
  bar_->setObjectName(QStringLiteral("MenuBar"));
  canvas_->setObjectName(QStringLiteral("FormCanvas"));
  // Without this Qt would give the keyboard to the first key of all.
  canvas_->setFocus();
  setAttribute(Qt::WA_NoSystemBackground);
}

void MainWindow::set_band(QWidget* band) {
  delete band_;
  band_ = band;
  if (band == nullptr) return;
  band->setParent(this);
  band->installEventFilter(this);
  band->show();
}

void MainWindow::fit_content(QSize content, QSize least) {
  bar_->setVisible(menus_.shown());
  const QSize given = content.expandedTo(least);
  const QSize least_head(0, head_height_above(least));
  const QSize head(0, head_height_above(given));
  // The window may stand between two sizes now; the form hears of the last one only.
  fitting_ = true;
  setMinimumSize(least + least_head);
  resize(given + head);
  fitting_ = false;
  lay_out();
  if (on_content_resized && canvas_->size() != content) on_content_resized(canvas_->size());
}

bool MainWindow::fit_menu_letters() {
  return menu_letters && menus_.set_letters(menu_letters(size()));
}

int MainWindow::bar_height(QSize window) {
  if (!menus_.shown()) return 0;
  if (menu_letters) menus_.set_letters(menu_letters(window));
  return bar_->heightForWidth(window.width());
}

int MainWindow::head_height(QSize window) {
  const int band = band_ == nullptr ? 0 : band_->sizeHint().height();
  return bar_height(window) + band;
}

int MainWindow::head_height_above(QSize content) {
  // A higher window never has a lower bar, so each step goes up, and the steps end.
  int height = 0;
  for (int next = head_height(content); next > height;) {
    height = next;
    next = head_height(content + QSize(0, height));
  }
  return height;
}

void MainWindow::fit_bar() {
  const QRect before = canvas_->geometry();
  bar_->setVisible(menus_.shown());
  lay_out();
  if (on_content_resized && canvas_->geometry() != before) on_content_resized(canvas_->size());
}

void MainWindow::lay_out() {
  const int bar = bar_height(size());
  const int head = head_height(size());
  bar_->setGeometry(0, 0, width(), bar);
  if (band_ != nullptr) band_->setGeometry(0, bar, width(), head - bar);
  canvas_->setGeometry(0, head, width(), std::max(0, height() - head));
}

void MainWindow::resizeEvent(QResizeEvent*) {
  if (fitting_) return;
  lay_out();
  if (on_content_resized) on_content_resized(canvas_->size());
}

bool MainWindow::event(QEvent* event) {
  const bool result = QWidget::event(event);
  // There is no event of its own for a new scale; each of these comes with one.
  if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::Show ||
      event->type() == QEvent::Resize) {
    if (scale_ != devicePixelRatioF()) {
      scale_ = devicePixelRatioF();
      if (on_scale_changed) on_scale_changed();
    }
  }
  return result;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  // Its letters have another size.
  if (watched == band_ && event->type() == QEvent::LayoutRequest && on_band_changed &&
      band_->height() != band_->sizeHint().height()) {
    on_band_changed();
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace lineweir
