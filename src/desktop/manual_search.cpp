#include "desktop/manual_search.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <algorithm>

#include "desktop/manual_pages.h"

namespace lineweir {
namespace {

// So many words of a message are enough to know it by.
constexpr int least_words = 3;

constexpr int other_hits_alpha = 90;

}  // namespace

void ManualSearch::look_for(const QString& words) {
  hits_.clear();
  place_ = -1;
  const QString sought = words.simplified();
  length_ = static_cast<int>(sought.size());
  // Its places are those of the document.
  const QString text = pages_.document()->toRawText();
  qsizetype found = sought.isEmpty() ? -1 : text.indexOf(sought, 0, Qt::CaseInsensitive);
  while (found >= 0) {
    hits_.push_back(static_cast<int>(found));
    found = text.indexOf(sought, found + length_, Qt::CaseInsensitive);
  }
  if (hits_.empty()) return mark();
  const int reader = pages_.textCursor().selectionStart();
  const auto behind = std::ranges::lower_bound(hits_, reader);
  go_to(behind == hits_.end() ? 0 : static_cast<int>(behind - hits_.begin()));
}

void ManualSearch::next() {
  if (!hits_.empty()) go_to((place_ + 1) % hits());
}

void ManualSearch::former() {
  if (!hits_.empty()) go_to((std::max(place_, 0) + hits() - 1) % hits());
}

void ManualSearch::go_to(int place) {
  place_ = place;
  pages_.show_found(pages_.piece(hits_[static_cast<std::size_t>(place)], length_));
  mark();
}

void ManualSearch::mark() {
  const auto [first, last] = pages_.positions_in_sight();
  QList<QTextEdit::ExtraSelection> shown;
  for (auto hit = std::ranges::lower_bound(hits_, first); hit != hits_.end() && *hit <= last;
       ++hit) {
    QTextEdit::ExtraSelection selection;
    selection.cursor = pages_.piece(*hit, length_);
    // The one that was gone to is selected, and stands out among the others.
    QColor ground = pages_.palette().color(QPalette::Highlight);
    ground.setAlpha(other_hits_alpha);
    selection.format.setBackground(ground);
    shown.push_back(selection);
  }
  pages_.setExtraSelections(shown);
}

bool ManualSearch::go_to_message(const QString& text) {
  const QStringList words = text.simplified().split(u' ', Qt::SkipEmptyParts);
  const auto count = words.size();
  const auto lead_to = [this](const QStringList& piece) {
    const QTextCursor found = pages_.document()->find(piece.join(u' '));
    if (found.isNull()) return false;
    pages_.show_found(found);
    return true;
  };
  // The longest piece of its beginning or its end that the manual has.
  for (auto kept = count; kept >= std::min<qsizetype>(count, least_words) && kept > 0; --kept) {
    if (lead_to(words.first(kept)) || lead_to(words.last(kept))) return true;
  }
  return false;
}

}  // namespace lineweir
