#include "desktop/repeated_widget.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace lineweir {
namespace {

QWidget* another(QWidget& model) {
  QWidget* parent = model.parentWidget();
  if (const auto* drawn = qobject_cast<const QLabel*>(&model)) {
    auto* label = new QLabel(parent);
    label->setAlignment(drawn->alignment());
    label->setWordWrap(drawn->wordWrap());
    label->setTextFormat(drawn->textFormat());
    label->setTextInteractionFlags(drawn->textInteractionFlags());
    return label;
  }
  if (qobject_cast<const QCheckBox*>(&model) != nullptr) return new QCheckBox(parent);
  if (qobject_cast<const QLineEdit*>(&model) != nullptr) return new QLineEdit(parent);
  return nullptr;
}

// The grid in which a widget stands; null where it stands in none.
QGridLayout* grid_of(const QWidget& widget) {
  for (auto* grid : widget.parentWidget()->findChildren<QGridLayout*>()) {
    if (grid->indexOf(&widget) >= 0) return grid;
  }
  return nullptr;
}

// The last widget in front of a cell, in its row or in the one above.
QWidget* in_front_of(const QGridLayout& grid, int row, int column) {
  for (const int line : {row, row - 1}) {
    const int end = line == row ? column : grid.columnCount();
    for (int place = end - 1; place >= 0; --place) {
      const QLayoutItem* item = grid.itemAtPosition(line, place);
      if (item != nullptr && item->widget() != nullptr) return item->widget();
    }
  }
  return nullptr;
}

}  // namespace

QWidget* repeat_widget(QWidget& model, QWidget* former, int index) {
  QWidget* widget = another(model);
  if (widget == nullptr) return nullptr;
  for (const QByteArray& name : model.dynamicPropertyNames()) {
    widget->setProperty(name, model.property(name));
  }
  QWidget* before = former;
  if (QGridLayout* grid = grid_of(model)) {
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(grid->indexOf(&model), &row, &column, &rows, &columns);
    grid->addWidget(widget, row + index, column, rows, columns);
    before = in_front_of(*grid, row + index, column);
  }
  if (before != nullptr) QWidget::setTabOrder(before, widget);
  return widget;
}

}  // namespace lineweir
