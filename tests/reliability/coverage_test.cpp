// That the sweep covers all: every exported function either is part of an operation or is known to write
// nothing, and the disk is changed at one place.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "tests/reliability/operations.h"
#include "tests/reliability/tree.h"
#include "tests/support/run_command.h"
#include "tests/support/shell.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

// Of classes the members, of the library the functions, that write nothing to the disk. What only holds or
// changes settings of the process, its lists and its windows is among them.
const std::map<std::string, std::string> kWritesNothing = {
    {"",
     "ApplicationProfile CommandLine ConvertReadLine "
     "ConvertSlashes ConvertWrittenLine FileOrFolderExists FindFiles FormatFirstLine "
     "FormatKeyValueLine FormatPoint FormatProfilePoint GetFileStatus "
     "JoinPath LibraryModule LoadText MatchesWildcard NameOfPath ParseFirstLine "
     "ParseKeyValueLine ParsePoint ParseProfilePoint PathForDisplay PathFromSystem "
     "PlanUserFileCheck ReadProfile RegistryBytes RegistryText SetApplicationProfile "
     "SetCommandLine SetMessageBoxHandler SetStatusBarHandler ShowMessage "
     "ShowOwnerlessMessage ShowStatus SortUpper SplitPath"},
    {"CDdeCom", "Close Connect DdeMessage Descriptor HandlePending IsServerThere SetProjPath WaitForReplies"},
    {"CDirSort", "Init Sortval"},
    {"CFont", "Create Detach GetHandle GetLogFont"},
    {"CJb23Par", "GetParFilNamn WriteKey"},
    {"CProjPath", "SetPath"},
    {"CProjektStatus", "Find GetStatus Load Ny SetHandle SetStatus TxLoadString"},
    {"CRegistry",
     "ClearKey GetCurrentPath GetDataSize GetDataType GetRootKey GetSubKeyCount "
     "GetValueCount KeyExists PathIsValid ReadBool ReadColor ReadDateTime ReadDword "
     "ReadFloat ReadFont ReadInt ReadPoint ReadRect ReadSize ReadString ReadStringKey3264 "
     "RenameValue SetRootKey ValueExists"},
    {"CRitningsFormat", "Format2Index"},
    {"CTundrilCFG", "Init"},
    {"CTundrilIni", "Init InstallPackage ReadKey"},
    {"CTundrilInst",
     "Default GetTiniProjPath Init Jb23ReadKey KodfilDatRead LinkodRead LocaleCheckAndFix "
     "MiljkodRead ProjStenInst ReadKey ReadKeyDouble ReadKeyInt StampParRead TiniPtr"},
    {"CTundrilPAR", "GetParFilNamn"},
    {"CVag2", "Init Read ReadOmr"},
    {"CVaglinje",
     "Bulge_r Extend Init Ny Padist PktIomr Pldist Points Reset SektBerak SektKorr Vag2xy "
     "Vagnu Vagprofz Vagstv"},
    {"CombinedLines", "Name Next NumbersALine PointKind"},
    {"HwndNotifyWindow", "Notify"},
    {"InputFile", "Close Open OpenStandardInput Read Size"},
    {"KeyIndex", "Add Clear Find"},
    {"KeyValueList", "Append FindKey PutKey ReadFrom ReadKey"},
    {"Locator", "Vag2xy Vagprofz Vagstv"},
    {"NotifyWindow", "Notify"},
    {"RegistryKey", "Close Count Describe ListKeys ListValues Open Read"},
    {"SettingsReader", "Failed LineWasCut Open ReadLine"},
    {"TextReader",
     "Buffered Consumed Encoding Failed LineWasEnded Open OpenStandardInput ReadBlock "
     "ReadLine Size Skip"},
    {"TextWriter", "Failed"},
};

std::set<std::string> Words(const std::string& text) {
  std::istringstream words(text);
  return {std::istream_iterator<std::string>(words), {}};
}

std::string SourceBytes(const std::string& path) {
  const char* const folder = std::getenv("VELMORA_SOURCES");
  return ReadBytes(PathFromSystem(ShellPath((folder == nullptr ? "" : folder) + ("/" + path))));
}

