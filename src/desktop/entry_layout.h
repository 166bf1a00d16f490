#pragma once

#include <QString>
#include <vector>

class QWidget;

namespace lineweir {

class CallerDataForm;

// Keeps the window in which a caller's data are typed laid out for its form: the fields in the
// order in which they are gone through, room for what the log knows of the caller, and for the
// notice, so that nothing moves when they fill.
class EntryLayout {
 public:
  explicit EntryLayout(const CallerDataForm& form) : form_(form) {}

  void arrange(QWidget& window);

 private:
  void put_number_in_place(QWidget& window) const;
  void lead_tab_through(QWidget& window);
  void fit_comments(QWidget& window) const;
  void fit_memory(QWidget& window) const;
  void fit_flag(QWidget& window) const;
  void fit_notice(QWidget& window) const;

  const CallerDataForm& form_;
  // The fields through which Tab leads now.
  std::vector<int> order_;
  // What stands in place of a history where the log alone may know one.
  mutable QString log_hint_;
};

}  // namespace lineweir
