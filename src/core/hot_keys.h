#pragma once

namespace lineweir {

struct Console;

// The hot keys of the main form. They are read before the form's controls see them.
class HotKeys {
 public:
  explicit HotKeys(Console& console);

  // Key codes are those of a keyboard's letters and digits in capitals, 112 for F1 and so on.
  // `shift` is 0 plain, 1 shift, 2 control, 3 control and shift, 4 alt, 5 alt and shift. A key that
  // has run is swallowed.
  void Form_KeyDown(int& key_code, int shift);

 private:
  Console& console_;
};

}  // namespace lineweir
