#include "velmora/platform/registry_store.h"

#include "velmora/platform/posix/registry_database.h"
#include "velmora/platform/posix/registry_path.h"
#include "velmora/text/codepage.h"

namespace velmora {
namespace {

constexpr unsigned kQuery = 0x0001;
constexpr unsigned kSetValue = 0x0002;
constexpr unsigned kListKeys = 0x0008;
// Set a value, make a sub-key or a link, delete, change the owner or the permissions.
constexpr unsigned kAnyWriting = 0xD0026;
constexpr size_t kLargestValue = size_t{15} << 20;

// Adds the rights that the generic rights of an access mask include.
unsigned GrantedRights(int access) {
  constexpr unsigned kGenericRead = 0x80000000;
  constexpr unsigned kGenericWrite = 0x40000000;
  constexpr unsigned kGenericAll = 0x10000000;
  constexpr unsigned kMaximumAllowed = 0x02000000;
  auto rights = static_cast<unsigned>(access);
  if ((rights & kGenericRead) != 0) rights |= unsigned{KEY_READ};
  if ((rights & kGenericWrite) != 0) rights |= unsigned{KEY_WRITE};
  if ((rights & (kGenericAll | kMaximumAllowed)) != 0) rights |= unsigned{KEY_ALL_ACCESS};
  return rights;
}

// The keys of an open database.
class KeyTree {
 public:
  explicit KeyTree(const RegistryDatabase& database) : database_(database.Get()) {}

  // The row of the key; kRegistryNotFound when a part of the path is missing.
  int Find(const RegistryPath& path, std::int64_t* id) const {
    *id = path.root;
    int result = kRegistryDone;
    for (size_t i = 0; i < path.parts.size() && result == kRegistryDone; ++i)
      result = FindChild(*id, path.parts[i], id);
    return result;
  }

  // Creates missing keys.
  int FindOrMake(const RegistryPath& path, std::int64_t* id) const {
    *id = path.root;
    int result = kRegistryDone;
    for (size_t i = 0; i < path.parts.size() && result == kRegistryDone; ++i) {
      const std::int64_t parent = *id;
      result = FindChild(parent, path.parts[i], id);
      if (result == kRegistryNotFound) result = MakeChild(parent, path.parts[i], id);
    }
    return result;
  }

  int Exists(std::int64_t id) const {
    if (id < 0) return kRegistryDone;
    RegistryStatement statement(database_, "SELECT 1 FROM registry_key WHERE id = ?");
    if (statement.Bind(id).Next()) return kRegistryDone;
    return statement.Result() != kRegistryDone ? statement.Result() : kRegistryKeyDeleted;
  }

  int CountKeys(std::int64_t id, unsigned* count) const {
    return CountRows("SELECT count(*) FROM registry_key WHERE parent = ?", id, count);
  }
  int CountValues(std::int64_t id, unsigned* count) const {
    return CountRows("SELECT count(*) FROM registry_value WHERE key = ?", id, count);
  }

  int Remove(std::int64_t id) const {
    const int result =
        RegistryStatement(database_, "DELETE FROM registry_value WHERE key = ?").Bind(id).Run();
    if (result != kRegistryDone) return result;
    return RegistryStatement(database_, "DELETE FROM registry_key WHERE id = ?").Bind(id).Run();
  }

 private:
  int FindChild(std::int64_t parent, std::wstring_view name, std::int64_t* id) const {
    const std::string folded = FoldedRegistryName(name);
    RegistryStatement statement(database_, "SELECT id FROM registry_key WHERE parent = ? AND folded = ?");
    if (!statement.Bind(parent).BindText(folded).Next())
      return statement.Result() != kRegistryDone ? statement.Result() : kRegistryNotFound;
    *id = statement.Number(0);
    return kRegistryDone;
  }

  int MakeChild(std::int64_t parent, std::wstring_view name, std::int64_t* id) const {
    const std::string folded = FoldedRegistryName(name);
    const std::string spelled = Utf8FromWide(name);
    RegistryStatement statement(database_, "INSERT INTO registry_key(parent, folded, name) VALUES(?, ?, ?)");
    const int result = statement.Bind(parent).BindText(folded).BindText(spelled).Run();
    *id = sqlite3_last_insert_rowid(database_);
    return result;
  }

  int CountRows(std::string_view sql, std::int64_t id, unsigned* count) const {
    RegistryStatement statement(database_, sql);
    if (!statement.Bind(id).Next()) return statement.Result();
    *count = static_cast<unsigned>(statement.Number(0));
    return kRegistryDone;
  }

  sqlite3* database_;
};

}  // namespace

// Without a database (the root of an empty registry) nothing can be read.
struct RegistryKey::System {
  bool Grants(unsigned right) const { return (rights & right) != 0; }

