#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "callerdata/entry_drafts.h"
#include "letters/letters.h"

namespace lineweir {

// The file in which a console's drafts, and what isn't logged yet, outlive it: CSV, UTF-8, a
// heading and then a record for each. Consoles that run in one folder have one each, see
// platform::ConsoleFile.
inline constexpr std::string_view draft_file_name = "Drafts.csv";

// Empty where there is no draft. Each needs the record of its call, which is the one that isn't
// logged where there is one.
std::string draft_file_text(const Letters& letters, const std::vector<EntryDraft>& drafts);

// The drafts of files, whose calls have all ended: nobody was there to see it. Their numbers are 0.
// What is no draft is passed over. A draft that several files hold is there once: the program was
// killed while it brought them together.
std::vector<EntryDraft> drafts_of_files(const Letters& letters,
                                        const std::vector<std::string>& texts);

}  // namespace lineweir
