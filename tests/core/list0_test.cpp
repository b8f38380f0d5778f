#include "velmora/core/list0.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

// How many non-throwing allocations may still succeed; negative: all.
int allocations_left = -1;

bool Spend() { return allocations_left < 0 || (allocations_left > 0 && allocations_left-- > 0); }

}  // namespace

void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return Spend() ? ::operator new(size) : nullptr;
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return Spend() ? ::operator new[](size) : nullptr;
}

namespace velmora {
namespace {

struct Record {
  int key;
  int id;
};
constexpr int kNone = -1;  // the id of no record

enum SortKey { kUnsorted, kRising, kFalling, kFallingTiesToo };

// What Sortval answers for the candidate `best` and the later `other`.
int Compare(const Record& best, const Record& other, int key) {
  const int rising = best.key - other.key;
  const int kAnswers[] = {0, rising, -rising, rising > 0 ? -1 : 1};  // the last is never 0, as in a listing
  return kAnswers[key];
}

class RecordList : public list0<Record> {
 public:
  using list0<Record>::antal;
  using list0<Record>::felText;

  std::function<int()> override_compare;
  std::pair<int, int> compared{kNone, kNone};

  std::vector<int> Ids() const {
    std::vector<int> ids;
    const Node* last = nullptr;
    for (const Node* node = forsta; node != nullptr; last = node, node = node->next) {
      EXPECT_EQ(node->previous, last);
      ids.push_back(node->record.id);
    }
    EXPECT_EQ(sista, last);
    return ids;
  }
  // The ids of the current and the marked record, the position and the number of records.
  std::vector<int> Cursors() {
    EXPECT_EQ(pael, aktuell == nullptr ? nullptr : &aktuell->record);
    EXPECT_EQ(pmark, mark == nullptr ? nullptr : &mark->record);
    int count = -5;
    const int where = Where(&count);
    return {pael == nullptr ? kNone : pael->id, pmark == nullptr ? kNone : pmark->id, where, count};
  }
  Record* Find(int id) {
    Node* node = forsta;
    while (node->record.id != id) node = node->next;
    return &node->record;
  }

 protected:
  int Sortval(int key) override {
    compared = {pael->id, pmark->id};
    return override_compare ? override_compare() : Compare(*pael, *pmark, key);
  }
};

std::vector<Record> Records(const std::vector<int>& keys) {
  std::vector<Record> records;
  for (const int key : keys) records.push_back({key, static_cast<int>(records.size())});
  return records;
}
void Append(RecordList* list, const std::vector<int>& keys) {
  for (const Record& record : Records(keys)) list->Ny(1, &record);
}

// The text thrown as a literal, or as a CString behind "CString ".
std::wstring Thrown(const std::function<void()>& action, int allocations = -1) {
  std::wstring thrown = L"(nothing thrown)";
  allocations_left = allocations;
  try {
    action();
  } catch (const wchar_t* text) {
    thrown = text;
  } catch (const CString& text) {
    thrown = L"CString " + std::wstring(text.GetString());
  }
  allocations_left = -1;
  return thrown;
}

// A list as a plain vector of ids, with the cursor and the mark as indices.
struct Model {
  std::vector<int> ids;
  int current = kNone;
  int marked = kNone;
  int pos = 0;

