// SPDX-License-Identifier: GPL-3.0-or-later
// Making and opening the store. Nothing here writes into a file that was there before.
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "platform/linux/settings_tree_failure.h"
#include "platform/linux/settings_tree_names.h"
#include "platform/linux/settings_tree_store.h"

namespace kivandra::linux_impl {

namespace {

namespace fs = std::filesystem;

constexpr int kPatienceMs = 5000;

// What the header of the file says about it; never changed once a store of this kind is out.
constexpr std::uint32_t kApplicationId = 0x4B565254;
constexpr std::uint32_t kVersion = 1;

struct TableData {
  const char* name;
  const char* sql;
};

// `folded` is FoldName(name), by which names are compared. AUTOINCREMENT never gives a number twice, so that
// an open handle can tell that its key is gone.
constexpr std::array kTables = {
    TableData{
        "key",
        "CREATE TABLE key(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, name TEXT NOT NULL, "
        "folded TEXT NOT NULL, UNIQUE(parent, folded)) STRICT"},
    TableData{"value",
              "CREATE TABLE value(key INTEGER NOT NULL REFERENCES key(id), folded TEXT NOT NULL, name TEXT "
              "NOT NULL, "
              "type INTEGER NOT NULL, data BLOB NOT NULL, PRIMARY KEY(key, folded)) STRICT, WITHOUT ROWID"},
};

struct FixedKey {
  std::int64_t id;
  std::int64_t parent;  // 0: a root
  const char* name;
};

constexpr std::array kFixedKeys = {
    FixedKey{Store::kCurrentUser, 0, "HKEY_CURRENT_USER"},
    FixedKey{Store::kLocalMachine, 0, "HKEY_LOCAL_MACHINE"},
    FixedKey{Store::kUsers, 0, "HKEY_USERS"},
    FixedKey{Store::kCurrentConfig, 0, "HKEY_CURRENT_CONFIG"},
    FixedKey{Store::kSoftware, Store::kLocalMachine, "SOFTWARE"},
    FixedKey{Store::kClasses, Store::kSoftware, "Classes"},
};

/// Closes a file descriptor.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) {
      ::close(number_);
    }
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int Number() const { return number_; }

 private:
  int number_;
};

struct CloseConnection {
  void operator()(sqlite3* connection) const { sqlite3_close(connection); }
};

std::string JournalOf(const std::string& path) { return path + "-journal"; }

std::string FolderOf(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  return folder.empty() ? "." : folder.string();
}

/// Makes the folder and those above it that are missing, for this user alone.
void MakeFolders(const std::string& path, const fs::path& folder) {
  std::error_code error;
  if (folder.empty() || fs::is_directory(folder, error)) {
    return;
  }
  MakeFolders(path, folder.parent_path());
  if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
    ThrowNoAccess(path, errno);
  }
}

/// The bytes of a store that is empty but for the fixed keys.
std::vector<std::uint8_t> EmptyStore(const std::string& path) {
  sqlite3* opened = nullptr;
  int code = sqlite3_open_v2(":memory:", &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  const std::unique_ptr<sqlite3, CloseConnection> connection(opened);
  const auto run = [&](const std::string& sql) {
    if (code == SQLITE_OK) {
      code = sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, nullptr);
    }
  };
  run("PRAGMA application_id=" + std::to_string(kApplicationId));
  run("PRAGMA user_version=" + std::to_string(kVersion));
  for (const TableData& table : kTables) {
    run(table.sql);
  }
  for (const FixedKey& key : kFixedKeys) {
    run("INSERT INTO key VALUES(" + std::to_string(key.id) + "," + std::to_string(key.parent) + ",'" +
        key.name + "','" + FoldName(key.name) + "')");
  }
  if (code != SQLITE_OK) {
    ThrowSqliteFailure(path, code);
  }
  sqlite3_int64 size = 0;
  const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
      sqlite3_serialize(opened, "main", &size, 0), &sqlite3_free);
  if (bytes == nullptr) {
    throw std::bad_alloc();
  }
  return {bytes.get(), bytes.get() + size};
}

