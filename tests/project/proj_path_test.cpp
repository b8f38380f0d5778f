#include "velmora/project/proj_path.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/print_text.h"

namespace velmora {
namespace {

struct Field {
  CString CProjPath::*field;
  const wchar_t* in_folder;  // behind the project folder
};
const Field kFields[] = {
    {&CProjPath::m_ProjKat, L""},
    {&CProjPath::m_ZipPath, L"\\TUNDRIL.ZIP"},
    {&CProjPath::m_DbsPath, L"\\TUNDRIL.DBS"},
    {&CProjPath::m_HarbelDbsPath, L"\\HARBEL.GDS"},
    {&CProjPath::m_TerrDbsPath, L"\\MIRSEN.TDS"},
    {&CProjPath::m_StenDbsPath, L"\\KARSK.DBS"},
    {&CProjPath::m_DbfKat, L"\\TUNDRIL.DBF"},
    {&CProjPath::m_RitKat, L"\\TUNDRIL.RIT"},
    {&CProjPath::m_StackKat, L"\\STACK"},
    {&CProjPath::m_PostDbfKat, L"\\MIRSEN.DBF"},
    {&CProjPath::m_PostRitKat, L"\\MIRSEN.RIT"},
    {&CProjPath::m_StabRitKat, L"\\DUNVEL.RIT"},
    {&CProjPath::m_UtvDbsPath, L"\\TUNDRILUTV.DBS"},
    {&CProjPath::m_AvpPath, L"\\TUNDRIL.DBF\\TUNDRIL.AVP"},
    {&CProjPath::m_VlPath, L"\\TUNDRIL.DBF\\TUNDRIL.VL"},
    {&CProjPath::m_ParPath, L"\\TUNDRIL.PAR"},
    {&CProjPath::m_StenParPath, L"\\KARSK.PAR"},
    {&CProjPath::m_PicturesKat, L"\\Pictures"},
};

void ExpectFolder(const CProjPath& paths, const CString& folder) {
  for (const Field& field : kFields) EXPECT_EQ(paths.*field.field, folder + field.in_folder);
}

TEST(ProjPath, EveryFieldIsComposedFromTheFolderAsGiven) {
  CProjPath paths;
  for (const Field& field : kFields) EXPECT_TRUE((paths.*field.field).IsEmpty());
  for (const wchar_t* folder : {L"C:\\Väg 40", L"C:\\Path\\", L"", L"%s%d"}) {
    EXPECT_EQ(paths.SetPath(folder), 0);
    ExpectFolder(paths, folder);
  }
  EXPECT_EQ(paths.SetPath(CString(L"D:\\P")), 0);
  EXPECT_EQ(paths.SetPath(paths.m_ProjKat), 0);  // its own field as the argument
  ExpectFolder(paths, L"D:\\P");
}

TEST(ProjPath, ACopyKeepsItsPaths) {
  CProjPath paths;
  paths.SetPath(L"C:\\A");
  const CProjPath copy(paths);
  CProjPath assigned;
  assigned = paths;
  paths.SetPath(L"C:\\B");
  ExpectFolder(copy, L"C:\\A");
  ExpectFolder(assigned, L"C:\\A");
  ExpectFolder(paths, L"C:\\B");
}

TEST(ProjPath, NamesAreReadWhenPathsAreComposed) {
  const wchar_t* const before = CProjPath::TundrilDbfKat;
  CProjPath paths;
  CProjPath::TundrilDbfKat = L"ANNAN.DBF";
  EXPECT_EQ(paths.m_DbfKat, L"");
  paths.SetPath(L"C:\\A");
  CProjPath::TundrilDbfKat = before;
  EXPECT_EQ(paths.m_DbfKat, L"C:\\A\\ANNAN.DBF");
  EXPECT_EQ(paths.m_VlPath, L"C:\\A\\ANNAN.DBF\\TUNDRIL.VL");
  EXPECT_EQ(paths.m_DbsPath, L"C:\\A\\TUNDRIL.DBS");
}

TEST(ProjPath, NamesThatNoFieldHolds) {
  const std::pair<const wchar_t*, const wchar_t*> kNames[] = {
      {CProjPath::TundrilDbkNamn, L"TUNDRIL.DBK"}, {CProjPath::StenDbkNamn, L"KARSK.DBK"},
      {CProjPath::HarbelDbkNamn, L"HARBEL.GDK"},   {CProjPath::UtvDbkNamn, L"TUNDRILUTV.DBK"},
      {CProjPath::StenRitKat, L"KARSK.RIT"},       {CProjPath::StenDbfKat, L"KARSK.DBF"},
      {CProjPath::HarbelRitKat, L"HARBEL.RIT"},    {CProjPath::HarbelDbfKat, L"HARBEL.DBF"},
      {CProjPath::Jb23ParNamn, L"JB23.PAR"},       {CProjPath::Kodfil, L"KODFIL.DAT"},
      {CProjPath::Miljkod, L"MILJKOD.DAT"},        {CProjPath::Linkod, L"LINKOD.PAR"},
      {CProjPath::Gvrref, L"Gvrref.dat"},          {CProjPath::TundrilCfgNamn, L"TUNDRIL.CFG"},
      {CProjPath::RamvalNamn, L"RAMVAL.DAT"},      {CProjPath::StenVlNamn, L"KARSK.VL"},
  };
  for (const auto& [name, text] : kNames) EXPECT_STREQ(name, text);
}

}  // namespace
}  // namespace velmora
