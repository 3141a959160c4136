#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

namespace quorvane {

struct SqliteClose {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, SqliteClose>;
using Statement = std::unique_ptr<sqlite3_stmt, SqliteClose>;

// Null where the statement does not fit the database; sqlite3_errcode tells why.
inline Statement Prepared(sqlite3* database, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    return Statement(statement);
}

inline std::string ColumnBytes(sqlite3_stmt* statement, int column) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    return bytes ? std::string(bytes, length) : std::string();
}

} // namespace quorvane
