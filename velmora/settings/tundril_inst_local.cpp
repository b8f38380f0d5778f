// A project's own copies of the settings files.
#include <clocale>
#include <cstring>

#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/project_copies.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {
namespace {

void WriteNewFile(const CString& path, const wchar_t* text) {
  TextWriter writer;
  if (!writer.Begin(path)) return;
  writer.Write(text);
  (void)writer.Commit();
}

void CreateLocalFile(const CTundrilIni* ini, const CProjPath& project, const ProjectCopy& file,
                     bool overwrite) {
  const CString path = JoinPath(project.m_ProjKat, file.name);
  const bool replaces = overwrite && file.replaceable;
  if (!replaces && FileOrFolderExists(path)) return;
  const CString source = FindSettingsFile(ini, nullptr, file.name);
  if (!source.IsEmpty())
    CopyWholeFile(source, path, !overwrite);
  else if (file.default_content != nullptr)
    WriteNewFile(path, file.default_content);
}

bool PointIsDecimal() { return std::strcmp(std::localeconv()->decimal_point, ".") == 0; }

}  // namespace

std::vector<ProjectCopy> ProjectCopies() {
  return {{CProjPath::TundrilParNamn, L"*\n", false},
          {CProjPath::Linkod, L"*\n", true},
          {CProjPath::Kodfil, L"*\n*\n", true},
          {L"Stenkod.dat", nullptr, false},
          {L"StenkodN.dat", nullptr, false},
          {CProjPath::Jb23ParNamn, L"*\n", true},
          {CProjPath::Miljkod, L"*\n*\n*\n*\n*\n", true}};
}

ProjectCopy StoneProjectCopy() { return {CProjPath::StenParNamn, L"*\n", false}; }

int CTundrilInst::CreateLokalaFiler(int overwrite, int withPar) {
  if (!HasFolder(project_)) return 0;
  for (const ProjectCopy& file : ProjectCopies())
    if (withPar != 0 || file.name != CProjPath::TundrilParNamn)
      CreateLocalFile(ini_, *project_, file, overwrite != 0);
  return 0;
}

int CTundrilInst::CreateLokalStenFil(int overwrite) {
  if (HasFolder(project_)) CreateLocalFile(ini_, *project_, StoneProjectCopy(), overwrite != 0);
  return 0;
}

int CTundrilInst::RemoveLokalaFiler() {
  if (!HasFolder(project_)) return 0;
  for (const ProjectCopy& file : ProjectCopies()) RemoveWholeFile(JoinPath(project_->m_ProjKat, file.name));
  return 0;
}

int CTundrilInst::RemoveLokalStenFil() {
  if (HasFolder(project_)) RemoveWholeFile(JoinPath(project_->m_ProjKat, CProjPath::StenParNamn));
  return 0;
}

int CTundrilInst::ProjInst() {
  if (!HasFolder(project_) || !FileOrFolderExists(JoinPath(project_->m_ProjKat, CProjPath::TundrilParNamn)))
    return 0;
  CreateLokalaFiler(0, 0);
  return 1;
}

int CTundrilInst::ProjStenInst() {
  return HasFolder(project_) && FileOrFolderExists(JoinPath(project_->m_ProjKat, CProjPath::StenParNamn)) ? 1
                                                                                                          : 0;
}

int CTundrilInst::LocaleCheckAndFix() {
  if (PointIsDecimal()) return 0;
  // A system that has no locale of that name always has "C".
  if (std::setlocale(LC_NUMERIC, "English") == nullptr) std::setlocale(LC_NUMERIC, "C");
  return PointIsDecimal() ? 0 : -1;
}

}  // namespace velmora
