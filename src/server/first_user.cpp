#include "server/first_user.h"

#include "server/accounts.h"
#include "server/rights_templates.h"

namespace lineweir::server {
namespace {

constexpr std::size_t password_length = 14;
constexpr std::string_view password_letters = "abcdefghijkmnpqrstuvwxyz23456789";

}  // namespace

platform::Account first_account(const std::string& password_hash) {
  platform::Account account;
  account.name = first_user_name;
  account.password_hash = password_hash;
  account.rights[every_group] = rights_of(RightsTemplate::Engineer);
  return account;
}

std::string random_password(platform::RandomNumbers& random) {
  std::string password;
  while (password.size() < password_length) {
    const double letter = random.next() * static_cast<double>(password_letters.size());
    password += password_letters[static_cast<std::size_t>(letter) % password_letters.size()];
  }
  return password;
}

}  // namespace lineweir::server
