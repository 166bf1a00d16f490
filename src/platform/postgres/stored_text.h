#pragma once

#include <string>
#include <string_view>

namespace lineweir::platform {

// PostgreSQL's texts hold no zero byte and nothing that isn't UTF-8; the store's may, since
// somebody may have written into them whatever he liked, and they have to come back as they were.
// So each byte that can't stand there becomes one code point of the last 256, U+10FF00 and the
// byte, which are nobody's letters. Where a text holds one of these itself its bytes are taken like
// that too: each text has one form, and two texts never have the same.
std::string to_stored_text(std::string_view text);
std::string from_stored_text(std::string_view stored);

}  // namespace lineweir::platform
