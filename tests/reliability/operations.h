// The operations that write, each with what it finds, what it answers and what it may leave behind.
#ifndef VELMORA_TESTS_RELIABILITY_OPERATIONS_H_
#define VELMORA_TESTS_RELIABILITY_OPERATIONS_H_

#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/environment/installed.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/project/proj_path.h"

namespace velmora::testing {

// Of the current user, where operations change the registry.
inline constexpr wchar_t kSweptKey[] = L"Software\\velmora-sweep";

// What of the registry is looked at. Where it is used it fails as files do.
enum class Registry { kUnused, kRead, kSweptKey, kInstallation };

// A folder with an installation ("cfg", "prog") and a project ("P") in it.
class Scene : public Installed {
 public:
  Scene();
  ~Scene() override;

  using Installed::At;
  using Installed::MakeFile;
  using Installed::MakeFolders;
  using Installed::MakeIni;
  using Installed::Register;
  using Installed::RegisterDataFolders;

  std::filesystem::path Root() const;
  // A copy of a file of the example data.
  void CopyExample(const std::string& name, const CString& to) const;
  // `run`'s result and the boxes it showed; the folder is "@" in them.
  std::string Told(const std::string& result);
  // Files by path, folders, and values of the registry.
  std::map<std::string, std::string> View(Registry registry) const;

  CTundrilIni ini;
  CProjPath project;

 private:
  void TestBody() override {}
};

// "[caption] text" on a line of its own, as Scene::Told writes a box.
std::string Box(std::string_view caption, std::string_view text);

struct Operation {
  std::string name;
  std::string covers;  // exported functions, a blank between them
  void (*prepare)(Scene& scene);
  std::string (*run)(Scene& scene);
  std::string done = "1";  // what Told makes of it
  // What it may tell when it failed. For one that does not tell, `done` is among them.
  std::vector<std::string> failures = {"0"};
  bool several = false;  // files; each is whole, whatever became of the others
  Registry registry = Registry::kUnused;
  // Whether a second run makes up for a first that failed.
  bool settles = true;
  bool forgets = false;  // a removal may be undone by a power cut
};

void AddFileOperations(std::vector<Operation>* operations);
void AddSettingsOperations(std::vector<Operation>* operations);
void AddAlignmentOperations(std::vector<Operation>* operations);
void AddEnvironmentOperations(std::vector<Operation>* operations);
void AddRegistryOperations(std::vector<Operation>* operations);
void AddCommandOperations(std::vector<Operation>* operations);
std::vector<Operation> AllOperations();

inline std::ostream& operator<<(std::ostream& out, const Operation& operation) {
  return out << operation.name;
}

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_RELIABILITY_OPERATIONS_H_
