// Transcripts of the command, tests/cli/transcripts/*.txt: each runs in an empty folder with a registry and
// data folders of its own, and the output of its commands must be as written in the file. VELMORA_RECORD=1
// ctest --preset linux -R '^cli$' writes the actual output into the files; review it with git diff. Run on
// Windows, it records only the commands marked [windows].
//
//   # text           comment
//   <<< NAME [FORM]  the lines of an input file, up to a line "<<<"
//   $ WORDS          a command: velmora or one of the tools in RunTool(); "< NAME" at its end is its input
//   % LINE           a line for the shell, not on Windows
//   [linux] $ WORDS  a command for one system
//
// After a command: standard output, standard error with "! " before each line, and "= N" for a status other
// than 0. Escapes: U+2400 to U+2421 for control characters and for a trailing blank, \xNN for a byte that is
// not UTF-8, U+2404 at the end for a missing last line end, U+2424 for an empty last line, "\" before a line
// that begins like one of the marks above. /home/me/the-test-folder stands for the folder, YYYY-MM-DD for
// today and HH.MM after it for any time; in a LandXML file, whose date is in UTC, for any. On Windows "\" and
// "/" are equal. FORM suite: Windows-1252 with CR LF, shown as UTF-8 with LF; utf16: with its byte-order
// mark.
//
// Where VELMORA_PAGES names folders (":" between them) it is the pages *.md in them that run (page.h), each
// in a folder with the examples and the Python package in it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <regex>
#include <sstream>

#include "tests/cli/page.h"
#include "tests/environment/installed.h"
#include "tests/support/background_command.h"
#include "tests/support/run_command.h"
#include "velmora/platform/files.h"
#include "velmora/platform/registry_store.h"
#include "velmora/text/codepage.h"

namespace velmora::testing {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

#if defined(_WIN32)
constexpr bool kWindows = true;
#else
constexpr bool kWindows = false;
#endif
constexpr std::string_view kFolder = "/home/me/the-test-folder";  // of the same length, so that columns align

fs::path PathOf(const std::string& name) { return {std::u8string(name.begin(), name.end())}; }
std::string NameOf(const fs::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

Words Lines(const std::string& text) {
  Words lines;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// The folder: in the system's spelling, as JSON text, and in the suite's spelling.
Words HereSpelled() {
  const std::string here = NameOf(fs::current_path());
  return {here, Replaced(here, "\\", "\\\\"), ToUtf8(PathFromSystem(here))};
}

// By which both systems' files are held to the same bytes (FNV-1a).
std::string Digest(const std::string& bytes) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return std::to_string(hash);
}

std::string Today() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 16> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d", std::localtime(&now));
  return text.data();
}

// Output as a transcript has it, in complete lines.
std::string Escaped(std::string bytes) {
  for (const std::string& here : HereSpelled()) bytes = Replaced(bytes, here, kFolder);
  bytes = std::regex_replace(
      bytes, std::regex(Today() + "([^0-9\\n]{1,12})[0-9]{2}(\\.[0-9]{2}|:[0-9]{2}:[0-9]{2})"),
      "YYYY-MM-DD$1HH.MM");
  bytes = Replaced(bytes, Today(), "YYYY-MM-DD");
  bytes = std::regex_replace(bytes, std::regex("date=\"[0-9-]{10}\" time=\"[0-9:]{8}\""),
                             "date=\"YYYY-MM-DD\" time=\"HH.MM\"");
  std::string shown;
  for (std::string_view rest = bytes; !rest.empty();) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(rest, &c);
    if (length == 0 || (c >= 0x80 && c < 0xA0)) {
      std::array<char, 8> text{};
      std::snprintf(text.data(), text.size(), "\\x%02X", static_cast<unsigned char>(rest[0]));
      shown += text.data();
    } else if ((c < 0x20 && c != '\n') || c == 0x7F) {
      shown += std::string("\xE2\x90") + static_cast<char>(c == 0x7F ? 0xA1 : 0x80 + c);
    } else if (c == ' ' && (rest.size() == 1 || rest[1] == '\n')) {
      shown += "␠";
    } else {
      shown += rest.substr(0, length);
    }
    rest.remove_prefix(std::max<size_t>(length, 1));
  }
  if (shown.empty()) return shown;
  if (shown.back() != '\n') return shown + "␄\n";
  if (shown.size() == 1 || shown[shown.size() - 2] == '\n') shown.insert(shown.size() - 1, "␤");
  return shown;
}

