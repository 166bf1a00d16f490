#pragma once

#include <functional>
#include <optional>

#include "platform/postgres/postgres_connection.h"
#include "platform/postgres_store/record_statements.h"

namespace lineweir::platform {

// Reads the whole audit, piece by piece and as it is at one moment, and tells what is to be said of
// it. What was begun may not have ended where it failed.
void walk_over_audit(
    PostgresConnection& connection,
    std::function<void(const std::optional<PostgresFailure>& failure, const AuditVerdict& verdict)>
        done);

}  // namespace lineweir::platform
