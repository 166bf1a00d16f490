#pragma once

#include <QDBusError>
#include <QVariant>

#include "base/failure.h"
#include "letters/letters.h"
#include "platform/remote_objects.h"

namespace lineweir::platform {

// Values as they go over the bus: texts are Unicode, numbers have 32 bits. A text's code 0, which
// the bus doesn't carry, is left out; a number that doesn't fit is a Failure of number 6.
QVariant bus_value(const Letters& letters, const RemoteValue& value);

// What has no counterpart is nothing.
RemoteValue value_of(const Letters& letters, const QVariant& value);

// An error of the bus, or one that the other program has answered, with its number as told at
// RemoteObject.
Failure failure_of(const QDBusError& error);

}  // namespace lineweir::platform
