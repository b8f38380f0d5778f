// Names that come out of files: what is made by them lies in the project, whatever they are.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/environment/installed.h"
#include "velmora/alignment/vag2.h"
#include "velmora/common/folder_levels.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"

namespace velmora {
namespace {

struct HostileName {
  std::string bytes;  // as they stand in a file
  bool made;          // inside the project, where a folder list has them
};

const std::vector<HostileName>& HostileNames() {
  static const std::vector<HostileName> names = {
      {"..\\ute", false},
      {"..\\..\\ute", false},
      {"\\..\\ute", false},
      {"Foto\\.. \\..\\ute", false},
      {"a/../../ute", false},
      {"C:\\velmora-ute", false},
      {"C:velmora-ute", false},
      {"\\\\?\\C:\\velmora-ute", false},
      {"\\velmora-ute", true},  // it stands behind the project's path
      {"\\\\server\\share\\ute", true},
      {"Foto:gömd", false},
      {"CON", false},
      {"nul.txt", false},
      {"Foto\\COM1", false},
      {"LPT9.dat", false},
      {"aux ", false},
      {"prn.", false},
      {"\\\\.\\COM1", false},
      {"Foto.", true},
      {std::string("a\0\\..\\..\\ute", 12), false},
      {std::string(300, 'x'), false},
      {std::string(70'000, 'x'), false},
  };
  return names;
}

class NamesFromFiles : public Installed {
 protected:
  NamesFromFiles() {
    project_.SetPath(MakeFolders(L"inner\\P"));
    MakeFolders(L"inner\\P\\TUNDRIL.DBF");
    MakeFile(L"road.vl", "0 0 0 10\r\n0 10 0 20\r\n");
    ini_.m_useIniFile = 1;
    ini_.m_iniPath = MakeFile(L"Velmora.ini", "[ARKIV]\r\nMAPPAR=" + ToUtf8(At(L"list.txt")) + "\r\n");
    MakeFile(L"list.txt", "");
  }
  // Everything below the test's folder but not in the project, by path and size.
  std::vector<std::string> Outside() const {
    namespace fs = std::filesystem;
    const auto path_of = [](const CString& path) {
      const std::string name = PathForDisplay(path);
      return fs::path(std::u8string(name.begin(), name.end()));
    };
    std::vector<std::string> all;
    const fs::path project = path_of(project_.m_ProjKat);
    for (auto at = fs::recursive_directory_iterator(path_of(folder_.Path())); at != fs::end(at); ++at) {
      if (at->path() == project) at.disable_recursion_pending();
      const std::u8string name = at->path().u8string();
      all.push_back(std::string(name.begin(), name.end()) +
                    (at->is_regular_file() ? " " + std::to_string(at->file_size()) : ""));
    }
    std::sort(all.begin(), all.end());
    return all;
  }
  int MakeListed(const std::string& lines) {
    MakeFile(L"list.txt", lines);
    return CProjPath().CreateProjectStructure(project_.m_ProjKat, &ini_, 0, 1, 0, 0, 0, 0, 1);
  }

  CProjPath project_;
  CTundrilIni ini_;
};

TEST_F(NamesFromFiles, AFolderListMakesNothingOutsideTheProject) {
  for (const HostileName& name : HostileNames()) {
    const std::string shown = name.bytes.substr(0, 40);
    MakeFile(L"list.txt", name.bytes + "\r\nKarta\r\n");
    const std::vector<std::string> before = Outside();
    EXPECT_EQ(MakeListed(name.bytes + "\r\nKarta\r\n"), 1) << shown;
    EXPECT_EQ(Outside(), before) << shown;
    EXPECT_TRUE(FileOrFolderExists(project_.m_ProjKat + L"\\Karta")) << shown << ": the rest goes on";
    EXPECT_TRUE(RemoveEmptyFolder(project_.m_ProjKat + L"\\Karta"));
    ASSERT_EQ(messages_.boxes.size(), name.made ? 0U : 1U) << shown;
    if (!name.made) {
      const CString text = L"Otillåten katalog i listan " + At(L"list.txt") + L", rad 1:\n";
      EXPECT_EQ(messages_.boxes[0].text.Left(text.GetLength()), text);
      EXPECT_LT(messages_.boxes[0].text.GetLength(), text.GetLength() + 300);
      messages_.boxes.clear();
    }
  }
  for (const wchar_t* path : {L"C:\\velmora-ute", L"\\velmora-ute", L"C:velmora-ute"})
    EXPECT_FALSE(FileOrFolderExists(path)) << ToUtf8(path);
  EXPECT_EQ(NamesIn(project_.m_ProjKat).size(), 4U);  // TUNDRIL.DBF, velmora-ute, server, Foto.
}

TEST_F(NamesFromFiles, AnAreaFileReadsWhereItsNameLeadsAndWritesNothing) {
  const auto read = [this](const std::string& name) {
    MakeFile(L"inner\\P\\TUNDRIL.DBF\\TUNDRIL.VL", "*\r\n*\r\n" + name + "\r\n0 1\r\n0 1\r\n");
    CVag2 set;
    const int result = set.ReadOmr(&project_);
    EXPECT_EQ(set.plan.Points().size(), result == 0 ? 2U : 0U) << name.substr(0, 40);
    EXPECT_EQ(set.SaveOmr(&project_), 0) << name.substr(0, 40);
    return result;
  };
  const std::vector<std::string> before = Outside();
  for (const HostileName& name : HostileNames()) {
    EXPECT_EQ(read(name.bytes), -1) << name.bytes.substr(0, 40);
    EXPECT_EQ(messages_.boxes.size(), 1U) << name.bytes.substr(0, 40);
    messages_.boxes.clear();
  }
  EXPECT_EQ(read("..\\..\\..\\road.vl"), 0);
  EXPECT_EQ(Outside(), before);
  EXPECT_EQ(NamesIn(project_.m_DbfKat), std::vector<CString>{L"TUNDRIL.VL"});
}

TEST_F(NamesFromFiles, AFileThatIsNoFolderListIsReadSoFarOnly) {
  std::string lines;
  for (int i = 0; i < kMostListedFolders; ++i) lines += "Foto\n\n";
  EXPECT_EQ(MakeListed(lines + "Karta\nRit\n"), 1);
  EXPECT_EQ(NamesIn(project_.m_ProjKat), (std::vector<CString>{L"Foto", L"TUNDRIL.DBF"}));
  ASSERT_EQ(messages_.boxes.size(), 1U);
  EXPECT_EQ(messages_.boxes[0].text,
            L"Otillåten katalog i listan " + At(L"list.txt") + L", rad 8193:\nKarta");
  messages_.boxes.clear();
  lines = "Rit\n";
  for (int i = 0; i < kMostRefusedFolders; ++i) lines += "..\n";
  EXPECT_EQ(MakeListed(lines + "Karta\n"), 1);
  EXPECT_EQ(messages_.boxes.size(), static_cast<size_t>(kMostRefusedFolders));
  EXPECT_EQ(NamesIn(project_.m_ProjKat), (std::vector<CString>{L"Foto", L"Rit", L"TUNDRIL.DBF"}));
  messages_.boxes.clear();
  EXPECT_EQ(MakeListed("Rit\n" + std::string(5'000'000, 'x') + "\nKarta\n"), 1);
  ASSERT_EQ(messages_.boxes.size(), 1U);
  EXPECT_EQ(messages_.boxes[0].text, L"Otillåten katalog i listan " + At(L"list.txt") + L", rad 2:\n");
}

}  // namespace
}  // namespace velmora
