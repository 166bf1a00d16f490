#pragma once

#include <string>
#include <string_view>

#include "letters/letters.h"

namespace lineweir::server {

inline constexpr std::size_t longest_user_name = 20;
inline constexpr std::size_t longest_password = 15;

// Why nobody could log in with that, as a sentence; empty where one can. All texts are UTF-8, the
// letters are the consoles'.
std::string why_no_user_name(std::string_view name, const Letters& letters);
std::string why_no_password(std::string_view password, const Letters& letters);

// A text of a request as an answer names it: in quotation marks, and its beginning where it is
// long.
std::string in_quotes(std::string_view text);

// Why the text can't be shown at a console; empty where it can. `what` begins the sentence, such as
// "The message".
std::string why_not_shown(std::string_view text, const std::string& what, std::size_t longest);

}  // namespace lineweir::server
