#pragma once

namespace lineweir {

class Control;
class ElementWidget;
class FormCanvas;

// A new widget of the kind that the control's look asks for. The canvas owns it.
ElementWidget* make_element_widget(FormCanvas& canvas, Control& control);

}  // namespace lineweir
