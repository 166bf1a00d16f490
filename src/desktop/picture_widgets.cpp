#include "desktop/picture_widgets.h"

#include <QPainter>
#include <algorithm>

#include "desktop/form_canvas.h"
#include "desktop/key_look.h"
#include "desktop/painter_keys.h"
#include "desktop/placement.h"
#include "desktop/strip_look.h"
#include "desktop/twips.h"
#include "elements/picture.h"
#include "forms/row_elements.h"

namespace lineweir {
namespace {

// The part of a row button's shorter side that its icon fills.
constexpr double icon_part = 0.54;
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
  if (const auto paint = painter_of(picture_of(*this).picture)) paint(painter, face, work);
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
  return stands && button() != nullptr && button()->visible;
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
  const auto paint = painter_of(picture_of(*this).picture);
  if (paint == nullptr || button() == nullptr) return;
  if (!canvas().no_link().isEmpty()) painter.setOpacity(dimmed_opacity);
  QRect key = key_face(face, brushwork());
  if (key_state(button()->picture) == KeyState::Down) {
    key.translate(pressed_step(brushwork()), pressed_step(brushwork()));
  }
  // The same parity as the key's face, so that the icon stands in its very middle.
  const int rough = static_cast<int>(std::min(key.width(), key.height()) * icon_part);
  const int side = rough - (key.height() - rough) % 2;
  const int wide = side + (key.width() - side) % 2;
  paint(painter,
        QRect(key.left() + (key.width() - wide) / 2, key.top() + (key.height() - side) / 2, wide,
              side),
        brushwork());
}

}  // namespace lineweir
