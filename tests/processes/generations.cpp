#include "tests/processes/generations.h"

#include <charconv>
#include <string>

#include "tests/support/test_files.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/vag2.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {
namespace {

// More than one piece of a write.
constexpr int kPoints = 4000;
constexpr int kForeignLines = 3000;

CString Said(int number) {
  CString text;
  text.Format(L"#%d#", number);
  return text;
}

template <size_t kRoom>
void Say(int number, wchar_t (&field)[kRoom]) {
  const CString text = Said(number);
  text.GetView().copy(field, kRoom - 1);
  field[text.GetLength()] = L'\0';
}

void FillLine(CVaglinje* line, int number, int typ) {
  for (int i = 0; i < kPoints; ++i) {
    const kovltype point = {.x = i * 7.25, .y = static_cast<double>(number), .bulge = 0, .sek = i * 8.0};
    line->Ny(1, &point);
  }
  line->typ = typ;
  Say(number, line->namn);
}

// The settings of an installation whose folders are all this one.
struct Settings {
  explicit Settings(const CString& folder) {
    ini.m_cfgDir = ini.m_programDir = folder;
    inst.Init(&ini, &project);
  }

  CTundrilIni ini;
  CProjPath project;
  CTundrilInst inst;
};

bool WriteLine(const CString& path, int number) {
  CVaglinje line;
  FillLine(&line, number, 1);
  return line.Uppdat(path) == 0;
}

bool WriteCombined(const CString& path, int number) {
  CVag2 set;
  FillLine(&set.plan, number, 1);
  FillLine(&set.profil, number, 10);
  Say(number, set.vlNamn);
  return set.Uppdat(path) == 0;
}

bool WriteArea(const CString& path, int number) {
  CVag2 set;
  Say(number, set.vlFil);
  CProjPath project;
  project.m_VlPath = path;
  return set.SaveOmr(&project) == 0;
}

bool WritePoints(const CString& path, int number) {
  CStodPunkt points(nullptr);
  stdpkttype point = {};
  Say(number, point.namn);
  for (int i = 0; i < kPoints; ++i) {
    point.z = static_cast<float>(number);
    points.Ny(1, &point);
  }
  return points.Uppdat(path) == 0;
}

bool WriteInProfile(const CString& path, int number) {
  return WriteProfile(L"Section", L"key", Said(number), path);
}

bool WriteContent(const CString& path, int number) {
  return ReplaceFileContent(path, ToUtf8(Said(number)) + std::string(200'000, 'c'));
}

bool WriteParameter(const CString& path, int number) {
  Settings settings(path.Left(path.ReverseFind(L'\\')));
  return settings.inst.WriteKey(L"TUNDRIL.PAR", L"GENERATION", Said(number)) == 0;
}

bool WriteScale(const CString& path, int number) {
  Settings settings(path.Left(path.ReverseFind(L'\\')));
  settings.inst.Jb23WriteKey(L"SJUNKSKALA", Said(number));
  return true;
}

bool WriteCodes(const CString& path, int number) {
  Settings settings(path.Left(path.ReverseFind(L'\\')));
  for (int i = 0; i <= kPoints; ++i)
    settings.inst.KodfilDatWrite(i == 0 ? 1 : i < kPoints ? 0 : 2, Said(number), L"text");
  return true;
}

struct File {
  const wchar_t* name;
  bool (*write)(const CString& path, int number);
};

constexpr File kFiles[] = {
    {L"A.VL", WriteLine},      {L"B.VL", WriteCombined},    {L"TUNDRIL.VL", WriteArea},
    {L"P.STP", WritePoints},   {L"P.INI", WriteInProfile},  {L"TUNDRIL.PAR", WriteParameter},
    {L"JB23.PAR", WriteScale}, {L"KODFIL.DAT", WriteCodes}, {L"CONTENT.BIN", WriteContent}};

}  // namespace

std::vector<CString> GenerationFiles() {
  std::vector<CString> names;
  for (const File& file : kFiles) names.emplace_back(file.name);
  return names;
}

void MakeFilesToRewrite(const CString& folder) {
  std::string foreign;
  for (int i = 0; i < kForeignLines; ++i) foreign += "Somebody's line " + std::to_string(i) + "\r\n";
  std::string keys;
  for (int i = 0; i < kForeignLines; ++i) keys += "KEY" + std::to_string(i) + " value\r\n";
  WriteBytes(folder + L"\\TUNDRIL.VL", foreign + "*\r\n" + foreign + "*\r\n");
  WriteBytes(folder + L"\\P.INI", "[Other]\r\na=b\r\n[Section]\r\n;" + foreign + "key=\r\n");
  WriteBytes(folder + L"\\TUNDRIL.PAR", keys);
  WriteBytes(folder + L"\\JB23.PAR", "1 2\r\n3 4\r\n" + foreign);
  WriteBytes(folder + L"\\KODFIL.DAT", foreign + "*\r\n");
}

bool WriteGeneration(const CString& folder, int number) {
  bool done = true;
  for (const File& file : kFiles) done = file.write(folder + L"\\" + file.name, number) && done;
  return done;
}

int GenerationOf(std::string_view bytes) {
  int number = -1;
  for (size_t at = bytes.find('#'); at != std::string_view::npos; at = bytes.find('#', at + 1)) {
    const std::string_view rest = bytes.substr(at + 1);
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (error == std::errc() && end != rest.data() + rest.size() && *end == '#') return number;
  }
  return -1;
}

}  // namespace velmora