  int FindValue(RegistryStatement* statement, const CString& name, std::string* folded) const;
  template <class Change>
  int InTransaction(Change change);

  std::string file;
  RegistryDatabase database;
  std::int64_t id = 0;
  unsigned rights = 0;
};

// Binds the value's name and steps to its row. Returns 0 when there is one.
int RegistryKey::System::FindValue(RegistryStatement* statement, const CString& name,
                                   std::string* folded) const {
  if (!IsRegistryName(name.GetView(), kLongestValueName)) return kRegistryNotFound;
  *folded = FoldedRegistryName(name.GetView());
  if (statement->Bind(id).BindText(*folded).Next()) return kRegistryDone;
  if (statement->Result() != kRegistryDone) return statement->Result();
  const int exists = KeyTree(database).Exists(id);
  return exists != kRegistryDone ? exists : kRegistryNotFound;
}

template <class Change>
int RegistryKey::System::InTransaction(Change change) {
  if (!Grants(kSetValue)) return kRegistryDenied;
  int result = database.IsOpen() ? kRegistryDone : database.OpenOrMake(file);
  if (result != kRegistryDone) return result;
  RegistryTransaction transaction(database);
  result = transaction.Begun();
  if (result == kRegistryDone) result = KeyTree(database).Exists(id);
  if (result == kRegistryDone) result = change();
  return result == kRegistryDone ? transaction.Commit() : result;
}

RegistryKey::RegistryKey() = default;
RegistryKey::~RegistryKey() = default;
RegistryKey::RegistryKey(RegistryKey&&) noexcept = default;
RegistryKey& RegistryKey::operator=(RegistryKey&&) noexcept = default;

int RegistryKey::Open(HKEY root, const CString& path, int access) {
  Close();
  auto opened = std::make_unique<System>();
  opened->rights = GrantedRights(access);
  opened->file = RegistryFile();
  RegistryPath parsed;
  int result = ParseRegistryPath(root, path.GetView(), opened->rights, &parsed);
  if (result != kRegistryDone) return result;
  result = opened->database.Open(opened->file);
  if (result == kRegistryDone) {
    result = KeyTree(opened->database).Find(parsed, &opened->id);
    if (result == kRegistryDone && opened->Grants(kAnyWriting) && !opened->database.IsWritable())
      result = kRegistryDenied;
  } else if (result == kRegistryNotFound && parsed.parts.empty()) {
    opened->id = parsed.root;
    result = kRegistryDone;
  }
  if (result == kRegistryDone) system_ = std::move(opened);
  return result;
}

int RegistryKey::Create(HKEY root, const CString& path, int access) {
  const int found = Open(root, path, access);
  if (found != kRegistryNotFound) return found;
  auto made = std::make_unique<System>();
  made->rights = GrantedRights(access);
  made->file = RegistryFile();
  RegistryPath parsed;
  int result = ParseRegistryPath(root, path.GetView(), made->rights, &parsed);
  if (result == kRegistryDone) result = made->database.OpenOrMake(made->file);
  if (result != kRegistryDone) return result;
  {
    RegistryTransaction transaction(made->database);
    result = transaction.Begun();
    if (result == kRegistryDone) result = KeyTree(made->database).FindOrMake(parsed, &made->id);
    if (result == kRegistryDone) result = transaction.Commit();
  }
  if (result == kRegistryDone) system_ = std::move(made);
  return result;
}

void RegistryKey::Close() { system_.reset(); }

int RegistryKey::Describe(const CString& name, unsigned* type, size_t* size) const {
  if (!system_) return kRegistryBadRoot;
  if (!system_->Grants(kQuery)) return kRegistryDenied;
  if (!system_->database.IsOpen()) return kRegistryNotFound;
  RegistryStatement statement(system_->database.Get(),
                              "SELECT type, length(data) FROM registry_value WHERE key = ? AND folded = ?");
  std::string folded;
  const int result = system_->FindValue(&statement, name, &folded);
  if (result != kRegistryDone) return result;
  if (type != nullptr) *type = static_cast<unsigned>(statement.Number(0));
  if (size != nullptr) *size = static_cast<size_t>(statement.Number(1));
  return kRegistryDone;
}

int RegistryKey::Read(const CString& name, std::span<char> buffer, size_t* size) const {
  if (!system_) return kRegistryBadRoot;
  if (!system_->Grants(kQuery)) return kRegistryDenied;
  if (!system_->database.IsOpen()) return kRegistryNotFound;
  RegistryStatement statement(system_->database.Get(),
                              "SELECT data FROM registry_value WHERE key = ? AND folded = ?");
  std::string folded;
  const int result = system_->FindValue(&statement, name, &folded);
  if (result != kRegistryDone) return result;
  const std::string_view bytes = statement.Bytes(0);
  *size = bytes.size();
  if (bytes.size() > buffer.size()) return kRegistryMoreData;
  bytes.copy(buffer.data(), bytes.size());
  return kRegistryDone;
}

int RegistryKey::Write(const CString& name, unsigned type, std::string_view bytes) {
  if (!system_) return kRegistryBadRoot;
  if (!IsRegistryName(name.GetView(), kLongestValueName) || bytes.size() > kLargestValue)
    return kRegistryBadArgument;
  const std::string folded = FoldedRegistryName(name.GetView());
  const std::string spelled = Utf8FromWide(name.GetView());
  return system_->InTransaction([&] {
    return RegistryStatement(
               system_->database.Get(),
               "INSERT INTO registry_value(key, folded, name, type, data) VALUES(?, ?, ?, ?, ?) "
               "ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type, data = excluded.data")
        .Bind(system_->id)
        .BindText(folded)
        .BindText(spelled)
        .Bind(type)
        .BindBytes(bytes)
        .Run();
  });
}

int RegistryKey::Delete(const CString& name) {
  if (!system_) return kRegistryBadRoot;
  if (!IsRegistryName(name.GetView(), kLongestValueName)) return kRegistryNotFound;
  // Does not create the file when there is nothing to delete.
  if (!system_->database.IsOpen()) return system_->Grants(kSetValue) ? kRegistryNotFound : kRegistryDenied;
  const std::string folded = FoldedRegistryName(name.GetView());
  return system_->InTransaction([&] {
    const int result =
        RegistryStatement(system_->database.Get(), "DELETE FROM registry_value WHERE key = ? AND folded = ?")
            .Bind(system_->id)
            .BindText(folded)
            .Run();
    if (result != kRegistryDone) return result;
    return sqlite3_changes(system_->database.Get()) > 0 ? kRegistryDone : kRegistryNotFound;
  });
}

int RegistryKey::Count(unsigned* keys, unsigned* values) const {
  if (!system_) return kRegistryBadRoot;
  if (!system_->Grants(kQuery)) return kRegistryDenied;
  *keys = *values = 0;
  if (!system_->database.IsOpen()) return kRegistryDone;
  const KeyTree tree(system_->database);
  int result = tree.Exists(system_->id);
  if (result == kRegistryDone) result = tree.CountKeys(system_->id, keys);
  if (result == kRegistryDone) result = tree.CountValues(system_->id, values);
  return result;
}

int RegistryKey::ListKeys(std::vector<CString>* names) const {
  names->clear();
  if (!system_) return kRegistryBadRoot;
  if (!system_->Grants(kListKeys)) return kRegistryDenied;
  if (!system_->database.IsOpen()) return kRegistryDone;
  RegistryStatement statement(system_->database.Get(),
                              "SELECT name FROM registry_key WHERE parent = ? ORDER BY folded");
  statement.Bind(system_->id);
  while (statement.Next()) names->push_back(FromUtf8(statement.Bytes(0)));
  return statement.Result();
}

int RegistryKey::ListValues(std::vector<StoredValue>* values) const {
  values->clear();
  if (!system_) return kRegistryBadRoot;
  if (!system_->Grants(kQuery)) return kRegistryDenied;
  if (!system_->database.IsOpen()) return kRegistryDone;
  RegistryStatement statement(system_->database.Get(),
                              "SELECT name, type, data FROM registry_value WHERE key = ? ORDER BY folded");
  statement.Bind(system_->id);
  while (statement.Next())
    values->push_back({.name = FromUtf8(statement.Bytes(0)),
                       .type = static_cast<unsigned>(statement.Number(1)),
                       .bytes = std::string(statement.Bytes(2))});
  return statement.Result();
}

int RegistryKey::Flush() {
  if (!system_) return kRegistryBadRoot;
  const bool nothing_written = !system_->database.IsOpen() || !system_->database.IsWritable();
  return nothing_written ? kRegistryDone : system_->database.Flush();
}

int DeleteRegistryKey(HKEY root, const CString& path) {
  RegistryPath parsed;
  int result = ParseRegistryPath(root, path.GetView(), 0, &parsed);
  if (result != kRegistryDone) return result;
  if (parsed.parts.empty()) return kRegistryDenied;
  RegistryDatabase database;
  result = database.Open(RegistryFile());
  if (result != kRegistryDone) return result;
  RegistryTransaction transaction(database);
  const KeyTree tree(database);
  std::int64_t id = 0;
  unsigned sub_keys = 0;
  result = transaction.Begun();
  if (result == kRegistryDone) result = tree.Find(parsed, &id);
  if (result == kRegistryDone) result = tree.CountKeys(id, &sub_keys);
  if (result == kRegistryDone && sub_keys > 0) result = kRegistryDenied;
  if (result == kRegistryDone) result = tree.Remove(id);
  return result == kRegistryDone ? transaction.Commit() : result;
}

}  // namespace velmora
