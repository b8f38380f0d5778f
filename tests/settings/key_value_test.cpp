// Files that hold keys: what the table of cases (file_cases.txt) does not reach.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/settings/tundril_cfg.h"

namespace velmora {
namespace {

TEST(KeyValue, AFileWithAnEndlessLineIsNeitherReadNorReplaced) {
  std::string endless = "A=1\r\nB=";
  endless.resize(size_t{65} << 20, 'x');
  const TemporaryFolder folder;
  RecordedMessages messages;
  const CString path = folder.File(L"endless.cfg");
  WriteBytes(path, endless);
  CTundrilCFG whole_or_nothing(L"P", path);
  EXPECT_EQ(whole_or_nothing.ReadKey(L"A"), L"");
  EXPECT_EQ(whole_or_nothing.WriteKey(L"C", L"3"), -1);
  EXPECT_EQ(GetFileStatus(path)->size, endless.size());
  EXPECT_EQ(messages.boxes.size(), 1u);
}

// The first match in list order, found without the index.
int PlaceOf(CTundrilCFG& cfg, const wchar_t* key) {
  for (bool more = cfg.Home() == 0; more; more = cfg++ != nullptr)
    if (CString(cfg.pael->nyckel).CompareNoCase(key) == 0 && *key != 0) return cfg.Where();
  return -1;
}

TEST(KeyValue, TheIndexNeverDisagreesWithTheList) {
  // A few keys only, so that they are doubled, renamed and deleted all the time.
  const wchar_t* const keys[] = {L"a", L"B", L"\u00C5", L"aa", L"", L"c"};
  const auto any = [](int below) { return std::rand() % below; };
  std::srand(7);
  for (int round = 0; round < 40; ++round) {
    CTundrilCFG cfg(L"P", L"");
    for (int step = 0, more = 1; step < 200; ++step, more = any(3)) {
      const wchar_t* key = keys[any(6)];
      cfgtype record{};
      CopyToField(record.nyckel, key);
      switch (any(9)) {
        case 0:
          cfg.Ny(any(2), &record);
          break;
        case 1:
          cfg.Delete();
          break;
        case 2:
          if (cfg.pael != nullptr) CopyToField(cfg.pael->nyckel, key);
          break;
        case 3:
          if (cfg.pmark != nullptr) CopyToField(cfg.pmark->nyckel, key);
          break;
        case 4:
          cfg.Set_mark();
          break;
        case 5:
          cfg.Goto_mark();
          break;
        default:
          cfg.WriteKey(key, L"v");
      }
      if (more > 0) continue;  // another change first
      const wchar_t* wanted = keys[any(6)];
      int count = 0;
      const int found = cfg.FindKey(wanted);
      const int where = cfg.Where(&count);
      const int place = PlaceOf(cfg, wanted);
      ASSERT_EQ(found, place > 0 ? 0 : -1);
      ASSERT_EQ(where, place > 0 ? place : count == 0 ? -1 : count);
      cfg.FindKey(wanted);
    }
  }
}

}  // namespace
}  // namespace velmora