std::string WithoutComments(const std::string& source) {
  static const std::regex kComment(R"(//[^\n]*|"(\\.|[^"\\\n])*"|#[^\n]*)");
  return std::regex_replace(source, kComment, "");
}

// The matching brace behind `open`.
size_t EndOfBlock(const std::string& text, size_t open) {
  int depth = 0;
  for (size_t i = open; i < text.size(); ++i) {
    depth += text[i] == '{' ? 1 : text[i] == '}' ? -1 : 0;
    if (depth == 0) return i;
  }
  return text.size();
}

std::string WithoutBlocks(const std::string& text) {
  std::string rest;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '{')
      i = EndOfBlock(text, i), rest += ';';
    else
      rest += text[i];
  }
  return rest;
}

// The names of the functions that a class body or a header declares.
std::set<std::string> Declared(const std::string& text, const std::regex& declaration) {
  std::set<std::string> names;
  for (std::sregex_iterator at(text.begin(), text.end(), declaration), end; at != end; ++at)
    names.insert((*at)[1]);
  return names;
}

// "Class::Member" and "Function" for all that the header and those that it includes export.
void AddExported(const std::string& header, std::set<std::string>* seen, std::set<std::string>* exported) {
  // Text and lists know of no disk.
  if (header.starts_with("velmora/text/") || header.starts_with("velmora/core/")) return;
  if (!seen->insert(header).second) return;
  const std::string bytes = SourceBytes(header);
  ASSERT_FALSE(bytes.empty()) << header;
  static const std::regex kInclude(R"x(#include "(velmora/[^"]+)")x");
  for (std::sregex_iterator at(bytes.begin(), bytes.end(), kInclude), end; at != end; ++at)
    AddExported((*at)[1], seen, exported);

  std::string text = WithoutComments(bytes);
  static const std::regex kClass(R"((?:class|struct) VELMORA_\w*API (\w+)[^;{(]*\{)");
  static const std::regex kMember(
      R"((?:^|[;}]|(?:public|protected):)\s*(?:\[\[nodiscard\]\]\s*)?[\w<>:,&*\s]*[\s&*](\w+)\s*\()");
  for (std::smatch found; std::regex_search(text, found, kClass);) {
    const std::string name = found[1];
    const size_t open = static_cast<size_t>(found.position() + found.length()) - 1;
    const size_t end = EndOfBlock(text, open);
    std::string body = WithoutBlocks(text.substr(open + 1, end - open - 1));
    body.resize(std::min(body.find("private:"), body.size()));
    for (const std::string& member : Declared(body, kMember))
      if (member != name) exported->insert(name + "::" + member);
    text.erase(static_cast<size_t>(found.position()), end - static_cast<size_t>(found.position()));
  }
  static const std::regex kFunction(R"(VELMORA_API\s[^;(]*?[\s&*](\w+)\s*\()");
  exported->merge(Declared(WithoutBlocks(text.substr(std::min(text.find('{') + 1, text.size()))), kFunction));
}

std::set<std::string> Exported() {
  std::set<std::string> seen;
  std::set<std::string> exported;
  AddExported("velmora/velmora.h", &seen, &exported);
  return exported;
}

TEST(Coverage, EveryExportedFunctionIsSweptOrWritesNothing) {
  const std::set<std::string> exported = Exported();
  std::set<std::string> known;
  for (const Operation& operation : AllOperations()) known.merge(Words(operation.covers));
  for (const auto& [owner, names] : kWritesNothing)
    for (const std::string& name : Words(names))
      EXPECT_TRUE(known.insert(owner.empty() ? name : owner + "::" + name).second)
          << name << " writes and writes not";
  for (const std::string& name : exported) EXPECT_TRUE(known.contains(name)) << name << " is not covered";
  for (const std::string& name : known) EXPECT_TRUE(exported.contains(name)) << name << " does not exist";
}

// What changes a disk, on any system. Names that are read only are opened by some of them too.
constexpr const char* kChangesDisk =
    R"(\b(fopen|freopen|tmpfile|[oi]?fstream|std::(?:rename|remove)|fs::\w*(?:remove|rename|create|copy|resize)\w*|)"
    R"(filesystem::(?:remove|rename|create|copy|resize)\w*|open(?:at)?|creat|f?truncate|f(?:data)?sync|)"
    R"(unlink(?:at)?|rename(?:at2?)?|mkdir(?:at)?|rmdir|sym?link(?:at)?|link(?:at)?|mkstemps?|sqlite3_open\w*|)"
    R"((?:Create|Delete|Move|Copy|Replace|Write|Flush)File(?:A|W|Ex[AW]?|2|Buffers)?|(?:Create|Remove)Directory\w*|)"
    R"(SetFileInformationByHandle|SetEndOfFile|WritePrivateProfile\w*)\s*\()";

// Opens what is there, to read it or to ask about it.
constexpr const char* kOpensOnly =
    R"(\b(?:open(?:at)?|CreateFileW)\s*\([^;]*?\b(?:O_RDONLY|O_PATH|OPEN_EXISTING))";

// What stands elsewhere than in the one place for it, and why.
const std::map<std::string, std::string> kExceptions = {
    {"cli/output/output_file.cpp", "fopen"},  // a pipe or a device
    {"velmora/platform/posix/registry_database.cpp", "sqlite3_open sqlite3_open_v2"},
    {"velmora/platform/win32/new_file.cpp", "SetFileInformationByHandle"},  // attributes of the new file
    {"velmora/platform/win32/profile.cpp", "WritePrivateProfileStringW"},   // into a copy
};

TEST(Coverage, TheDiskIsChangedAtOnePlace) {
  const std::regex changes(kChangesDisk);
  const std::regex opens_only(kOpensOnly);
  const std::filesystem::path root = ShellPath(std::getenv("VELMORA_SOURCES"));
  std::map<std::string, std::set<std::string>> found;
  for (const char* part : {"velmora", "cli"})
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / part)) {
      if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
      const std::string path = Utf8Path(entry.path().lexically_relative(root));
      const std::string text = WithoutComments(SourceBytes(path));
      if (entry.path().filename() == "disk_calls.cpp") {
        EXPECT_TRUE(std::regex_search(text, changes)) << path;
      } else if (const std::set<std::string> calls =
                     Declared(std::regex_replace(text, opens_only, ""), changes);
                 !calls.empty()) {
        found[path] = calls;
      }
    }
  for (const auto& [path, calls] : found)
    for (const std::string& call : calls)
      EXPECT_TRUE(kExceptions.contains(path) && Words(kExceptions.at(path)).contains(call))
          << path << ": " << call;
  EXPECT_EQ(found.size(), kExceptions.size());
}

}  // namespace
}  // namespace velmora::testing