// The inverse of Escaped().
std::string Unescaped(const std::string& shown) {
  std::string text = Replaced(shown, kFolder, HereSpelled()[0]);
  text = Replaced(Replaced(Replaced(text, "␄\n", ""), "␤\n", "\n"), "␠", " ");
  for (int c = 0; c <= 0x21; ++c)
    text = Replaced(text, std::string("\xE2\x90") + static_cast<char>(0x80 + c),
                    std::string(1, static_cast<char>(c == 0x21 ? 0x7F : c)));
  for (size_t at = 0; (at = text.find("\\x", at)) != std::string::npos; ++at)
    if (text.find_first_not_of("0123456789ABCDEF", at + 2) >= at + 4)
      text.replace(at, 4, 1, static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16)));
  return text;
}

std::string ToForm(const std::string& text, const std::string& form) {
  if (form.empty()) return text;
  const bool suite = form == "suite";
  std::string bytes = suite ? "" : "\xFF\xFE";
  EXPECT_TRUE(AppendEncoded(WideFromUtf8(suite ? Replaced(text, "\n", "\r\n") : text),
                            suite ? TextEncoding::kWindows1252 : TextEncoding::kUtf16Le, &bytes));
  return bytes;
}

// A line end without CR appears as CR LF, so that it differs.
std::string FromSuite(const std::string& bytes) {
  std::wstring text;
  AppendDecoded(bytes, TextEncoding::kWindows1252, &text);
  return Replaced(Replaced(Utf8FromWide(text), "\n", "\r\n"), "\r\r\n", "\n");
}

std::string ReadFile(const std::string& name) {
  EXPECT_TRUE(fs::exists(PathOf(name))) << name;
  return ReadBytes(PathFromSystem(name));
}

void WriteFile(const std::string& name, std::string_view bytes) {
  if (PathOf(name).has_parent_path()) fs::create_directories(PathOf(name).parent_path());
  WriteBytes(PathFromSystem(name), bytes);
}

std::string Listed(const std::string& folder) {
  Words names;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(PathOf(folder)))
    names.push_back(Replaced(NameOf(entry.path()), "\\", "/") + (entry.is_directory() ? "/" : ""));
  std::sort(names.begin(), names.end());
  std::string all;
  for (const std::string& name : names)
    if (!name.starts_with("./registry.db")) all += name + "\n";
  return all;
}

// YYYY-MM-DDTHH:MM, local time.
void SetTime(const std::string& name, const std::string& time) {
  std::tm tm{};
  std::sscanf(time.c_str(), "%d-%d-%dT%d:%d", &tm.tm_year, &tm.tm_mon, &tm.tm_mday, &tm.tm_hour, &tm.tm_min);
  tm.tm_year -= 1900;
  tm.tm_mon -= 1;
  tm.tm_isdst = -1;
  fs::last_write_time(PathOf(name), std::chrono::file_clock::from_sys(
                                        std::chrono::system_clock::from_time_t(std::mktime(&tm))));
}

Ran RunSample() {
  Ran ran = RunVelmora({"env", "install", "--to", "inst", "--registered-data"});
  if (ran.status == 0) ran = RunVelmora({"env", "sync"});
  fs::create_directory("proj");
  return {ran.status, "", ran.err};
}

// The tools. at(n) is the n-th word, empty after the last.
Ran RunTool(const Words& words) {
  const auto at = [&](size_t n) { return n < words.size() ? words[n] : std::string(); };
  Ran ran{0, "", ""};
  const std::map<std::string, std::function<void()>> kTools = {
      {"cat", [&] { ran.out = at(2) == "suite" ? FromSuite(ReadFile(at(1))) : ReadFile(at(1)); }},
      {"digest", [&] { ran.out = Digest(ReadFile(at(1))) + "\n"; }},
      {"example", [&] { fs::copy_file(PathOf(Example(at(1))), PathOf(at(1))); }},
      {"ls", [&] { ran.out = Listed(at(1)); }},
      {"mkdir", [&] { fs::create_directories(PathOf(at(1))); }},
      {"protect", [&] { SetWriteProtected(PathFromSystem(at(1)), true); }},
      {"registry",
       [&] {  // registry TYPE NAME BYTES
         RegistryKey key;
         EXPECT_EQ(key.Create(HKEY_CURRENT_USER, L"Software\\velmora-command-test", KEY_ALL_ACCESS),
                   kRegistryDone);
         EXPECT_EQ(key.Write(FromUtf8(at(2)), static_cast<unsigned>(std::stoi(at(1))), at(3)), kRegistryDone);
       }},
      {"repeat",
       [&] {  // repeat COUNT TEXT FILE
         std::string all;
         for (int i = std::stoi(at(1)); i > 0; --i) all += at(2);
         WriteFile(at(3), all);
       }},
      {"rm", [&] { EXPECT_TRUE(fs::remove_all(PathOf(at(1)))) << at(1); }},
      {"sample", [&] { ran = RunSample(); }},  // the sample installation and a folder "proj"
      {"time", [&] { SetTime(at(1), at(2)); }},
      {"unprotect", [&] { SetWriteProtected(PathFromSystem(at(1)), false); }},
  };
  kTools.at(words[0])();
  return ran;
}

