#pragma once

#include "elements/form.h"

namespace lineweir {

class VisibleRows;
struct ConsoleState;
struct DesignScale;

// The two backgrounds of the main form, the cover of the corner beside 18 rows, and the pictures
// on them: metal, or grey while GreyScreenOption is checked.
class ScreenFaces : private FormWatch {
 public:
  ScreenFaces(ConsoleState& state, VisibleRows& visible_rows);

  // The VisibleLines for which the holders' pictures were last loaded.
  int PreviousVisibleLines = 0;

  // Gives the four holders the files for the present row count, if it is another one.
  void load_pictures();

  // Hands the pictures of the chosen holders on to what shows them.
  void show_pictures();

  void lay_out(const DesignScale& scale);

  // Fits ScreenTop to the first row that is shown.
  void CheckTopSize();

  // Around a rebuild of the layout. The stretched images cover the picture boxes: they are hidden
  // while the boxes move, and shown again behind it.
  void SetPictureAutoOn();
  void SetPictureAutoOff();

 private:
  // A background that gets another size stretches its picture, and its elements are put in front of
  // it again a moment later.
  void changed(Element& element, PropertyId property) override;

  void show_covers(bool shown);

  ConsoleState& state_;
  VisibleRows& visible_rows_;
};

}  // namespace lineweir
