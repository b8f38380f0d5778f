// The content as a file of every kind that the C interface reads, and what it writes read back. Arguments:
// pairs of coordinates; a key and a value.
#include "velmora/c/velmora.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/platform/files.h"

namespace velmora::fuzz {
namespace {

velmora_error error;

std::string PathOf(const CString& path) { return PathForDisplay(path); }

// A failure says what it is.
bool Done(int status) {
  Require(status == error.status, "the error has the status");
  Require((status == VELMORA_OK) == (error.text[0] == '\0'), "a failure has a text");
  return status == VELMORA_OK;
}

template <class Handle, size_t (*kAt)(const Handle*, size_t, velmora_finding*)>
void RequireFindings(const Handle* handle) {
  velmora_finding finding;
  const size_t count = kAt(handle, 0, nullptr);
  for (size_t i = 0; i < count; ++i) {
    kAt(handle, i, &finding);
    Require(*finding.text != '\0', "a finding says something");
  }
}

std::vector<velmora_plan_point> PlanOf(const velmora_road* road) {
  std::vector<velmora_plan_point> points(velmora_road_plan(road, nullptr, 0));
  velmora_road_plan(road, points.data(), points.size());
  return points;
}

void TryPlaces(const velmora_road* road, const Input& input) {
  for (size_t i = 0; i + 1 < std::min<size_t>(input.Arguments(), 8); i += 2) {
    const double in[] = {input.Number(i), input.Number(i + 1)};
    double out[2];
    double level;
    std::int32_t place;
    for (const unsigned flags : {0U, VELMORA_SEARCHED}) {
      Require(Done(velmora_locate(road, 1, &in[0], 0, &in[1], 0, &out[0], 0, &out[1], 0, &place, 0, flags, 1,
                                  &error)),
              "any point can be asked for");
      Require((place > VELMORA_CORRECTED) == (std::isnan(out[0]) && std::isnan(out[1])),
              "no place, no station");
    }
    Done(velmora_place(road, 1, &in[0], 0, &in[1], 0, &out[0], 0, &out[1], 0, &place, 0, 1, &error));
    Require((place == VELMORA_ON_ROAD) == (std::isfinite(out[0]) && std::isfinite(out[1])),
            "a point, or none");
    Done(velmora_level(road, 1, &in[0], 0, &level, 0, 1, &error));
  }
}

void TryRoad(const velmora_road* road, const Input& input) {
  RequireFindings<velmora_road, velmora_road_finding>(road);
  TryPlaces(road, input);
  const std::string path = PathOf(Scratch(L"OUT.VL"));
  velmora_road* again = nullptr;
  if (!Done(velmora_road_write(road, path.c_str(), nullptr, VELMORA_FORCE, &error))) return;
  if (!Done(velmora_road_read(path.c_str(), nullptr, &again, &error))) {
    Require(PlanOf(road).empty() && velmora_road_profile(road, nullptr, 0) == 0, "what is written is read");
    return;
  }
  const auto a = PlanOf(road);
  const auto b = PlanOf(again);
  const auto same = [](const velmora_plan_point& p, const velmora_plan_point& q) {
    return p.northing == q.northing && p.easting == q.easting && p.bulge == q.bulge && p.station == q.station;
  };
  Require(std::equal(a.begin(), a.end(), b.begin(), b.end(), same), "a road comes back with all digits");
  velmora_road_close(again);
}

void TryRoads(const Input& input) {
  velmora_road* road = nullptr;
  if (Done(velmora_road_parse(input.File().data(), input.File().size(), &road, &error))) TryRoad(road, input);
  velmora_road_close(road);
  for (const wchar_t* name : {L"IN.XML", L"IN.DXF", L"IN.CSV", L"IN.GPKG"}) {
    velmora_read_options options = VELMORA_READ_OPTIONS_INIT;
    options.fit = 1;  // m, so that few arcs are split
    if (Done(velmora_road_read(PathOf(Put(name, input.File())).c_str(), &options, &road, &error)))
      TryRoad(road, input);
    else
      Require(road == nullptr, "no road on failure");
    velmora_road_close(road);
  }
}

void TrySettings(const Input& input) {
  const CString file = Put(L"TUNDRIL.PAR", input.File());
  const std::string path = PathOf(file);
  const std::string& key = input.Bytes(0);
  const std::string& value = input.Bytes(1);
  if (!Done(velmora_setting_write(path.c_str(), key.c_str(), value.c_str(), VELMORA_FORCE, &error))) {
    Require(ReadBytes(FromUtf8(path)) == input.File() || error.status == VELMORA_NOT_WRITTEN,
            "a refused write");
    return;
  }
  velmora_settings* settings = nullptr;
  velmora_setting setting;
  if (!Done(velmora_settings_read(path.c_str(), 0, &settings, &error))) return;
  RequireFindings<velmora_settings, velmora_settings_finding>(settings);
  if (*value.c_str() != '\0')
    Require(Done(velmora_settings_find(settings, key.c_str(), &setting, &error)) &&
                std::strcmp(setting.value, value.c_str()) == 0,
            "what was written is read");
  velmora_settings_close(settings);
}

void TryCodes(const Input& input) {
  for (const wchar_t* name : {L"KODFIL.DAT", L"MILJKOD.DAT", L"LINKOD.PAR", L"STAMPEL1.DAT"}) {
    const std::string path = PathOf(Put(name, input.File()));
    velmora_codes* codes = nullptr;
    if (!Done(velmora_codes_read(path.c_str(), &codes, &error))) continue;
    RequireFindings<velmora_codes, velmora_codes_finding>(codes);
    std::vector<velmora_code> all(velmora_codes_at(codes, 0, nullptr));
    for (size_t i = 0; i < all.size(); ++i) velmora_codes_at(codes, i, &all[i]);
    if (Done(velmora_codes_write(path.c_str(), all.data(), all.size(), 0, &error))) {
      velmora_codes* again = nullptr;
      Require(Done(velmora_codes_read(path.c_str(), &again, &error)), "what was written is read");
      Require(velmora_codes_at(again, 0, nullptr) == all.size(), "every code comes back");
      velmora_codes_close(again);
    }
    velmora_codes_close(codes);
  }
}

}  // namespace

void Run(const Input& input) {
  const int messages = Messages();
  TryRoads(input);
  TrySettings(input);
  TryCodes(input);
  Require(Messages() == messages, "nothing is shown");
}

}  // namespace velmora::fuzz
