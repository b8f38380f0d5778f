#include <memory>

#include "velmora/c/handles.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"
#include "velmora/project/named_paths.h"
#include "velmora/settings/code_files.h"
#include "velmora/settings/setting_write.h"
#include "velmora/text/codepage.h"

using velmora::CString;
using velmora::c::Failure;
using velmora::c::Require;

struct velmora_settings {
  struct Entry {
    std::string key;
    std::string value;
    std::optional<std::string> built_in;
    bool stored;
  };
  velmora::Settings settings;
  std::vector<Entry> entries;  // as velmora::Settings::All
};

struct velmora_codes {
  struct Entry {
    std::int64_t line;
    int section;
    std::string code;
    std::vector<std::string> fields;
  };
  velmora::Findings findings;
  std::vector<Entry> entries;
};

struct velmora_project {
  std::vector<std::string> paths;  // as velmora::kProjectPaths
};

namespace velmora::c {
namespace {

constexpr char kUnwritten[] =
    "cannot be written (no such folder, write-protected, or the disk is full); it is as it was";

TextLines LinesOf(const CString& file, const char* path) {
  TextLines lines;
  if (!IsFile(file)) throw Failure{VELMORA_NOT_OPENED, WhyUnopened(file), path};
  const std::string problem = ReadTextLines(file, &lines);
  if (!problem.empty()) throw Failure{VELMORA_NOT_READ, problem, path};
  return lines;
}

// Throws a Failure when `why` says why nothing can be written.
void RefuseFor(const std::string& why, const char* path) {
  if (!why.empty()) throw Failure{VELMORA_BAD_ARGUMENT, why + "; nothing was written", path};
}

void SetEntry(const velmora_settings& settings, size_t index, velmora_setting* setting) {
  const velmora_settings::Entry& entry = settings.entries[index];
  *setting = {entry.key.c_str(), entry.value.c_str(), entry.built_in ? entry.built_in->c_str() : nullptr,
              entry.stored ? 1 : 0};
}

// By the path as it is read: one to be written can begin with a mark.
CString NameOf(const char* path) { return NameOfPath(PathToRead(path)); }

// Throws a Failure for what is there and is not a file, such as a pipe.
void RequireFile(const CString& file, const char* path) {
  if (FileOrFolderExists(file) && !IsFile(file)) throw Failure{VELMORA_NOT_OPENED, WhyUnopened(file), path};
}

void WriteOne(const char* path, const char* key_text, const char* value_text, bool force) {
  const CString file = PathToWrite(path);
  CString key = FromUtf8(Text(key_text, "the key is null or not UTF-8"));
  const CString value = FromUtf8(Text(value_text, "the value is null or not UTF-8"));
  const ParameterFile kind = ParameterFileNamed(NameOf(path));
  RequireFile(file, path);
  std::string why = WhyUnreadable(kind, key, value);
  if (why.empty() && !force) why = WhyNoNumber(kind, key, value);
  RefuseFor(why, path);
  RefuseFor(WhyNotEncodable(file, key + value), path);
  if (FileOrFolderExists(file) && !force) {
    const TextLines lines = LinesOf(file, path);
    RefuseLosses(LossesOfWrite(kind, lines, Settings(kind, lines).FileFindings(), key), path);
  }
  std::vector<int> filled;
  if (!WriteSetting(kind, file, key, value, &filled)) throw Failure{VELMORA_NOT_WRITTEN, kUnwritten, path};
}

CodeEntry EntryOf(const velmora_code& code, size_t fields) {
  CodeEntry entry{0, code.section, FromUtf8(Text(code.code, "a code is null or not UTF-8")), {}};
  for (size_t i = 0; i < fields; ++i)
    entry.fields.push_back(FromUtf8(Text(code.fields[i], "a field of a code is null or not UTF-8")));
  return entry;
}

size_t FieldsOf(SettingsFileKind kind) {
  switch (kind) {
    case SettingsFileKind::kObjects:
      return 1;
    case SettingsFileKind::kEnvironment:
      return 3;
    default:
      return VELMORA_CODE_FIELDS;
  }
}

SettingsFileKind KindOfCodes(const char* path) {
  const SettingsFileKind kind = KindByName(NameOf(path));
  if (kind == SettingsFileKind::kSettings || kind == SettingsFileKind::kRig)
    throw Failure{VELMORA_BAD_ARGUMENT, "is by its name a file of settings, not of codes", path};
  return kind;
}

void WriteCodes(const char* path, const velmora_code* codes, size_t count, bool force) {
  const CString file = PathToWrite(path);
  const SettingsFileKind kind = KindOfCodes(path);
  Require(codes != nullptr || count == 0, "the codes are null");
  const CodeFile before = ReadCodeFile(kind, LinesOf(file, path));
  if (!before.can_rewrite) throw Failure{VELMORA_NOT_WRITTEN, before.findings.front().text, path};
  CodeEntries entries;
  for (size_t i = 0; i < count; ++i) {
    entries.push_back(EntryOf(codes[i], FieldsOf(kind)));
    const std::string why = WhyRefused(kind, entries.back());
    if (!why.empty())
      throw Failure{VELMORA_BAD_ARGUMENT, "entry " + std::to_string(i + 1) + ": " + why, path};
    RefuseFor(WhyNotEncodable(file, entries.back().code), path);
    for (const CString& field : entries.back().fields) RefuseFor(WhyNotEncodable(file, field), path);
  }
  if (!force) RefuseLosses(before.findings, path);
  if (!ReplaceCodes(kind, file, entries)) throw Failure{VELMORA_NOT_WRITTEN, kUnwritten, path};
}

}  // namespace
}  // namespace velmora::c