Ran RunLine(const std::string& line) {
  Words words;
  bool quoted = false;
  bool inside = false;
  for (const char c : line) {
    if (c == '"') quoted = !quoted;
    if (c == ' ' && !quoted) {
      inside = false;
      continue;
    }
    if (!inside) words.emplace_back();
    inside = true;
    if (c != '"') words.back() += c;
  }
  for (std::string& word : words) word = Unescaped(word);
  std::string input;
  if (words.size() > 2 && words[words.size() - 2] == "<") {
    input = ReadFile(words.back());
    words.resize(words.size() - 2);
  }
  if (words[0] != "velmora") return RunTool(words);
  return RunVelmora({words.begin() + 1, words.end()}, input);
}

Ran RunInShell(const std::string& line) {
  const TemporaryFolder folder;
  const CString out = folder.File(L"out");
  const CString err = folder.File(L"err");
  const std::string path = NameOf(PathOf(VelmoraCommand()).parent_path());
  Ran ran;
  ran.status =
      BackgroundCommand({"sh", "-c", "PATH=" + path + ":$PATH LC_ALL=C; export TERM=dumb; " + line}, out, err)
          .Wait();
  ran.out = ReadBytes(out);
  ran.err = ReadBytes(err);
  return ran;
}

// As a terminal shows it: both streams, without the blanks at the ends of lines.
std::string OnTerminal(const std::string& line) {
  const Ran ran = RunInShell("exec 2>&1; " + line);
  std::string shown = Escaped(std::regex_replace(ran.out, std::regex(" +\\n"), "\n"));
  shown = Replaced(Replaced(shown, "␄\n", "\n"), "␤\n", "\n");
  return ran.status == 0 ? shown : shown + "(exit status " + std::to_string(ran.status) + ")\n";
}

bool IsMarked(const std::string& line) {
  for (const char* mark : {"# ", "$ ", "% ", "<<< ", "[linux] ", "[windows] "})
    if (line.starts_with(mark)) return true;
  return false;
}

std::string Output(const Ran& ran) {
  std::string answer;
  for (const std::string& line : Lines(Escaped(ran.out)))
    answer += (IsMarked(line) || line.starts_with("! ") || line.starts_with("= ") ? "\\" : "") + line + "\n";
  for (const std::string& line : Lines(Escaped(ran.err))) answer += "! " + line + "\n";
  if (ran.status != 0) answer += "= " + std::to_string(ran.status) + "\n";
  return answer;
}

// The transcript with the actual output. With `keep_shared`, only that of commands for this system alone.
std::string Play(const std::string& transcript, bool keep_shared) {
  std::string played;
  bool keep = true;  // the output lines that follow
  const Words lines = Lines(transcript);
  for (size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (!IsMarked(line)) {
      if (keep) played += line + "\n";
      continue;
    }
    if (line.starts_with("# ")) {
      if (i > 0 && !lines[i - 1].starts_with("# ") && !played.ends_with("\n\n")) played += "\n";
      played += line + "\n";
      continue;
    }
    played += line + "\n";
    const size_t at = line.find(' ') + 1;
    if (line.starts_with("<<< ")) {
      const std::string name = line.substr(at, line.find(' ', at) - at);
      std::string content;
      for (; lines.at(i + 1) != "<<<"; ++i) content += lines[i + 1] + "\n";
      played += content;
      WriteFile(Unescaped(name),
                ToForm(Unescaped(content), line.substr(std::min(line.size(), at + name.size() + 1))));
      played += lines[++i] + "\n";
      keep = true;
      continue;
    }
    const bool elsewhere =
        line.starts_with(kWindows ? "[linux]" : "[windows]") || (kWindows && line[0] == '%');
    keep = elsewhere;
    if (elsewhere) continue;
    const Ran ran = line[0] == '%' ? RunInShell(line.substr(2)) : RunLine(line.substr(line.find("$ ") + 2));
    if (keep_shared && line[0] != '[')
      keep = true;
    else
      played += Output(ran);
  }
  return played;
}

// Pages show what a user without registered folders sees.
bool ArePages() { return std::getenv("VELMORA_PAGES") != nullptr; }

