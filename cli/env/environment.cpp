#include "cli/env/environment.h"

#include "cli/env/registry_trouble.h"
#include "cli/error.h"
#include "velmora/common/messages.h"
#include "velmora/platform/files.h"
#include "velmora/platform/shell_folders.h"

namespace velmora::cli {

bool Environment::HasIni() const { return !ini.m_iniPath.IsEmpty() && FileOrFolderExists(ini.m_iniPath); }

void FindEnvironment(const std::string& sub, Environment* environment) {
  RequireReadableRegistry();
  // A registered installation whose user has no ini file yet says so in a box; here the caller does.
  const MessageBoxHandler before =
      SetMessageBoxHandler([](const MessageBoxCall& call) { return DefaultButton(call.style); });
  const int result = environment->ini.InitXPWay(20, FromUtf8(sub), nullptr);
  SetMessageBoxHandler(before);
  if (result == 0) {
    environment->found_by = FoundBy::kRegistry;
    return;
  }
  environment->ini = CTundrilIni();
  CString folder;
  environment->ini.Init(1);
  environment->found_by = ReadEnvironment(L"TUNDRIL", &folder) ? FoundBy::kVariable : FoundBy::kNothing;
}

void RequireIni(const Environment& environment) {
  if (environment.HasIni()) return;
  if (environment.found_by == FoundBy::kVariable)
    throw Refusal(At(
        PathForDisplay(environment.ini.m_programDir),
        "has no Velmora.ini; point TUNDRIL at an installation, or make one: velmora env install --to DIR"));
  throw Refusal("no installation found; make one: velmora env install --to DIR");
}

}  // namespace velmora::cli
