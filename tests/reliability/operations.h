// The operations that write: what each finds, what it returns and what it may leave behind.
#ifndef VELMORA_TESTS_RELIABILITY_OPERATIONS_H_
#define VELMORA_TESTS_RELIABILITY_OPERATIONS_H_

#include <filesystem>
#include <functional>
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

// The part of the registry that is compared. Where it is used its calls fail too.
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

// What an operation returned, as text: flags as 0 and 1, several numbers with blanks between them.
inline std::string AsText(std::string text) { return text; }
inline std::string AsText(int number) { return std::to_string(number); }
inline std::string AsText(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) text += (text.empty() ? "" : " ") + std::to_string(number);
  return text;
}

struct Run {
  template <class Call>
  Run(Call call) : made([call](Scene& s) { return AsText(call(s)); }) {}
  std::function<std::string(Scene&)> made;
};

struct Operation {
  std::string name;
  std::function<void(Scene&)> prepare;
  Run run;
  std::string done = "1";  // Told of a success
  // Told of each kind of failure. For an operation that does not report failures `done` is among them.
  std::vector<std::string> failures = {"0"};
  bool several = false;  // files; each is whole, whatever became of the others
  Registry registry = Registry::kUnused;
  bool settles = true;   // a second run makes up for a first that failed
  bool forgets = false;  // a power cut may undo a removal
};
using Operations = std::vector<Operation>;

// What an operation finds: nothing but the scene, a file with these bytes, a file of the example data.
inline void Nothing(Scene&) {}
inline auto Holding(const CString& path, const std::string& bytes) {
  return [=](Scene& s) { s.MakeFile(path, bytes); };
}
inline auto Copying(const std::string& name, const CString& to) {
  return [=](Scene& s) { s.CopyExample(name, to); };
}
// An operation that does not report failures.
inline Operation Silent(const char* name, std::function<void(Scene&)> prepare, Run run, const char* done,
                        bool several = false) {
  return {name, std::move(prepare), std::move(run), done, {done}, several};
}

Operations FileOperations();
Operations SettingsOperations();
Operations AlignmentOperations();
Operations EnvironmentOperations();
Operations RegistryOperations();
Operations COperations();
Operations CommandOperations();
Operations AllOperations();

inline std::ostream& operator<<(std::ostream& out, const Operation& operation) {
  return out << operation.name;
}

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_RELIABILITY_OPERATIONS_H_
