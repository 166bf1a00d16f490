#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace lineweir {

// Sorts any number of items in slices, so that whatever else there is to do gets its turn.
template <class Item>
class SlicedSort {
 public:
  void start(std::vector<Item> items) {
    items_ = std::move(items);
    merged_.clear();
    sorted_runs_ = 0;
    run_ = first_run;
    left_ = 0;
  }

  // Goes on by about so many items; true once all are in order.
  template <class Less>
  bool work(std::size_t budget, Less less) {
    while (budget > 0) {
      if (sorted_runs_ < items_.size()) {
        budget = sort_run(budget, less);
      } else if (run_ >= items_.size()) {
        return true;
      } else {
        budget = merge(budget, less);
      }
    }
    return false;
  }

  std::vector<Item>& items() { return items_; }

 private:
  // Items that are sorted at once; runs of them are merged then.
  static constexpr std::size_t first_run = 512;
  // What an item costs in a run that is sorted at once, against one that is merged.
  static constexpr std::size_t sorting_cost = 4;

  template <class Less>
  std::size_t sort_run(std::size_t budget, Less less) {
    const auto begin = items_.begin() + static_cast<std::ptrdiff_t>(sorted_runs_);
    const std::size_t size = std::min(first_run, items_.size() - sorted_runs_);
    std::sort(begin, begin + static_cast<std::ptrdiff_t>(size), less);
    sorted_runs_ += size;
    return budget - std::min(budget, size * sorting_cost);
  }

  // Merges the two runs behind `left_`; both places are the first that isn't merged yet.
  template <class Less>
  std::size_t merge(std::size_t budget, Less less) {
    const std::size_t middle = std::min(left_ + run_, items_.size());
    const std::size_t end = std::min(middle + run_, items_.size());
    if (merged_.empty()) merged_.reserve(items_.size());
    if (merged_.size() == left_) {
      first_ = left_;
      second_ = middle;
    }
    for (; budget > 0 && merged_.size() < end; --budget) {
      const bool from_second =
          first_ == middle || (second_ < end && less(items_[second_], items_[first_]));
      merged_.push_back(std::move(items_[from_second ? second_++ : first_++]));
    }
    if (merged_.size() < end) return budget;
    left_ = end;
    if (left_ == items_.size()) {
      items_.swap(merged_);
      merged_.clear();
      left_ = 0;
      run_ *= 2;
    }
    return budget;
  }

  std::vector<Item> items_;
  std::vector<Item> merged_;
  std::size_t sorted_runs_ = 0;
  std::size_t run_ = first_run;
  std::size_t left_ = 0;
  std::size_t first_ = 0;
  std::size_t second_ = 0;
};

}  // namespace lineweir
