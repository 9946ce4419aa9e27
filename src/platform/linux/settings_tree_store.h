// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace kivandra::linux_impl {

class Store;

/// One statement of SQL, prepared at its first use and kept. It belongs to one store.
class Statement {
 public:
  Statement(Store& store, const char* sql) : store_(store), sql_(sql) {}
  ~Statement() { Forget(); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Lets the prepared form go; the next use prepares it anew.
  void Forget();

 private:
  friend class Query;
  Store& store_;
  const char* sql_;
  sqlite3_stmt* prepared_ = nullptr;
};

/// One run of a statement: bind its parameters in their order, then step through its rows. Throws
/// PlatformError if the store fails. Texts and bytes that are bound must outlive the query.
class Query {
 public:
  explicit Query(Statement& statement);
  ~Query();
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  Query& Bind(std::int64_t number);
  Query& Bind(std::string_view text);
  Query& Bind(const std::vector<std::uint8_t>& bytes);
  /// True while there is a row.
  bool Step();
  /// Steps a statement that gives no rows to its end.
  void Run() { (void)Step(); }
  [[nodiscard]] std::int64_t Number(int column) const;
  [[nodiscard]] std::string Text(int column) const;
  [[nodiscard]] std::vector<std::uint8_t> Blob(int column) const;

 private:
  Statement& statement_;
  int bound_ = 0;
};

/// The file that holds the settings tree: an SQLite database with one table of keys and one of values.
///
/// The file is opened at the first use and checked whole before anything of it is believed. A missing file is
/// a first start and is made, complete, in one step; a file that is there is never made anew, mended or taken
/// away: whatever is wrong with it throws PlatformError with a text for a person, and the next use tries
/// again.
///
/// It is one file with a rollback journal that lies beside it only while a write is under way. A process that
/// is killed there leaves the journal, and the next one to open the store goes back to what was before that
/// write.
class Store {
 public:
  // Keys that every store has; a new one gets the numbers behind them.
  static constexpr std::int64_t kCurrentUser = 1;
  static constexpr std::int64_t kLocalMachine = 2;
  static constexpr std::int64_t kUsers = 3;
  static constexpr std::int64_t kCurrentConfig = 4;
  static constexpr std::int64_t kSoftware = 5;
  static constexpr std::int64_t kClasses = 6;
  static constexpr std::int64_t kLastFixedKey = kClasses;

  explicit Store(std::string path);
  ~Store();
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  /// The open connection.
  sqlite3* Connection();
  /// Whether a transaction of this store is open.
  [[nodiscard]] bool InTransaction() const;
  /// Runs SQL without parameters or rows.
  void Execute(const char* sql);
  /// Runs SQL if there is a connection, whatever comes of it; for the way out of a failure.
  void TryExecute(const char* sql) noexcept;
  /// Throws the PlatformError for a result code of SQLite.
  [[noreturn]] void Fail(int code);

 private:
  void Open();
  void Create() const;
  void CheckFile() const;
  void CheckHeader();
  void CheckContents();

  std::string path_;
  sqlite3* connection_ = nullptr;
};

/// What is read inside lies in one state of the store, whatever other processes write, and costs one lock.
class ReadTransaction {
 public:
  explicit ReadTransaction(Store& store);
  ~ReadTransaction();
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;

 private:
  Store& store_;
  bool begun_ = false;
};

/// What is written inside is kept by Commit, all of it, or not at all. Inside another transaction it is a
/// part of that one.
class WriteTransaction {
 public:
  explicit WriteTransaction(Store& store);
  ~WriteTransaction();
  WriteTransaction(const WriteTransaction&) = delete;
  WriteTransaction& operator=(const WriteTransaction&) = delete;

  void Commit();

 private:
  Store& store_;
  bool nested_ = false;
  bool open_ = false;
};

}  // namespace kivandra::linux_impl
