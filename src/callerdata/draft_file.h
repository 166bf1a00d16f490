#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "callerdata/entry_drafts.h"
#include "letters/letters.h"

namespace lineweir {

// The file in which drafts outlive the program: CSV, UTF-8, a heading and then a record for each.
inline constexpr std::string_view draft_file_name = "Drafts.csv";

// Empty where there is no draft. Each needs the record of its call.
std::string draft_file_text(const Letters& letters, const std::vector<EntryDraft>& drafts);

// The drafts of a file, whose calls have all ended: nobody was there to see it. Their numbers are
// 0. What is no draft is passed over.
std::vector<EntryDraft> drafts_of_file(const Letters& letters, std::string_view text);

}  // namespace lineweir
