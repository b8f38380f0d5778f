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

bool WriteNewFile(const CString& path, const wchar_t* text) {
  TextWriter writer;
  if (!writer.Begin(path)) return false;
  writer.Write(text);
  return writer.Commit();
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

CString ProjectCopy::PathIn(const CProjPath& project) const { return JoinPath(project.m_ProjKat, name); }

CopyDone MakeProjectCopy(const CTundrilIni* ini, const CProjPath& project, const ProjectCopy& file,
                         bool overwrite) {
  const CString path = file.PathIn(project);
  const bool replaces = overwrite && file.replaceable;
  const bool exists = FileOrFolderExists(path);
  if (exists && !replaces) return IsFile(path) ? CopyDone::kKept : CopyDone::kBlocked;
  const CString source = FindSettingsFile(ini, nullptr, file.name);
  if (!source.IsEmpty())
    return !CopyWholeFile(source, path, !overwrite) ? CopyDone::kFailed
           : exists                                 ? CopyDone::kReplaced
                                                    : CopyDone::kCopied;
  if (file.default_content == nullptr) return CopyDone::kNone;
  return WriteNewFile(path, file.default_content) ? CopyDone::kMade : CopyDone::kFailed;
}

int CTundrilInst::CreateLokalaFiler(int overwrite, int withPar) {
  if (!HasFolder(project_)) return 0;
  for (const ProjectCopy& file : ProjectCopies())
    if (withPar != 0 || file.name != CProjPath::TundrilParNamn)
      MakeProjectCopy(ini_, *project_, file, overwrite != 0);
  return 0;
}

int CTundrilInst::CreateLokalStenFil(int overwrite) {
  if (HasFolder(project_)) MakeProjectCopy(ini_, *project_, StoneProjectCopy(), overwrite != 0);
  return 0;
}

int CTundrilInst::RemoveLokalaFiler() {
  if (!HasFolder(project_)) return 0;
  for (const ProjectCopy& file : ProjectCopies()) RemoveWholeFile(file.PathIn(*project_));
  return 0;
}

int CTundrilInst::RemoveLokalStenFil() {
  if (HasFolder(project_)) RemoveWholeFile(StoneProjectCopy().PathIn(*project_));
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
