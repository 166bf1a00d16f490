#include "platform/qt/server_address.h"

#include "base/names.h"
#include "base/text.h"

namespace lineweir::platform {
namespace {

constexpr std::string_view secured_prefix = "tls:";

}  // namespace

ServerAddress server_address(std::string_view text) {
  text = trimmed(text);
  if (!same_name(text.substr(0, secured_prefix.size()), secured_prefix)) {
    return {std::string(text), false};
  }
  return {std::string(trimmed(text.substr(secured_prefix.size()))), true};
}

}  // namespace lineweir::platform