void WriteAll(const std::string& path, int file, const std::vector<std::uint8_t>& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const ssize_t written = ::write(file, bytes.data() + done, bytes.size() - done);
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written < 0) {
      ThrowNoAccess(path, errno);
    }
    done += static_cast<std::size_t>(written);
  }
}

/// Gives the finished file its name, unless a file of that name is there already. 0, or an errno.
int NameWithoutReplacing(const std::string& from, const std::string& to) {
  if (::link(from.c_str(), to.c_str()) == 0) {
    return 0;
  }
  if (errno != EPERM && errno != EOPNOTSUPP && errno != EMLINK) {
    return errno;
  }
  // A file system without hard links.
  return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
}

std::uint32_t BigEndian(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(bytes[0]) << 24U | static_cast<std::uint32_t>(bytes[1]) << 16U |
         static_cast<std::uint32_t>(bytes[2]) << 8U | bytes[3];
}

}  // namespace

void Store::Open() {
  CheckFile();
  const int code =
      sqlite3_open_v2(path_.c_str(), &connection_,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  try {
    if (code != SQLITE_OK) {
      Fail(code);
    }
    CheckHeader();
    sqlite3_busy_timeout(connection_, kPatienceMs);
    // EXTRA: a write is safe against a power cut when its call returns. What lies in the file is never
    // trusted.
    Execute(
        "PRAGMA synchronous=EXTRA; PRAGMA foreign_keys=ON; PRAGMA trusted_schema=OFF; "
        "PRAGMA cell_size_check=ON");
    CheckContents();
  } catch (...) {
    sqlite3_close_v2(connection_);
    connection_ = nullptr;
    throw;
  }
}

/// Looks at the file from outside, and makes it if there is none.
void Store::CheckFile() const {
  struct stat status {};
  if (::stat(path_.c_str(), &status) != 0) {
    if (errno != ENOENT) {
      ThrowNoAccess(path_, errno);
    }
    const std::string journal = JournalOf(path_);
    const bool journalLies = ::lstat(journal.c_str(), &status) == 0 && status.st_size > 0;
    if (::lstat(path_.c_str(), &status) == 0) {
      // Another process has made it since. If not, it is a link that leads nowhere: somebody's arrangement,
      // and no first start.
      if (::stat(path_.c_str(), &status) != 0) {
        ThrowDamaged(path_);
      }
      return CheckFile();
    }
    // The journal of a store that is gone would be played back into a new one.
    if (journalLies) {
      ThrowMissing(path_, journal);
    }
    Create();
    return;
  }
  if (!S_ISREG(status.st_mode) || status.st_size == 0) {
    ThrowDamaged(path_);
  }
  // Writes need a journal beside the file; better to hear of it at once than in the middle of a run.
  if (::faccessat(AT_FDCWD, path_.c_str(), R_OK | W_OK, AT_EACCESS) != 0) {
    ThrowNoAccess(path_, errno);
  }
  if (::faccessat(AT_FDCWD, FolderOf(path_).c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    ThrowNoAccess(path_, errno);
  }
}

/// Makes the store under a name of its own and names it when it is complete, so that there is never half a
/// store; another process that makes it at the same time wins or loses as a whole.
void Store::Create() const {
  const std::vector<std::uint8_t> bytes = EmptyStore(path_);
  const std::string folder = FolderOf(path_);
  MakeFolders(path_, folder);
  std::string name = path_ + ".new-XXXXXX";
  const Descriptor file(::mkostemp(name.data(), O_CLOEXEC));  // mode 0600
  if (file.Number() < 0) {
    ThrowNoAccess(path_, errno);
  }
  const auto removeName = [](const std::string* made) { ::unlink(made->c_str()); };
  const std::unique_ptr<const std::string, decltype(removeName)> guard(&name, removeName);
  WriteAll(path_, file.Number(), bytes);
  if (::fsync(file.Number()) != 0) {
    ThrowNoAccess(path_, errno);
  }
  const int error = NameWithoutReplacing(name, path_);
  if (error != 0 && error != EEXIST) {
    ThrowNoAccess(path_, error);
  }
  const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory.Number() >= 0) {
    ::fsync(directory.Number());
  }
}

/// Looks at the first bytes before SQLite does: they tell whether this is a store of ours at all, and one
/// whose opening makes no files beside it.
void Store::CheckHeader() {
  // Through SQLite's own descriptor: closing another one would drop this process's locks on the file.
  sqlite3_file* file = nullptr;
  sqlite3_file_control(connection_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  if (file == nullptr || file->pMethods == nullptr) {
    ThrowDamaged(path_);
  }
  if (sqlite3_db_readonly(connection_, "main") != 0) {
    ThrowNoAccess(path_, 0);
  }
  std::array<unsigned char, 100> header{};
  const int code = file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0);
  if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) {
    Fail(code);
  }
  constexpr std::array<unsigned char, 2> kRollbackJournal = {1, 1};
  if (std::memcmp(header.data(), "SQLite format 3", 16) != 0 ||
      std::memcmp(&header[18], kRollbackJournal.data(), kRollbackJournal.size()) != 0 ||
      BigEndian(&header[68]) != kApplicationId) {
    ThrowDamaged(path_);
  }
  const std::uint32_t version = BigEndian(&header[60]);
  if (version > kVersion) {
    ThrowNewer(path_);
  }
  if (version != kVersion) {
    ThrowDamaged(path_);
  }
}

