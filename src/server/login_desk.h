#pragma once

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

#include "platform/password_hash.h"
#include "server/accounts.h"
#include "server/context.h"
#include "server/login_guard.h"
#include "wire/server_packet_codec.h"

namespace lineweir::server {

// Checks who somebody is. Each refusal comes the same time after the question, whatever its reason,
// but for those of an address that is locked, which has learnt that already: no more passwords are
// looked at for it, so that one who guesses doesn't keep the others waiting.
class LoginDesk {
 public:
  static constexpr platform::Milliseconds refused_after{300};
  // So many passwords are looked at at once; the others wait here, in their order.
  static constexpr std::size_t most_at_work = 8;

  // The user's name in UTF-8, or nothing for somebody who isn't let in.
  using Answer = std::function<void(std::optional<std::string> user)>;

  LoginDesk(const Context& context, Accounts& accounts, platform::PasswordHash& passwords);
  ~LoginDesk();
  LoginDesk(const LoginDesk&) = delete;
  LoginDesk& operator=(const LoginDesk&) = delete;

  // Name and password are in the consoles' letters. The answer comes from the loop. One that was
  // only asked again, about rights, leaves no trace as a login.
  void check(const Login& login, const std::string& address, Answer answer);

  // A user who was locked by wrong passwords may try again.
  void forgive(const std::string& user) { guard_.note_right(user); }
  // For how long a user is locked by wrong passwords from now on; 0 for one who isn't.
  platform::Milliseconds locked_for(const std::string& user) const {
    return guard_.user_locked_for(user, context_.loop.now());
  }

  std::size_t waiting() const { return questions_.size() + at_work_; }

 private:
  struct Question;

  void look_at_next();
  void decide(const Question& question, bool fits);
  void refuse(const Question& question, Refusal reason);
  void note(const Question& question, Refusal reason) const;

  const Context& context_;
  Accounts& accounts_;
  platform::PasswordHash& passwords_;
  LoginGuard guard_;
  std::list<Question> questions_;
  std::size_t at_work_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server
