#pragma once

#include <QIcon>
#include <QString>
#include <string_view>

class QWidget;

namespace lineweir {

// The picture of a button, drawn for the widget's size, scale and theme; null where the name has
// no drawing.
QIcon button_picture(std::string_view picture, const QWidget& widget);

// What a button's picture tells, for a screen reader; empty where it tells nothing.
QString spoken_picture(std::string_view picture);

}  // namespace lineweir
