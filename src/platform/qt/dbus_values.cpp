#include "platform/qt/dbus_values.h"

#include <algorithm>
#include <string>

#include "base/integer32.h"

namespace lineweir::platform {
namespace {

template <class... Ts>
struct Overloaded : Ts... {
  using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

int number_of(const QDBusError& error) {
  switch (error.type()) {
    case QDBusError::ServiceUnknown:
      return failure_number::no_such_class;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::Disconnected:
      return failure_number::no_answer;
    case QDBusError::Other:
      // A program that the bus could not start, or whose name nobody owns.
      return error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn.")) ||
                     error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner")
                 ? failure_number::no_such_class
                 : failure_number::no_such_member;
    default:
      return failure_number::no_such_member;
  }
}

}  // namespace

QVariant bus_value(const Letters& letters, const RemoteValue& value) {
  return std::visit(
      Overloaded{[](std::monostate) { return QVariant(); },
                 [](bool flag) { return QVariant(flag); },
                 [](std::int64_t number) { return QVariant(static_cast<int>(integer32(number))); },
                 [&](const std::string& text) {
                   std::string whole = text;
                   std::erase(whole, '\0');
                   return QVariant(QString::fromStdString(letters.to_utf8(whole)));
                 }},
      value);
}

RemoteValue value_of(const Letters& letters, const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return value.toBool();
    case QMetaType::QString:
      return letters.from_utf8(value.toString().toStdString());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::LongLong:
      return std::int64_t{value.toLongLong()};
    default:
      return {};
  }
}

Failure failure_of(const QDBusError& error) {
  const std::string said =
      (error.message().isEmpty() ? error.name() : error.message()).toStdString();
  return {number_of(error), said};
}

}  // namespace lineweir::platform
