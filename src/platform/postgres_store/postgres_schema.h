#pragma once

#include <functional>
#include <span>
#include <string>

#include "platform/postgres/postgres_connection.h"

namespace lineweir::platform {

// What the store's tables are in PostgreSQL, and how those of an earlier version become those of
// the present one. They lie in a schema of their own, "lineweir", so that a database may hold other
// programs' tables too.

using PostgresStep = std::span<const char* const>;

// Step N, several statements, makes version N + 1 of version N; where nothing was made the version
// is 0. A step that has been released never changes: what is to be another way becomes a step
// behind it.
std::span<const PostgresStep> postgres_schema_steps();

enum class MissingStore { Make, Refuse };

// Looks what version the database's store has, and takes the steps that it lacks: all in one
// transaction, one program at a time. The failure is a sentence, empty where the store is of the
// newest version: the database can't be used, its store is of a newer version than there are
// steps, or there is none and none is to be made.
void bring_up_to_date(PostgresConnection& connection, std::span<const PostgresStep> steps,
                      MissingStore missing, std::function<void(std::string failure)> done);

// Only looks: the failure is empty where the store is of a version that there are steps for, or
// isn't there yet.
void look_at_version(PostgresConnection& connection, std::span<const PostgresStep> steps,
                     std::function<void(std::string failure)> done);

}  // namespace lineweir::platform
