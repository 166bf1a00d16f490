// Any bytes as a line from an administrator's tool: it is a request that is read again as itself
// and holds all that its command needs, or it is refused with a sentence.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "adminlink/admin_request.h"
#include "letters/utf8.h"

namespace {

using namespace lineweir::admin;

void require(bool holds) {
  if (!holds) std::abort();
}

void require_whole(const Request& request) {
  const CommandRow& row = row_of(request.command);
  const auto known = fields_of(row);
  for (std::size_t i = 0; i < known.size(); ++i) {
    const FieldRow& field = row_of(known[i]);
    const auto found = request.values.find(known[i]);
    if (found == request.values.end()) {
      require(i >= row.needed);
      continue;
    }
    require(found->second.index() == static_cast<std::size_t>(field.kind));
    if (field.kind == FieldKind::Text) require(lineweir::is_utf8(request.text(known[i])));
    if (field.kind == FieldKind::Number) {
      require(request.number(known[i]) >= field.least && request.number(known[i]) <= field.most);
    }
  }
  require(request.values.size() <= known.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  const auto read = read_request(line);
  if (const auto* sentence = std::get_if<std::string>(&read)) {
    require(!sentence->empty());
    return 0;
  }
  const auto& request = std::get<Request>(read);
  require_whole(request);
  require(std::get<Request>(read_request(line_of(request))) == request);
  return 0;
}
