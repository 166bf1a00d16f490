#include "desktop/picture_widgets.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/form_canvas.h"
#include "desktop/key_look.h"
#include "desktop/painted_once.h"
#include "desktop/painter_icons.h"
#include "desktop/painter_keys.h"
#include "desktop/painter_strips.h"
#include "desktop/placement.h"
#include "desktop/strip_look.h"
#include "desktop/twips.h"
#include "elements/picture.h"
#include "forms/row_elements.h"

namespace lineweir {
namespace {

// The part of a row button's shorter side that its icon fills.
constexpr double icon_part = 0.58;
// How much of an icon is seen while there is no link.
constexpr double dimmed_opacity = 0.4;

const Picture& picture_of(const ElementWidget& widget) {
  return static_cast<const Picture&>(*widget.control());
}

}  // namespace

PictureWidget::PictureWidget(FormCanvas& canvas, Picture& picture, const ElementLook& look)
    : ElementWidget(canvas, picture, look) {}

QRect PictureWidget::device_place() const {
  if (control() == nullptr || element_look().look != Look::Mark) {
    return ElementWidget::device_place();
  }
  const int row = control()->index() / column_count;
  return pixel_rect(clipped_to_strip(canvas(), row, place_on_form(*control())),
                    canvas().device_scale());
}

void PictureWidget::paint(QPainter& painter, const QRect& face) {
  const Brushwork work{canvas().row_theme(), brushwork().unit};
  const int index = control()->index();
  if (element_look().look == Look::Strip) {
    const QString key = QStringLiteral("strip %1 %2 %3")
                            .arg(reinterpret_cast<quintptr>(&work.theme))
                            .arg(static_cast<int>(canvas().row_look(index).state))
                            .arg(work.unit);
    painter.drawPixmap(face.topLeft(), painted_once(key, face.size(), [&](QPainter& strip) {
                         paint_strip(strip, QRect(QPoint(0, 0), face.size()),
                                     strip_colors(canvas(), index), work);
                       }));
  } else if (static_cast<std::size_t>(index) % column_count != canvas().last_column()) {
    // Behind the last column there is nothing to part it from.
    paint_mark(painter, face, strip_colors(canvas(), index / column_count), work);
  }
}

void PictureWidget::row_changed(const RowLook& before, const RowLook& now) {
  if (before.state != now.state) update();
}

KeyIconWidget::KeyIconWidget(FormCanvas& canvas, Picture& icon, const ElementLook& look)
    : ElementWidget(canvas, icon, look) {}

const Picture* KeyIconWidget::button() const {
  const Control* icon = control();
  const std::string_view name = icon->name() == "CIcon1" ? "OnHybrid1" : "OnHybrid2";
  return static_cast<const Picture*>(canvas().control_named(name, icon->index()));
}

bool KeyIconWidget::shown_on_screen() const {
  if (ElementWidget::shown_on_screen() || control() == nullptr) return control() != nullptr;
  const bool stands =
      !canvas().no_link().isEmpty() && canvas().icon_blinks && canvas().icon_blinks(*control());
  return (stands || blink_leaves_ghost()) && button() != nullptr && button()->visible;
}

bool KeyIconWidget::blink_leaves_ghost() const {
  return canvas().row_look(control()->index()).letter_state == RowState::Ringing;
}

void KeyIconWidget::row_changed(const RowLook& before, const RowLook& now) {
  if (before.letter_state == now.letter_state && before.state == now.state &&
      before.dark == now.dark) {
    return;
  }
  setVisible(shown_on_screen());
  update();
}

void UndrawnWidget::element_changed() {
  ElementWidget::element_changed();
  if (parentWidget() != &canvas()) parentWidget()->update();
}

QRect KeyIconWidget::device_place() const {
  if (control() == nullptr || button() == nullptr) return ElementWidget::device_place();
  const ElementWidget* key = canvas().widget_of(*button());
  return key->device_place();
}

void KeyIconWidget::paint(QPainter& painter, const QRect& face) {
  if (button() == nullptr) return;
  if (!canvas().no_link().isEmpty()) painter.setOpacity(dimmed_opacity);
  QRect key = key_face(face, brushwork());
  if (key_state(button()->picture) == KeyState::Down) {
    key.translate(pressed_step(brushwork()), pressed_step(brushwork()));
  }
  // The same parity as the key's face, so that the icon stands in its very middle.
  const int rough = static_cast<int>(std::min(key.width(), key.height()) * icon_part);
  const int side = rough - (key.height() - rough) % 2;
  const int wide = side + (key.width() - side) % 2;
  const QRect place(key.left() + (key.width() - wide) / 2, key.top() + (key.height() - side) / 2,
                    wide, side);
  const RowLook& row = canvas().row_look(control()->index());
  const std::string& icon = picture_of(*this).picture;
  const StripSide strip = button()->name() == "OnHybrid1" ? StripSide::Right : StripSide::Left;
  const Brushwork work = brushwork();
  const QString drawing = QStringLiteral("icon %1 %2 %3 %4 %5 %6 %7 %8 %9")
                              .arg(reinterpret_cast<quintptr>(&work.theme))
                              .arg(QString::fromStdString(icon))
                              .arg(static_cast<int>(row.state))
                              .arg(static_cast<int>(row.letter_state))
                              .arg(row.dark ? 1 : 0)
                              .arg(static_cast<int>(strip))
                              .arg(place.left())
                              .arg(place.top())
                              .arg(work.unit);
  painter.drawPixmap(face.topLeft(), painted_once(drawing, face.size(), [&](QPainter& once) {
                       if (paint_row_icon(once, place, icon, row, strip, work)) return;
                       if (const auto paint = painter_of(icon)) paint(once, place, work);
                     }));
}

}  // namespace lineweir
