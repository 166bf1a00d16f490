#pragma once

#include "desktop/background_picture.h"
#include "desktop/element_widget.h"

namespace lineweir {

class Picture;

// The form's upper part, the panel, or the cover of an empty corner. The first two show the picture
// that the face in force has for them, stretched over them, or a plain face where there is none.
class FaceWidget final : public ElementWidget {
 public:
  FaceWidget(FormCanvas& canvas, Picture& picture, const ElementLook& look);

 protected:
  void paint(QPainter& painter, const QRect& face) override;

 private:
  // Null where no picture is shown.
  const QPixmap& background(QSize size);

  BackgroundPicture background_;
};

// A face's image, or a holder of its pictures: the faces are drawn from it.
class FaceImageWidget final : public ElementWidget {
 public:
  using ElementWidget::ElementWidget;

  bool shown_on_screen() const override { return false; }
  bool drawn_from(PropertyId property) const override;
  void element_changed() override;

 protected:
  void paint(QPainter&, const QRect&) override {}
};

}  // namespace lineweir