class Transcript : public ::testing::TestWithParam<std::string> {
 protected:
  Transcript() : before_(fs::current_path()) {
    const std::string base =
        NameOf((kWindows ? fs::temp_directory_path().root_path() : fs::temp_directory_path()) / "velmora-");
    std::random_device random;
    do {
      folder_ = base;
      while (folder_.size() < kFolder.size()) folder_ += static_cast<char>('0' + random() % 10);
    } while (!fs::create_directory(PathOf(folder_)));
    EXPECT_EQ(folder_.size(), kFolder.size()) << "the path of the temporary folder is too long";
    fs::current_path(PathOf(folder_));
    const CString here = PathFromSystem(NameOf(fs::current_path()));
    for (const auto& [name, value] : std::initializer_list<std::pair<const wchar_t*, std::optional<CString>>>{
             {L"VELMORA_REGISTRY", here + L"\\registry.db"},
             {L"XDG_DATA_HOME", here + L"\\xdg"},
             {L"TUNDRIL", {}}})
      variables_.push_back(std::make_unique<EnvironmentVariable>(name, value));
    if (ArePages()) return;
    for (const char* name : {"user", "all"}) fs::create_directory(name);
    Keep(HKEY_CURRENT_USER, kShellFolders, L"Appdata", here + L"\\user");
    Keep(HKEY_LOCAL_MACHINE, kShellFolders, L"Common Appdata", here + L"\\all");
    // Absent at first and removed at the end.
    Keep(HKEY_CURRENT_USER, L"Software\\velmora-command-test", L"Namn", std::nullopt);
    for (const CString& key : {CString(kR20), CString(kDist), CString(kReleaseKey),
                               CString(kR20).Left(-2 + CString(kR20).GetLength()) + L"no"})
      for (const wchar_t* name : {L"InstallPath", L"Package"})
        Keep(HKEY_LOCAL_MACHINE, key, name, std::nullopt);
  }
  ~Transcript() override {
    while (!registry_.empty()) registry_.pop_back();
    fs::current_path(before_);
    std::error_code ignored;
    fs::remove_all(PathOf(folder_), ignored);
  }

  // Sets a registry value, or removes it, for as long as the test runs.
  void Keep(HKEY root, const CString& key, const CString& name, const std::optional<CString>& value) {
    registry_.push_back(std::make_unique<RegistryValue>(root, key, name, value.value_or(CString())));
    if (value) return;
    CRegistry registry;
    registry.SetRootKey(root);
    registry.SetKey(key, 0, KEY_ALL_ACCESS);
    registry.DeleteValue(name);
  }

  fs::path before_;
  std::string folder_;
  std::vector<std::unique_ptr<EnvironmentVariable>> variables_;
  std::vector<std::unique_ptr<RegistryValue>> registry_;
};

std::map<std::string, fs::path> Files(const char* variable, const char* ending) {
  std::map<std::string, fs::path> files;
  std::istringstream folders(std::getenv(variable));
  for (std::string folder; std::getline(folders, folder, kWindows ? '\n' : ':');)
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::absolute(PathOf(folder))))
      if (entry.path().extension() == ending)
        files[Replaced(NameOf(entry.path().stem()), "-", "_")] = entry.path();
  return files;
}

const std::map<std::string, fs::path>& AllFiles() {
  static const auto files = ArePages() ? Files("VELMORA_PAGES", ".md") : Files("VELMORA_TRANSCRIPTS", ".txt");
  return files;
}

std::string PlayBesideExamples(const std::string& page) {
  const fs::path examples = PathOf(Example(""));
  fs::copy(examples, "examples", fs::copy_options::recursive);
  fs::create_directory_symlink(examples.parent_path().parent_path() / "python", "python");
  return PlayPage(page, {OnTerminal, WriteFile});
}

TEST_P(Transcript, Holds) {
  const CString file = PathFromSystem(NameOf(AllFiles().at(GetParam())));
  const bool record = std::getenv("VELMORA_RECORD") != nullptr;
  std::string expected = ReadBytes(file);
  std::string actual = ArePages() ? PlayBesideExamples(expected) : Play(expected, record && kWindows);
  if (record) {
    if (actual != expected) WriteBytes(file, actual);
    return;
  }
  if (kWindows)
    for (std::string* text : {&expected, &actual}) *text = Replaced(Replaced(*text, "\\\\", "/"), "\\", "/");
  if (actual != expected)
    ADD_FAILURE() << ::testing::internal::edit_distance::CreateUnifiedDiff(Lines(expected), Lines(actual));
}

Words Names() {
  Words names;
  for (const auto& [name, path] : AllFiles()) names.push_back(name);
  return names;
}

INSTANTIATE_TEST_SUITE_P(Of, Transcript, ::testing::ValuesIn(Names()),
                         [](const auto& of) { return of.param; });

}  // namespace
}  // namespace velmora::testing
