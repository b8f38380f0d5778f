#include "velmora/lists/titles.h"

#include <algorithm>

#include "velmora/text/letters.h"

namespace velmora {
namespace {

const std::vector<std::wstring_view> kIdTitles = {
    L"id",          L"namn",        L"name",         L"punkt",       L"borrhål",      L"borehole",
    L"boring",      L"punkt-id",    L"punktnr",      L"punktnummer", L"punktnamn",    L"borrhåls-id",
    L"borrhål-id",  L"borrhålsnr",  L"borrhålsnamn", L"borrpunkt",   L"sondering",    L"undersökningspunkt",
    L"beteckning",  L"littera",     L"pkt",          L"pktnr",       L"nr",           L"nummer",
    L"point",       L"point id",    L"point no",     L"point name",  L"point number", L"pt",
    L"borehole id", L"borehole no", L"bh",           L"bh id",       L"hole",         L"hole id",
    L"location id", L"loca_id",     L"no",           L"number"};

}  // namespace

const std::vector<Role>& PointRoles() {
  static const std::vector<Role> roles = {
      {"id", "id", false, kIdTitles},
      {"n",
       "northing",
       true,
       {L"northing", L"n", L"x", L"nord", L"north", L"nordlig", L"norr", L"nordkoordinat", L"n-koordinat",
        L"x-koordinat", L"n-koord", L"x-koord", L"n coordinate", L"loca_natn"}},
      {"e",
       "easting",
       true,
       {L"easting", L"e", L"y", L"öst", L"east", L"östlig", L"öster", L"östkoordinat", L"e-koordinat",
        L"y-koordinat", L"e-koord", L"y-koord", L"e coordinate", L"loca_nate"}},
      {"level",
       "level",
       false,
       {L"level",
        L"z",
        L"nivå",
        L"höjd",
        L"elevation",
        L"markyta",
        L"markytan",
        L"marknivå",
        L"markhöjd",
        L"my",
        L"plushöjd",
        L"z-koordinat",
        L"z-koord",
        L"rh2000",
        L"rh70",
        L"h",
        L"elev",
        L"height",
        L"altitude",
        L"rl",
        L"gl",
        L"reduced level",
        L"ground level",
        L"ground elevation",
        L"surface level",
        L"loca_gl"}}};
  return roles;
}

const std::vector<Role>& StationRoles() {
  static const std::vector<Role> roles = {
      {"id", "id", false, kIdTitles},
      {"station",
       "station",
       true,
       {L"station", L"sek", L"sektion", L"chainage", L"längdmätning", L"sta", L"stn", L"sekt", L"section",
        L"ch", L"längdmått", L"lm"}},
      {"offset",
       "offset",
       false,
       {L"offset", L"avst", L"avstånd", L"sidomått", L"sidoavstånd", L"off", L"sida"}},
      {"side", "side", false, {L"side", L"sida"}, false}};
  return roles;
}

std::wstring TitleKey(std::wstring_view title) {
  constexpr wchar_t kNoBreakSpace = 0xA0;
  std::wstring key;
  for (const wchar_t c : title.substr(0, std::min(title.find_first_of(L"(["), title.size()))) {
    if (IsBlank(c) || c == kNoBreakSpace || std::wstring_view(L"-_.:").find(c) != std::wstring_view::npos)
      continue;
    const wchar_t lower = LowerLetter(c);
    key += lower == L'å' || lower == L'ä' ? L'a' : lower == L'ö' ? L'o' : lower;
  }
  return key;
}

}  // namespace velmora
