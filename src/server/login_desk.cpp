#include "server/login_desk.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "server/admin_names.h"
#include "server/caller_text.h"

namespace lineweir::server {
struct LoginDesk::Question {
  std::string user;
  std::string password;
  std::string address;
  platform::Milliseconds asked;
  Answer answer;
};

LoginDesk::LoginDesk(const Context& context, Accounts& accounts, platform::PasswordHash& passwords)
    : context_(context), accounts_(accounts), passwords_(passwords) {}

LoginDesk::~LoginDesk() = default;

void LoginDesk::check(const Login& login, const std::string& address, Answer answer) {
  const std::string name = clean_name(trimmed(login.user), longest_user_name);
  const std::string password(trimmed(login.password).substr(0, longest_password));
  questions_.push_back({context_.letters.to_utf8(name), context_.letters.to_utf8(password), address,
                        context_.loop.now(), std::move(answer)});
  look_at_next();
}

void LoginDesk::look_at_next() {
  while (at_work_ < most_at_work && !questions_.empty()) {
    Question question = std::move(questions_.front());
    questions_.pop_front();
    if (guard_.address_is_locked(question.address, context_.loop.now())) {
      refuse(question, Refusal::AddressLocked);
      continue;
    }
    ++at_work_;
    const std::string password = std::exchange(question.password, {});
    const platform::Account* account = accounts_.find(question.user);
    // Also for a user who is none or is locked, so that nobody learns which.
    passwords_.verify(account == nullptr ? std::string() : account->password_hash, password,
                      [this, alive = std::weak_ptr(alive_), question](bool fits) {
                        if (!alive.lock()) return;
                        --at_work_;
                        decide(question, fits);
                        look_at_next();
                      });
  }
}

void LoginDesk::decide(const Question& question, bool fits) {
  const platform::Milliseconds now = context_.loop.now();
  // It may have changed while the password was looked at.
  const platform::Account* account = accounts_.find(question.user);
  if (guard_.address_is_locked(question.address, now)) {
    return refuse(question, Refusal::AddressLocked);
  }
  const bool is_wrong = account == nullptr || !fits;
  const bool user_is_locked = guard_.user_is_locked(question.user, now);
  // Each one costs a look at a password, be the user locked or not.
  if (is_wrong) guard_.note_wrong(question.user, question.address, now);
  if (user_is_locked) return refuse(question, Refusal::UserLocked);
  if (is_wrong) return refuse(question, Refusal::WrongPassword);
  if (account->locked) return refuse(question, Refusal::UserLocked);
  guard_.note_right(question.user);
  question.answer(question.user);
}

void LoginDesk::refuse(const Question& question, Refusal reason) {
  context_.figures.refuse(reason);
  // Whoever goes on trying fills neither the log nor the audit.
  const bool is_news = reason != Refusal::AddressLocked || guard_.note_locked_try(question.address);
  // A console that has no name yet asks so once, which is nobody's try.
  if (is_news && !question.user.empty()) note(question, reason);
  const auto waited = context_.loop.now() - question.asked;
  const auto rest = std::max(refused_after - waited, platform::Milliseconds{0});
  context_.loop.schedule(rest, [alive = std::weak_ptr(alive_), answer = question.answer] {
    if (alive.lock()) answer(std::nullopt);
  });
}

void LoginDesk::note(const Question& question, Refusal reason) const {
  context_.log(LogLevel::Warning, "login refused: user \"" + question.user + "\" from " +
                                      question.address + " (" + std::string(name_of(reason)) + ")");
  context_.audit.note(question.user, "login refused",
                      question.address + ", " + std::string(name_of(reason)));
}

}  // namespace lineweir::server
