#include "velmora/project/proj_path.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/support/print_text.h"

namespace velmora {
namespace {

const std::pair<CString CProjPath::*, const wchar_t*> kFields[] = {
    // and what stands behind the folder
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

TEST(ProjPath, EveryFieldIsComposedFromTheFolderAsGiven) {
  CProjPath paths;
  for (const wchar_t* folder : {L"C:\\Väg 40", L"C:\\Path\\", L"", L"%s%d", L"D:\\P"}) {
    EXPECT_EQ(paths.SetPath(folder), 0);
    EXPECT_EQ(paths.SetPath(paths.m_ProjKat), 0);  // its own field as the argument
    for (const auto& [field, behind] : kFields) EXPECT_EQ(paths.*field, CString(folder) + behind);
  }
}

TEST(ProjPath, NamesAreReadWhenPathsAreComposed) {
  const wchar_t* const before = std::exchange(CProjPath::TundrilDbfKat, L"ANNAN.DBF");
  CProjPath paths;
  paths.SetPath(L"C:\\A");
  CProjPath::TundrilDbfKat = before;
  EXPECT_EQ(paths.m_VlPath, L"C:\\A\\ANNAN.DBF\\TUNDRIL.VL");
}

}  // namespace
}  // namespace velmora
