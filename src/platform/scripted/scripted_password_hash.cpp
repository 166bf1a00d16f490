#include "platform/scripted/scripted_password_hash.h"

#include <utility>

namespace lineweir::platform {
namespace {

constexpr std::string_view hash_begin = "$scripted$";

// Any bytes as printable characters.
std::string printable(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    text += digits[static_cast<unsigned char>(byte) >> 4U];
    text += digits[static_cast<unsigned char>(byte) & 0xFU];
  }
  return text;
}

bool fits(std::string_view hash, std::string_view password) {
  if (!hash.starts_with(hash_begin)) return false;
  hash.remove_prefix(hash_begin.size());
  const auto salt_end = hash.find('$');
  return salt_end != std::string_view::npos &&
         hash.substr(salt_end + 1) == printable(password) + '$';
}

}  // namespace

void ScriptedPasswordHash::hash(std::string password, std::function<void(std::string hash)> done) {
  std::string hash =
      std::string(hash_begin) + std::to_string(++salt_) + '$' + printable(password) + '$';
  add([hash = std::move(hash), done = std::move(done)] { done(hash); });
}

void ScriptedPasswordHash::verify(std::string hash, std::string password,
                                  std::function<void(bool fits)> done) {
  add([fit = fits(hash, password), done = std::move(done)] { done(fit); });
}

void ScriptedPasswordHash::forget_what_waits() {
  if (scheduled_) loop_.cancel(next_);
  scheduled_ = false;
  works_.clear();
}

void ScriptedPasswordHash::add(std::function<void()> work) {
  works_.push_back(std::move(work));
  schedule_next();
}

void ScriptedPasswordHash::schedule_next() {
  if (scheduled_ || works_.empty()) return;
  scheduled_ = true;
  next_ = loop_.schedule(each_takes_, [this] {
    scheduled_ = false;
    const auto work = std::move(works_.front());
    works_.pop_front();
    schedule_next();
    work();
  });
}

}  // namespace lineweir::platform
