// The index of keys: what the table of cases (file_cases.txt) does not reach.
#include <gtest/gtest.h>

#include <cstdlib>

#include "velmora/settings/tundril_cfg.h"

namespace velmora {
namespace {

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

TEST(KeyValue, ARecordRenamedThroughAKeptPointerIsFound) {
  for (const bool walked : {false, true}) {
    CTundrilCFG cfg(L"P", L"");
    cfg.WriteKey(L"a", L"1");
    cfgtype* const kept = cfg.pael;
    for (const wchar_t* key : {L"b", L"c"}) cfg.WriteKey(key, L"2");
    if (walked) cfg.Home();
    EXPECT_EQ(cfg.FindKey(L"b"), 0);
    CopyToField(kept->nyckel, L"new");
    EXPECT_EQ(cfg.FindKey(L"NEW"), 0);
    EXPECT_EQ(cfg.pael, kept);
    EXPECT_EQ(cfg.FindKey(L"a"), -1);
    CopyToField(kept->nyckel, L"C");  // before the record that the index has
    EXPECT_EQ(cfg.FindKey(L"c"), 0);
    EXPECT_EQ(cfg.pael, kept);
  }
}

}  // namespace
}  // namespace velmora
