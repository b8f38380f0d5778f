// What the handles of the C interface hold, and how its calls report errors.
#ifndef VELMORA_C_HANDLES_H_
#define VELMORA_C_HANDLES_H_

#include <exception>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "velmora/c/velmora.h"
#include "velmora/common/finding.h"
#include "velmora/locator/road_placer.h"
#include "velmora/text/string.h"

struct velmora_road {
  std::string name;
  std::string file;  // where it was read from, for its drawing
  std::vector<velmora::kovltype> profile;
  velmora::RoadPlacer places;
  std::optional<velmora::Locator> levels;
  double import_error = 0;
  velmora::Findings findings;
  bool skipped = false;  // something of its file is not in it

  velmora_road(std::vector<velmora::kovltype> plan, std::vector<velmora::kovltype> profile_points);
};

namespace velmora::c {

// Ends a call with an error.
struct Failure {
  velmora_status status;
  std::string text;
  std::string file = {};
  std::int64_t line = 0;
};

velmora_status Report(const Failure& failure, velmora_error* error);

// Runs a call; everything that it throws becomes a status.
template <class Call>
velmora_status Guarded(velmora_error* error, Call call) noexcept {
  try {
    try {
      call();
      return Report({VELMORA_OK, ""}, error);
    } catch (const Failure& failure) {
      return Report(failure, error);
    } catch (const std::length_error&) {
      return Report({VELMORA_NO_MEMORY, "there is not enough memory"}, error);
    } catch (const std::bad_alloc&) {
      return Report({VELMORA_NO_MEMORY, "there is not enough memory"}, error);
    } catch (const std::exception& exception) {
      return Report({VELMORA_FAILED, exception.what()}, error);
    } catch (const wchar_t*) {  // thrown by the library's lists when memory runs out
      return Report({VELMORA_NO_MEMORY, "there is not enough memory"}, error);
    }
  } catch (...) {  // not even for the error's own text
    if (error != nullptr) *error = {VELMORA_NO_MEMORY, 0, "no memory", ""};
    return VELMORA_NO_MEMORY;
  }
}

// The same for a call that makes a handle: null unless it succeeds.
template <class Handle, class Make>
velmora_status Made(Handle** handle, velmora_error* error, Make make) noexcept {
  if (handle != nullptr) *handle = nullptr;
  return Guarded(error, [&] {
    if (handle == nullptr) throw Failure{VELMORA_BAD_ARGUMENT, "the pointer to the handle is null"};
    *handle = make().release();
  });
}

// Throws a Failure for a null pointer; `what` is it.
void Require(bool condition, const char* what);
// A text from the caller.
std::string Text(const char* utf8, const char* what);
// A path from the caller, to be read, or to be written as it is spelled.
CString PathToRead(const char* path);
CString PathToWrite(const char* path);
void RequireFlags(std::uint32_t flags, std::uint32_t known);

template <class Options>
Options OptionsOf(const Options* given, const Options& usual) {
  if (given == nullptr) return usual;
  Require(given->size == sizeof(Options), "the size in the options is not that of this version");
  return *given;
}

// Fills in a finding; returns their number.
size_t FindingAt(const Findings& findings, size_t index, velmora_finding* finding);
// Throws a Failure when something is lost.
void RefuseLosses(const Findings& findings, const char* path);

}  // namespace velmora::c

#endif  // VELMORA_C_HANDLES_H_