  int Size() const { return static_cast<int>(ids.size()); }
  int IdAt(int index) const { return index == kNone ? kNone : ids[static_cast<size_t>(index)]; }
  bool Step(int by) {
    if (current == kNone || current + by < 0 || current + by >= Size()) return false;
    current += by;
    pos += by;
    return true;
  }
  int GoTo(int index) {
    if (ids.empty() || index == kNone) return -1;
    current = index;
    pos = index + 1;
    return 0;
  }
  int Add(int id) {
    ids.push_back(id);
    const int steps = current == kNone ? 0 : Size() - 1 - current;
    pos = current == kNone ? Size() : pos + steps;
    current = Size() - 1;
    return steps;
  }
  int Insert(int id) {
    if (ids.empty()) return Add(id);
    if (current == kNone) return -1;
    ids.insert(ids.begin() + current, id);
    if (marked >= current) ++marked;
    return 0;
  }
  int Delete() {
    if (current == kNone) return -1;
    ids.erase(ids.begin() + current);
    if (marked == current) marked = kNone;
    if (marked > current) --marked;
    if (current == Size()) {
      --current;
      --pos;
    }
    return ids.empty() ? -1 : 0;
  }
};

TEST(List0, AgreesWithAPlainVectorThroughRandomSteps) {
  std::mt19937 random(20240501);
  RecordList list;
  Model model;
  int next_id = 0;
  // What the list answers and what the model does.
  using Answers = std::pair<int, int>;
  const std::function<Answers()> kSteps[] = {
      [&] { return Answers(list++ != nullptr, model.Step(+1)); },
      [&] { return Answers(list-- != nullptr, model.Step(-1)); },
      [&] { return Answers(list.Home(), model.GoTo(0)); },
      [&] { return Answers(list.End(), model.GoTo(model.Size() - 1)); },
      [&] {
        model.marked = model.current;
        return Answers(list.Set_mark(), 0);
      },
      [&] { return Answers(list.Goto_mark(), model.GoTo(model.marked)); },
      [&] {  // now and then a record that is not in the list
        Record foreign{};
        model.current = static_cast<int>(random() % (model.ids.size() + 1)) - 1;
        Record* wanted = model.current == kNone ? &foreign : list.Find(model.IdAt(model.current));
        return Answers(list.Set_aktel(wanted), wanted == &foreign ? -1 : 0);
      },
      [&] {
        const Record record{0, next_id};
        return Answers(list.Ny(random() % 2 == 0 ? 0 : 2, &record), model.Insert(next_id));
      },
      [&] {
        const int steps = list.Add();
        list.pael->id = next_id;
        return Answers(steps, model.Add(next_id));
      },
      [&] { return Answers(list.Delete(), model.Delete()); },
  };
  for (int step = 0; step < 40000; ++step, ++next_id) {
    // Long runs of growing and of shrinking, so that short lists and long ones both come up.
    const bool shrink = (step / 200) % 2 == 1;
    const size_t operation =
        random() % 4 == 0 ? std::size(kSteps) - (shrink ? 1 : 2) : random() % std::size(kSteps);
    SCOPED_TRACE(testing::Message() << "step " << step << ", operation " << operation);
    const Answers answers = kSteps[operation]();
    EXPECT_EQ(answers.first, answers.second);
    EXPECT_EQ(list.Ids(), model.ids);
    EXPECT_EQ(list.Set_pael(), model.current == kNone ? -1 : 0);
    EXPECT_EQ(list.Cursors(), (std::vector<int>{model.IdAt(model.current), model.IdAt(model.marked),
                                                model.ids.empty() ? -1 : model.pos, model.Size()}));
    if (testing::Test::HasFailure()) return;
  }
}

TEST(List0, NyWithoutASourceFillsWithZeros) {
  RecordList list;
  Append(&list, {7, 7});
  list.Delete();  // the next element may get its memory
  ASSERT_EQ(list.Ny(1), 0);
  EXPECT_TRUE(list.pael->key == 0 && list.pael->id == 0);
}

TEST(List0, CopyingThrows) {
  RecordList list, other;
  Append(&other, {7});
  EXPECT_EQ(Thrown([&] { const list0<Record> copy(list); }), L"Internt fel (Initiering list0)");
  EXPECT_EQ(Thrown([&] { static_cast<list0<Record>&>(other) = list; }), L"Internt fel (Tilldelning list0)");
  EXPECT_EQ(other.Ids(), std::vector<int>{0});
}

TEST(List0, RunningOutOfMemoryThrowsAndLeavesTheListWhole) {
  RecordList list;
  EXPECT_EQ(Thrown([&] { list.Insert(); }, 0), L"Minnesbrist (Class list0)");
  Append(&list, {3, 1, 2});
  EXPECT_EQ(Thrown([&] { list.Ny(1); }, 0), L"Minnesbrist (Class list0)");
  EXPECT_EQ(Thrown([&] { list.Ny(0); }, 0), L"Minnebrist (Class list0)");
  EXPECT_EQ(Thrown([&] { list.Sortera(kRising); }, 0), L"Minnebrist (Pek-Class list0)");
  EXPECT_EQ(Thrown([&] { list.Sortera(kRising); }, 1), L"Minnebrist (Sort-Class list0)");
  EXPECT_EQ(list.Ids(), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(list.Cursors(), (std::vector<int>{2, kNone, 3, 3}));
}

// --- sorting

// Passes over all unplaced records, each giving the next place to the best one.
std::vector<int> RankedInPasses(const std::vector<int>& keys, int key) {
  std::vector<Record> unplaced = Records(keys);
  std::vector<int> order;
  while (!unplaced.empty()) {
    auto best = unplaced.begin();
    for (auto other = best + 1; other != unplaced.end(); ++other)
      if (Compare(*best, *other, key) >= 1) best = other;
    order.push_back(best->id);
    unplaced.erase(best);
  }
  return order;
}

TEST(List0Sort, BothSortsRankAsThePassesDo) {
  std::mt19937 random(7);
  for (int round = 0; round < 600; ++round) {
    const size_t count = round == 0 ? 3000 : 2 + random() % 40, spread = 1 + random() % 50;
    std::vector<int> keys(count);
    for (int& value : keys) value = static_cast<int>(random() % spread);
    for (int key = kUnsorted; key <= kFallingTiesToo; ++key) {
      SCOPED_TRACE(testing::Message() << "round " << round << ", key " << key << ", records " << count);
      RecordList list;
      Append(&list, keys);
      list.Set_aktel(list.Find(static_cast<int>(random() % count)));
      list.Set_mark();
      list.Set_aktel(list.Find(static_cast<int>(random() % count)));
      const std::vector<int> cursors = list.Cursors();
      ASSERT_EQ(list.Sortera(key), 0);
      const std::vector<int> ranked = RankedInPasses(keys, key);
      ASSERT_EQ(list.Ids(), ranked);
      EXPECT_EQ(list.Cursors(), cursors);  // the old position, wherever the element stands now

      RecordList resorted;
      Append(&resorted, keys);
      ASSERT_EQ(resorted.Omsortera(key), 0);
      ASSERT_EQ(resorted.Ids(), ranked);
      EXPECT_EQ(std::pair(resorted.pael->id, resorted.pmark->id), resorted.compared);  // stays at the last
    }
  }
}

TEST(List0Sort, EmptyListsAndSingleRecords) {
  RecordList list;
  EXPECT_TRUE(list.Sortera(kRising) == -1 && list.Omsortera(kRising) == -1);
  list.override_compare = []() -> int { throw "a single record is compared with nothing"; };
  Append(&list, {1});
  EXPECT_TRUE(list.Sortera(kRising) == 0 && list.Omsortera(kRising) == 0);
}

TEST(List0Sort, ACountThatDisagreesIsReported) {
  RecordList list;
  Append(&list, {3, 1, 2});
  list.antal = 4;
  EXPECT_EQ(Thrown([&] { list.Sortera(kRising); }), L"CString Sorteringfel ! 3 st av 4");
  EXPECT_EQ(list.Ids(), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(list.Cursors(), (std::vector<int>{2, kNone, 3, 4}));
  list.antal = 2;
  EXPECT_EQ(Thrown([&] { list.Sortera(kRising); }), L"CString Sorteringfel ! 3 st av 2");
  list.antal = 5;
  EXPECT_EQ(Thrown([&] { list.Omsortera(kRising); }),
            L"CString Fel i sortering\nAntal poster 5\nSorterade 3");
  EXPECT_EQ(list.felText, L"Fel i sortering\nAntal poster 5\nSorterade 3");
}

TEST(List0Sort, AComparisonAtOddsWithItselfIsReported) {
  RecordList list;
  Append(&list, {1, 2, 3});
  int calls = 0;
  // Also no record is put before itself.
  list.override_compare = [&] { return ++calls == 1 || list.pael == list.pmark ? 1 : 0; };
  EXPECT_EQ(Thrown([&] { list.Omsortera(kRising); }), L"Internt sorteringsfel i Todbs::Sortera");
  EXPECT_EQ(list.Ids(), (std::vector<int>{0, 1, 2}));
}

}  // namespace
}  // namespace velmora
