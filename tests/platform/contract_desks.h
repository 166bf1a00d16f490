#pragma once

// The kinds of store that the contract is tried on by this program.
#ifdef LINEWEIR_POSTGRES_CONTRACT
#include "platform/postgres/postgres_desk.h"
#define LINEWEIR_CONTRACT_DESKS PostgresDesk
#else
#include "store_desk.h"
#define LINEWEIR_CONTRACT_DESKS SqliteDesk, ScriptedDesk
#endif
