#include "velmora/c/handles.h"

#include <algorithm>

#include "velmora/platform/files.h"
#include "velmora/text/codepage.h"
#include "velmora/version.h"

namespace velmora::c {
namespace {

// Cut at the end of a character.
template <size_t kRoom>
void Copy(std::string_view from, char (&to)[kRoom]) {
  size_t size = std::min(from.size(), kRoom - 1);
  while (size > 0 && size < from.size() && (from[size] & 0xC0) == 0x80) --size;
  to[from.copy(to, size)] = '\0';
}

}  // namespace

velmora_status Report(const Failure& failure, velmora_error* error) {
  if (error == nullptr) return failure.status;
  error->status = failure.status;
  error->line = failure.line;
  Copy(failure.text, error->text);
  Copy(failure.file, error->file);
  return failure.status;
}

void Require(bool condition, const char* what) {
  if (!condition) throw Failure{VELMORA_BAD_ARGUMENT, what};
}

std::string Text(const char* utf8, const char* what) {
  Require(utf8 != nullptr && IsValidUtf8(utf8), what);
  return utf8;
}

CString PathToRead(const char* path) {
  Require(path != nullptr && *path != '\0', "the path is null or empty");
  return PathFromSystem(path);
}

CString PathToWrite(const char* path) {
  Require(path != nullptr && *path != '\0', "the path is null or empty");
  return PathAsSpelled(path);
}

void RequireFlags(std::uint32_t flags, std::uint32_t known) {
  Require((flags & ~known) == 0, "a flag does not apply to this call");
}

size_t FindingAt(const Findings& findings, size_t index, velmora_finding* finding) {
  if (index < findings.size() && finding != nullptr) {
    const Finding& found = findings[index];
    *finding = {found.line, (found.misread ? VELMORA_MISREAD : 0) | (found.lost ? VELMORA_LOST : 0),
                found.text.c_str()};
  }
  return findings.size();
}

void RefuseLosses(const Findings& findings, const char* path) {
  const auto [first, more] = LossesIn(findings);
  if (first == nullptr) return;
  throw Failure{VELMORA_WOULD_LOSE,
                first->text + (more > 0 ? " (and " + std::to_string(more) + " more)" : "") +
                    "; writing the file would lose this; VELMORA_FORCE writes it",
                path, first->line};
}

}  // namespace velmora::c

int velmora_version() { return velmora::Version(); }
const char* velmora_version_text() { return velmora::VersionText(); }
