#pragma once

#include <set>

#include "forms/entry_fields.h"

namespace lineweir {

// The user's work on a line's data: what the line had when the fields were last filled, and what
// stands in them now. A field in which these differ has been touched.
struct EntryWork {
  EntryTexts had;
  EntryTexts typed;

  bool touched(std::size_t field) const { return typed[field] != had[field]; }
  bool any_touched() const { return typed != had; }

  // The line has these texts now: fields that weren't touched follow them, the others stay. Returns
  // those of the others, counted from 1, in which the line has changed to something else.
  std::set<int> follow(const EntryTexts& has);

  friend bool operator==(const EntryWork&, const EntryWork&) = default;
};

// What the form shows of a line: what the record holds or, where that is empty, what the row shows.
EntryTexts shown_texts(const EntryTexts& record, const EntryTexts& row);

}  // namespace lineweir
