// Where the library is built without SQLite.
#include "velmora/platform/table_database.h"

namespace velmora {

struct TableDatabase::System {};
struct TableStatement::System {};

TableDatabase::TableDatabase() : error_("this build of velmora has no SQLite") {}
TableDatabase::~TableDatabase() = default;
bool TableDatabase::IsAvailable() { return false; }
bool TableDatabase::Take(int) { return false; }
bool TableDatabase::Make() { return false; }
bool TableDatabase::OpenToRead(const CString&) { return false; }
bool TableDatabase::Run(const std::string&) { return false; }
bool TableDatabase::HandOver(const std::function<void(std::string_view)>&) { return false; }

TableStatement::TableStatement(TableDatabase* database, const std::string&) : database_(*database) {}
TableStatement::~TableStatement() = default;
TableStatement& TableStatement::Bind(std::optional<double>) { return *this; }
TableStatement& TableStatement::BindInteger(std::int64_t) { return *this; }
TableStatement& TableStatement::BindText(std::string_view) { return *this; }
TableStatement& TableStatement::BindBytes(std::string_view) { return *this; }
bool TableStatement::Next() { return false; }
bool TableStatement::Run() { return false; }
int TableStatement::Columns() const { return 0; }
std::string TableStatement::ColumnName(int) const { return {}; }
TableCell TableStatement::Cell(int) const { return {}; }

struct TableScan::System {};
TableScan::TableScan(TableDatabase*, const std::string&, const std::vector<std::string>&, Take) {}
TableScan::~TableScan() = default;
bool TableScan::Next() { return false; }

}  // namespace velmora