namespace c = velmora::c;

velmora_status velmora_settings_read(const char* path, int may_be_missing, velmora_settings** settings,
                                     velmora_error* error) {
  return c::Made(settings, error, [&] {
    const CString file = c::PathToRead(path);
    velmora::TextLines lines;
    if (may_be_missing == 0 || velmora::FileOrFolderExists(file)) lines = c::LinesOf(file, path);
    velmora::Settings read(velmora::ParameterFileNamed(velmora::NameOfPath(file)), lines);
    auto made = std::make_unique<velmora_settings>(velmora_settings{std::move(read), {}});
    for (const velmora::Setting& setting : made->settings.All()) {
      auto& entry = made->entries.emplace_back(velmora_settings::Entry{
          velmora::ToUtf8(setting.key), velmora::ToUtf8(setting.value), std::nullopt, setting.stored});
      if (setting.built_in) entry.built_in = velmora::ToUtf8(*setting.built_in);
    }
    return made;
  });
}

void velmora_settings_close(velmora_settings* settings) { delete settings; }

size_t velmora_settings_at(const velmora_settings* settings, size_t index, velmora_setting* setting) {
  if (settings == nullptr) return 0;
  if (index < settings->entries.size() && setting != nullptr) c::SetEntry(*settings, index, setting);
  return settings->entries.size();
}

velmora_status velmora_settings_find(const velmora_settings* settings, const char* key,
                                     velmora_setting* setting, velmora_error* error) {
  return c::Guarded(error, [&] {
    Require(settings != nullptr && setting != nullptr, "the settings or the setting are null");
    const CString wanted = velmora::FromUtf8(c::Text(key, "the key is null or not UTF-8"));
    const velmora::Setting* const found = settings->settings.Find(wanted);
    if (found == nullptr || (!found->stored && !found->built_in))
      throw Failure{VELMORA_NOT_FOUND,
                    "no key " + velmora::Quoted(wanted.GetView()) + ", and there is no default for it"};
    c::SetEntry(*settings, static_cast<size_t>(found - settings->settings.All().data()), setting);
  });
}

size_t velmora_settings_finding(const velmora_settings* settings, size_t index, velmora_finding* finding) {
  return settings == nullptr ? 0 : c::FindingAt(settings->settings.FileFindings(), index, finding);
}

velmora_status velmora_setting_write(const char* path, const char* key, const char* value, uint32_t flags,
                                     velmora_error* error) {
  return c::Guarded(error, [&] {
    c::RequireFlags(flags, VELMORA_FORCE);
    c::WriteOne(path, key, value, (flags & VELMORA_FORCE) != 0);
  });
}

velmora_status velmora_codes_read(const char* path, velmora_codes** codes, velmora_error* error) {
  return c::Made(codes, error, [&] {
    const CString file = c::PathToRead(path);
    const velmora::SettingsFileKind kind = c::KindOfCodes(path);
    velmora::CodeFile read = velmora::ReadCodeFile(kind, c::LinesOf(file, path));
    auto made = std::make_unique<velmora_codes>();
    made->findings = std::move(read.findings);
    for (const velmora::CodeEntry& entry : read.entries) {
      auto& added = made->entries.emplace_back(
          velmora_codes::Entry{entry.line, entry.section, velmora::ToUtf8(entry.code), {}});
      for (const CString& field : entry.fields) added.fields.push_back(velmora::ToUtf8(field));
    }
    return made;
  });
}

void velmora_codes_close(velmora_codes* codes) { delete codes; }

size_t velmora_codes_at(const velmora_codes* codes, size_t index, velmora_code* code) {
  if (codes == nullptr) return 0;
  if (index < codes->entries.size() && code != nullptr) {
    const velmora_codes::Entry& entry = codes->entries[index];
    *code = {entry.line, entry.section, entry.code.c_str(), {}};
    for (size_t i = 0; i < entry.fields.size() && i < VELMORA_CODE_FIELDS; ++i)
      code->fields[i] = entry.fields[i].c_str();
  }
  return codes->entries.size();
}

size_t velmora_codes_finding(const velmora_codes* codes, size_t index, velmora_finding* finding) {
  return codes == nullptr ? 0 : c::FindingAt(codes->findings, index, finding);
}

velmora_status velmora_codes_write(const char* path, const velmora_code* codes, size_t count, uint32_t flags,
                                   velmora_error* error) {
  return c::Guarded(error, [&] {
    c::RequireFlags(flags, VELMORA_FORCE);
    c::WriteCodes(path, codes, count, (flags & VELMORA_FORCE) != 0);
  });
}

velmora_status velmora_project_open(const char* folder, velmora_project** project, velmora_error* error) {
  return c::Made(project, error, [&] {
    CString path = c::PathToRead(folder);
    if (!velmora::IsFolder(path)) throw Failure{VELMORA_NOT_OPENED, "is not a folder", folder};
    while (path.GetLength() > 1 && path.Right(1) == L"\\") path = path.Left(path.GetLength() - 1);
    velmora::CProjPath paths;
    paths.SetPath(path);
    auto made = std::make_unique<velmora_project>();
    for (const velmora::NamedPath& named : velmora::kProjectPaths)
      made->paths.push_back(velmora::PathForDisplay(paths.*(named.path)));
    return made;
  });
}

void velmora_project_close(velmora_project* project) { delete project; }

size_t velmora_project_path_at(const velmora_project* project, size_t index, velmora_project_path* path) {
  if (project == nullptr) return 0;
  if (index < project->paths.size() && path != nullptr)
    *path = {velmora::kProjectPaths[index].field, project->paths[index].c_str()};
  return project->paths.size();
}
