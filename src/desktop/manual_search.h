#pragma once

#include <QString>
#include <vector>

namespace lineweir {

class ManualPages;

// Finds words in the manual, shows all places that have them and leads from one to the next.
class ManualSearch {
 public:
  explicit ManualSearch(ManualPages& pages) : pages_(pages) {}

  // The places of these words from now on. The one at or behind the reader's place is gone to.
  void look_for(const QString& words);
  void next();
  void former();

  // Marks the places that are in sight now.
  void mark();

  int hits() const { return static_cast<int>(hits_.size()); }
  // The place that was gone to last, from 1; 0 for none.
  int place() const { return place_ + 1; }

  // Goes to the message of the program, of which the manual leaves names and numbers out. False
  // where it tells nothing of it.
  bool go_to_message(const QString& text);

 private:
  void go_to(int place);

  ManualPages& pages_;
  // Where in the text they begin, in order.
  std::vector<int> hits_;
  int length_ = 0;
  int place_ = -1;
};

}  // namespace lineweir
