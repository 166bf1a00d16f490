#pragma once

namespace lineweir {

class Control;
class ElementWidget;
class FormCanvas;

// Where Tab leads from the element that has the focus or had it last, or null from none: through
// the rows as they are read, from above and each from the left, then through the panel's keys and
// boxes, and round. What can't be used now is passed over. Null where nothing can have the focus.
ElementWidget* tab_stop_beside(const FormCanvas& canvas, const Control* from, bool forward);

}  // namespace lineweir
