#include "desktop/face_widgets.h"

#include <QFile>
#include <QPainter>

#include "desktop/form_canvas.h"
#include "desktop/painter_faces.h"
#include "elements/picture.h"

namespace lineweir {
namespace {

// Each face has a holder of its own for either picture.
std::string holder_of(const std::string& face_name, const Theme& theme) {
  return (&theme == &grey_theme ? "Grey" : "Black") + face_name;
}

QSize device_size(const FormCanvas& canvas) {
  return (QSizeF(canvas.size()) * canvas.device_scale()).toSize();
}

QString file_in(const QStringList& folders, const QString& file) {
  QString path;
  for (const QString& folder : folders) {
    path = folder + QLatin1Char('/') + file;
    if (QFile::exists(path)) break;
  }
  return path;
}

}  // namespace

FaceWidget::FaceWidget(FormCanvas& canvas, Picture& picture, const ElementLook& look)
    : ElementWidget(canvas, picture, look) {}

void FaceWidget::paint(QPainter& painter, const QRect& face) {
  const Look look = element_look().look;
  if (look == Look::Cover) {
    // What it covers looks as if nothing had ever stood there.
    const QRect form(QPoint(0, 0), device_size(canvas()));
    painter.translate(-device_place().topLeft());
    paint_face(painter, device_place(), form, brushwork());
    return;
  }
  if (const QPixmap& picture = background(face.size()); !picture.isNull()) {
    painter.drawPixmap(face.topLeft(), picture);
  } else if (look == Look::Panel) {
    paint_plain_panel(painter, face, brushwork());
  }
  // Where the upper part has no picture the canvas shows, which is plain all over the form.
}

const QPixmap& FaceWidget::background(QSize size) {
  static const QPixmap none;
  const std::string image_name = control()->name() + "Image";
  const auto* image = static_cast<const Picture*>(canvas().control_named(image_name));
  if (image == nullptr || !image->visible || image->picture.get().empty()) return none;
  // The image takes its picture from its holder with the next rebuild; the user sees it at once.
  const auto* holder = static_cast<const Picture*>(
      canvas().control_named(holder_of(control()->name(), canvas().theme())));
  if (holder == nullptr || holder->picture.get().empty()) return none;
  const BackgroundFolder& folder = canvas().background_folder();
  const QString file = QString::fromStdString(holder->picture);
  const QString failure = background_.load(file_in(folder.paths, file));
  if (!failure.isEmpty() && folder.on_failure) folder.on_failure(file, failure);
  return background_.stretched(size);
}

bool FaceImageWidget::drawn_from(PropertyId property) const {
  return property == PropertyId::Visible || ElementWidget::drawn_from(property);
}

void FaceImageWidget::element_changed() {
  for (const char* face : {"ScreenTop", "ScreenBottom"}) {
    const Control* control = canvas().control_named(face);
    if (control == nullptr) continue;
    if (ElementWidget* widget = canvas().widget_of(*control)) widget->update();
  }
}

}  // namespace lineweir
