// Names read from files: whatever they are, nothing outside the project is created or written.
#include <string>
#include <vector>

#include "tests/environment/installed.h"
#include "velmora/common/folder_levels.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"

namespace velmora {
namespace {

const std::string kRefused[] = {"..\\ute",
                                "..\\..\\ute",
                                "\\..\\ute",
                                "Foto\\.. \\..\\ute",
                                "a/../../ute",
                                "C:\\velmora-ute",
                                "C:velmora-ute",
                                "\\\\?\\C:\\velmora-ute",
                                "Foto:gömd",
                                "CON",
                                "nul.txt",
                                "Foto\\COM1",
                                "LPT9.dat",
                                "aux ",
                                "prn.",
                                "\\\\.\\COM1",
                                std::string("a\0\\..\\..\\ute", 12),
                                std::string(300, 'x'),
                                std::string(70'000, 'x')};
// Joined to the project's path.
const std::string kMade[] = {"\\velmora-ute", "\\\\server\\share\\ute", "Foto."};

class NamesFromFiles : public Installed {
 protected:
  NamesFromFiles() {
    project_.SetPath(MakeFolders(L"inner\\P"));
    MakeFolders(L"inner\\P\\TUNDRIL.DBF");
    ini_.m_useIniFile = 1;
    ini_.m_iniPath = MakeFile(L"Velmora.ini", "[ARKIV]\r\nMAPPAR=" + ToUtf8(list_) + "\r\n");
    WriteBytes(list_, "");
    around_ = NamesIn(folder_.Path());
  }
  ~NamesFromFiles() override {
    EXPECT_EQ(NamesIn(folder_.Path()), around_);
    EXPECT_EQ(NamesIn(At(L"inner")), std::vector<CString>{L"P"});
    for (const wchar_t* path : {L"C:\\velmora-ute", L"\\velmora-ute", L"C:velmora-ute"})
      EXPECT_FALSE(FileOrFolderExists(path)) << ToUtf8(path);
  }
  // The messages of creating the folders of such a list.
  std::vector<CString> MakeListed(const std::string& lines) {
    WriteBytes(list_, lines);
    EXPECT_EQ(CProjPath().CreateProjectStructure(project_.m_ProjKat, &ini_, 0, 1, 0, 0, 0, 0, 1), 1);
    std::vector<CString> texts;
    for (const MessageBoxCall& box : std::exchange(messages_.boxes, {})) texts.push_back(box.text);
    return texts;
  }
  CString Refused(const CString& line_and_text) const {
    return L"Otillåten katalog i listan " + list_ + L", rad " + line_and_text;
  }

  CString list_ = At(L"list.txt");
  CProjPath project_;
  CTundrilIni ini_;
  std::vector<CString> around_;
};

TEST_F(NamesFromFiles, AFolderListMakesNothingOutsideTheProject) {
  for (const std::string& name : kRefused) {
    const std::vector<CString> told = MakeListed(name + "\r\nKarta\r\n");
    EXPECT_TRUE(RemoveEmptyFolder(project_.m_ProjKat + L"\\Karta")) << name.substr(0, 40);
    ASSERT_EQ(told.size(), 1U) << name.substr(0, 40);
    EXPECT_EQ(told[0].Left(Refused(L"1:\n").GetLength()), Refused(L"1:\n"));
    EXPECT_LT(told[0].GetLength(), list_.GetLength() + 350);
  }
  for (const std::string& name : kMade) EXPECT_TRUE(MakeListed(name + "\r\n").empty()) << name;
  EXPECT_EQ(NamesIn(project_.m_ProjKat).size(), 4U);  // TUNDRIL.DBF, velmora-ute, server, Foto.
}

TEST_F(NamesFromFiles, AFileThatIsNoFolderListIsReadToALimit) {
  const auto times = [](int count, const std::string& text) {
    std::string all;
    while (count-- > 0) all += text;
    return all;
  };
  EXPECT_EQ(MakeListed(times(kMostListedFolders, "Foto\n\n") + "Karta\nRit\n"),
            std::vector<CString>{Refused(L"8193:\nKarta")});
  EXPECT_EQ(MakeListed("Rit\n" + times(kMostRefusedFolders, "..\n") + "Karta\n").size(),
            static_cast<size_t>(kMostRefusedFolders));
  EXPECT_EQ(MakeListed("Rit\n" + std::string(5'000'000, 'x') + "\nKarta\n"),
            std::vector<CString>{Refused(L"2:\n")});
  EXPECT_EQ(NamesIn(project_.m_ProjKat), (std::vector<CString>{L"Foto", L"Rit", L"TUNDRIL.DBF"}));
}

}  // namespace
}  // namespace velmora
