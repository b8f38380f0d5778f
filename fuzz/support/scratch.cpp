#include "fuzz/support/scratch.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include "fuzz/support/input.h"
#include "velmora/common/messages.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {
namespace {

int g_messages = 0;

const TemporaryFolder& Folder() {
  static const std::unique_ptr<TemporaryFolder> folder = [] {
    if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", /*overwrite=*/0);
    auto made = std::make_unique<TemporaryFolder>();
    const std::string path = PathForDisplay(made->Path());
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) setenv(name, path.c_str(), 1);
    setenv("VELMORA_REGISTRY", (path + "/registry.db").c_str(), 1);
    SetMessageBoxHandler([](const MessageBoxCall&) { return ++g_messages, IDOK; });
    SetStatusBarHandler([](const CString&) { return ++g_messages > 0; });
    return made;
  }();
  return *folder;
}

}  // namespace

CString Scratch(const CString& name) { return Folder().File(name); }

const CString& ScratchFolder() { return Folder().Path(); }

CString Put(const CString& name, std::string_view bytes) {
  const CString path = Scratch(name);
  WriteBytes(path, bytes);
  return path;
}

int Messages() { return g_messages; }

std::vector<CString> LinesOf(const CString& path) {
  std::vector<CString> lines;
  TextReader reader;
  if (!reader.Open(path)) return lines;
  for (CString line; reader.ReadLine(&line);) lines.push_back(line);
  return lines;
}

std::optional<std::string> InUtf16(std::string_view bytes) {
  const TextEncoding encoding = EncodingFromMark(bytes);
  if (IsUtf16(encoding)) return std::nullopt;
  std::wstring text;
  AppendDecoded(bytes.substr(ByteOrderMark(encoding).size()), encoding, &text);
  std::string wide(ByteOrderMark(TextEncoding::kUtf16Le));
  Require(AppendEncoded(text, TextEncoding::kUtf16Le, &wide), "UTF-16 holds every text that was read");
  return wide;
}

bool CanHold(std::string_view file, std::wstring_view text) {
  const TextEncoding encoding = EncodingFromMark(file);
  std::string bytes(ByteOrderMark(encoding));
  const bool ends = text.find(L'\x1A') != std::wstring_view::npos;  // DOS's end-of-file character
  return !ends && AppendEncoded(text, encoding, &bytes) && EncodingFromMark(bytes) == encoding;
}

std::vector<CString> WordsOf(const CString& line) {
  std::vector<CString> words;
  bool inside = false;
  for (const wchar_t c : line.GetView()) {
    if (!IsBlank(c) && !inside) words.emplace_back();
    inside = !IsBlank(c);
    if (inside) words.back() += c;
  }
  return words;
}

double Rewritten(double value, int decimals) {
  const std::string text = FormatFixed(value, decimals);
  return ParseNumber(std::wstring(text.begin(), text.end())).value();
}

bool Same(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

bool SamePoints(const std::vector<kovltype>& a, const std::vector<kovltype>& b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(kovltype)) == 0);
}

std::vector<kovltype> Rewritten(std::vector<kovltype> points) {
  for (kovltype& p : points)
    for (double* number : {&p.x, &p.y, &p.bulge, &p.sek}) *number = Rewritten(*number, 4);
  return points;
}

}  // namespace velmora::fuzz
