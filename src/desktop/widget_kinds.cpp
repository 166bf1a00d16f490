#include "desktop/widget_kinds.h"

#include "desktop/clock_widget.h"
#include "desktop/digits_widget.h"
#include "desktop/face_widgets.h"
#include "desktop/form_canvas.h"
#include "desktop/key_caption_widget.h"
#include "desktop/key_widget.h"
#include "desktop/label_widget.h"
#include "desktop/lamp_widget.h"
#include "desktop/picture_widgets.h"
#include "desktop/text_box_widget.h"
#include "elements/label.h"
#include "elements/line.h"
#include "elements/picture.h"
#include "elements/text_box.h"

namespace lineweir {

ElementWidget* make_element_widget(FormCanvas& canvas, Control& control) {
  const ElementLook& look = look_of(control);
  switch (look.look) {
    case Look::Heading:
    case Look::PanelText:
    case Look::PanelWarning:
    case Look::PanelBanner:
    case Look::CallerNote:
    case Look::RowText:
    case Look::RowStatus:
    case Look::RowTime:
    case Look::ClockDigits:
    case Look::Countdown:
    case Look::ClockText:
      return new LabelWidget(canvas, static_cast<Label&>(control), look);
    case Look::KeyCaption:
    case Look::DropCaption:
    case Look::HoldCaption:
      return new KeyCaptionWidget(canvas, static_cast<Label&>(control), look);
    case Look::RowKey:
    case Look::PanelKey:
    case Look::NextKey:
      return new KeyWidget(canvas, static_cast<Picture&>(control), look);
    case Look::KeyIcon:
      return new KeyIconWidget(canvas, static_cast<Picture&>(control), look);
    case Look::Face:
    case Look::Panel:
    case Look::Cover:
      return new FaceWidget(canvas, static_cast<Picture&>(control), look);
    case Look::FaceImage:
      return new FaceImageWidget(canvas, control, look);
    case Look::Clock:
    case Look::RedClock:
      return new ClockWidget(canvas, static_cast<Picture&>(control), look);
    case Look::LargeDigits:
    case Look::LargeText:
      return new DigitsWidget(canvas, static_cast<TextBox&>(control), look);
    case Look::Lamp:
      return new LampWidget(canvas, static_cast<Shape&>(control), look);
    case Look::Message:
    case Look::Entry:
      return new TextBoxWidget(canvas, static_cast<TextBox&>(control), look);
    case Look::Strip:
    case Look::Mark:
      return new PictureWidget(canvas, static_cast<Picture&>(control), look);
    case Look::Nothing:
      break;
  }
  return new UndrawnWidget(canvas, control, look);
}

}  // namespace lineweir
