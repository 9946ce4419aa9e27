// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/settings_tree_store.h"

#include <sqlite3.h>

#include <utility>

#include "platform/linux/settings_tree_failure.h"

namespace kivandra::linux_impl {

void Statement::Forget() {
  sqlite3_finalize(prepared_);
  prepared_ = nullptr;
}

Query::Query(Statement& statement) : statement_(statement) {
  sqlite3* connection = statement.store_.Connection();
  if (statement.prepared_ != nullptr) {
    return;
  }
  const int code = sqlite3_prepare_v3(connection, statement.sql_, -1, SQLITE_PREPARE_PERSISTENT,
                                      &statement.prepared_, nullptr);
  if (code != SQLITE_OK) {
    statement.store_.Fail(code);
  }
}

Query::~Query() {
  // The result of a reset repeats that of the last step, which has been dealt with.
  sqlite3_reset(statement_.prepared_);
  sqlite3_clear_bindings(statement_.prepared_);
}

Query& Query::Bind(std::int64_t number) {
  const int code = sqlite3_bind_int64(statement_.prepared_, ++bound_, number);
  if (code != SQLITE_OK) {
    statement_.store_.Fail(code);
  }
  return *this;
}

Query& Query::Bind(std::string_view text) {
  // A null pointer would bind NULL instead of an empty text.
  const char* start = text.empty() ? "" : text.data();
  const int code =
      sqlite3_bind_text64(statement_.prepared_, ++bound_, start, text.size(), SQLITE_STATIC, SQLITE_UTF8);
  if (code != SQLITE_OK) {
    statement_.store_.Fail(code);
  }
  return *this;
}

Query& Query::Bind(const std::vector<std::uint8_t>& bytes) {
  const void* start = bytes.empty() ? static_cast<const void*>("") : bytes.data();
  const int code = sqlite3_bind_blob64(statement_.prepared_, ++bound_, start, bytes.size(), SQLITE_STATIC);
  if (code != SQLITE_OK) {
    statement_.store_.Fail(code);
  }
  return *this;
}

bool Query::Step() {
  const int code = sqlite3_step(statement_.prepared_);
  if (code == SQLITE_ROW) {
    return true;
  }
  if (code == SQLITE_DONE) {
    return false;
  }
  statement_.store_.Fail(code);
}

std::int64_t Query::Number(int column) const { return sqlite3_column_int64(statement_.prepared_, column); }

std::string Query::Text(int column) const {
  const std::vector<std::uint8_t> bytes = Blob(column);
  return {bytes.begin(), bytes.end()};
}

std::vector<std::uint8_t> Query::Blob(int column) const {
  const auto* start = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_.prepared_, column));
  const int size = sqlite3_column_bytes(statement_.prepared_, column);
  if (start == nullptr) {
    return {};
  }
  return {start, start + size};
}

Store::Store(std::string path) : path_(std::move(path)) {}

Store::~Store() { sqlite3_close_v2(connection_); }

sqlite3* Store::Connection() {
  if (connection_ == nullptr) {
    Open();
  }
  return connection_;
}

bool Store::InTransaction() const {
  return connection_ != nullptr && sqlite3_get_autocommit(connection_) == 0;
}

void Store::Execute(const char* sql) {
  const int code = sqlite3_exec(Connection(), sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) {
    Fail(code);
  }
}

void Store::TryExecute(const char* sql) noexcept {
  if (connection_ != nullptr) {
    (void)sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr);
  }
}

void Store::Fail(int code) { ThrowSqliteFailure(path_, code); }

ReadTransaction::ReadTransaction(Store& store) : store_(store) {
  (void)store_.Connection();
  if (store_.InTransaction()) {
    return;
  }
  store_.Execute("BEGIN");
  begun_ = true;
}

ReadTransaction::~ReadTransaction() {
  // There is nothing to keep, so that the way out can't fail.
  if (begun_) {
    store_.TryExecute("ROLLBACK");
  }
}

WriteTransaction::WriteTransaction(Store& store) : store_(store) {
  (void)store_.Connection();
  nested_ = store_.InTransaction();
  // Immediate: the wait for another writer happens here, where nothing has been read that it could make
  // stale.
  store_.Execute(nested_ ? "SAVEPOINT part" : "BEGIN IMMEDIATE");
  open_ = true;
}

WriteTransaction::~WriteTransaction() {
  if (!open_) {
    return;
  }
  store_.TryExecute(nested_ ? "ROLLBACK TO part; RELEASE part" : "ROLLBACK");
}

void WriteTransaction::Commit() {
  store_.Execute(nested_ ? "RELEASE part" : "COMMIT");
  open_ = false;
}

}  // namespace kivandra::linux_impl
