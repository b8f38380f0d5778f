// The writes of the C interface, which show no box whatever fails.
#include "tests/reliability/operations.h"
#include "velmora/c/velmora.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

std::string PathOf(Scene& s, const wchar_t* name) { return PathForDisplay(s.At(name)); }

int WriteRoad(Scene& s) {
  std::vector<velmora_plan_point> points;
  for (int i = 0; i < 4000; ++i) points.push_back({6'500'000.0 + i, 150'000.5, 0, 1.0 * i});
  velmora_road* road = nullptr;
  int status = velmora_road_make("A", points.data(), points.size(), nullptr, 0, &road, nullptr);
  if (status == VELMORA_OK)
    status = velmora_road_write(road, PathOf(s, L"P\\A.VL").c_str(), nullptr, 0, nullptr);
  velmora_road_close(road);
  return status;
}

int WriteSetting(Scene& s) {
  return velmora_setting_write(PathOf(s, L"P\\TUNDRIL.PAR").c_str(), "NEWKEY", "7 \xC3\xA5", 0, nullptr);
}

int WriteCodes(Scene& s) {
  const velmora_code codes[] = {{0, 0, "AB", {"word", "1", "2", "text"}},
                                {0, 0, "CD", {"word", "1", "2", ""}}};
  return velmora_codes_write(PathOf(s, L"P\\LINKOD.PAR").c_str(), codes, 2, VELMORA_FORCE, nullptr);
}

}  // namespace

Operations COperations() {
  const std::vector<std::string> unwritten = {std::to_string(VELMORA_NOT_WRITTEN)};
  const std::vector<std::string> failures = {std::to_string(VELMORA_NOT_READ), unwritten[0]};
  return {{"WriteARoadInC", Copying("road.vl", L"P\\A.VL"), WriteRoad, "0", unwritten},
          {"WriteASettingInC", Copying("installation/TUNDRIL.PAR", L"P\\TUNDRIL.PAR"), WriteSetting, "0",
           failures},
          {"WriteCodesInC", Copying("installation/LINKOD.PAR", L"P\\LINKOD.PAR"), WriteCodes, "0", failures}};
}

}  // namespace velmora::testing
