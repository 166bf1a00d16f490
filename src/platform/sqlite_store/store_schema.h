#pragma once

#include <sqlite3.h>

#include <span>
#include <string>

namespace lineweir::platform {

// What the store's tables are, and how those of an earlier version become those of the present one.

// Stands in the database's header and tells a store from every other database.
inline constexpr int store_application_id = 0x4C577372;

// Step N makes version N + 1 of version N; an empty database is version 0. A step that has been
// released never changes: what is to be another way becomes a step behind it.
std::span<const char* const> store_schema_steps();

// A Failure where the database is another program's, or of a newer version than there are steps.
// Nothing is changed.
void require_store(sqlite3* connection, std::span<const char* const> steps = store_schema_steps());

// Whether nothing was ever made in the database.
bool is_empty_database(sqlite3* connection);

// Whether the database has the tables of the newest version.
bool is_up_to_date(sqlite3* connection);

// The first table's column, as a sentence names it, that the newest version has and the database
// doesn't, whatever version it says that it is; empty where it has all. There may be more than
// these.
std::string missing_column(sqlite3* connection);

// What would change or refuse what is written, and is no part of a store: the first trigger or
// index of this kind, as a sentence names it; empty where there is none.
std::string meddling_part(sqlite3* connection);

// Takes the steps that the database lacks, each whole or not at all.
void bring_up_to_date(sqlite3* connection,
                      std::span<const char* const> steps = store_schema_steps());

}  // namespace lineweir::platform
