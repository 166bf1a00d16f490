#pragma once

class QWidget;

namespace lineweir {

// A widget for an element of an array of which the drawing holds element 0 alone: another one like
// that, `index` rows below it where it stands in a grid. The Tab key comes to it from what stands
// in front of it there, else from the array's element before it. Null for a kind that no array
// repeats.
QWidget* repeat_widget(QWidget& model, QWidget* former, int index);

}  // namespace lineweir