/// Reads the whole file: a household's settings are a few pages.
void Store::CheckContents() {
  const ReadTransaction transaction(*this);
  {
    Statement statement(*this,
                        "SELECT name, sql FROM sqlite_schema WHERE name NOT LIKE 'sqlite%' ORDER BY name");
    Query query(statement);
    for (const TableData& table : kTables) {
      if (!query.Step() || query.Text(0) != table.name || query.Text(1) != table.sql) {
        ThrowDamaged(path_);
      }
    }
    if (query.Step()) {
      ThrowDamaged(path_);
    }
  }
  {
    Statement statement(*this, "PRAGMA integrity_check(1)");
    Query query(statement);
    if (!query.Step() || query.Text(0) != "ok") {
      ThrowDamaged(path_);
    }
  }
  {
    // SQLite takes the missing end of a last page for zeros.
    Statement statement(*this, "SELECT page_count * page_size FROM pragma_page_count, pragma_page_size");
    Query query(statement);
    sqlite3_file* file = nullptr;
    sqlite3_file_control(connection_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    sqlite3_int64 size = 0;
    if (!query.Step() || file->pMethods->xFileSize(file, &size) != SQLITE_OK || query.Number(0) != size) {
      ThrowDamaged(path_);
    }
  }
  {
    // Values without a key, and keys that hang in the air.
    Statement statement(*this,
                        "SELECT EXISTS(SELECT 1 FROM value WHERE key NOT IN (SELECT id FROM key)) OR "
                        "EXISTS(SELECT 1 FROM key WHERE parent NOT IN (SELECT id FROM key) AND id > ?)");
    Query query(statement);
    query.Bind(kCurrentConfig);
    if (!query.Step() || query.Number(0) != 0) {
      ThrowDamaged(path_);
    }
  }
  for (const FixedKey& key : kFixedKeys) {
    Statement statement(*this, "SELECT 1 FROM key WHERE id = ? AND parent = ? AND name = ?");
    Query query(statement);
    query.Bind(key.id).Bind(key.parent).Bind(std::string_view(key.name));
    if (!query.Step()) {
      ThrowDamaged(path_);
    }
  }
  {
    // A name that can't be found by its own spelling would look like one that was never stored.
    Statement statement(*this, "SELECT name, folded FROM key UNION ALL SELECT name, folded FROM value");
    Query query(statement);
    while (query.Step()) {
      if (FoldName(query.Text(0)) != query.Text(1)) {
        ThrowDamaged(path_);
      }
    }
  }
}

}  // namespace kivandra::linux_impl
