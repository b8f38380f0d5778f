// Writes files of the suite again and again until it is killed, each time with another number in them:
//
//   writer FOLDER FIRST STEP    writes FIRST, FIRST + STEP, ...; STEP 0: makes the files, writes FIRST and
//   ends
//
// Everything that differs from one number to the next is its eight digits, "#12345678#" and all over the
// file. A write that fails ends the program and prints the number.
#include <cstdlib>
#include <iostream>
#include <string>

#include "tests/support/test_files.h"
#include "velmora/alignment/vag2.h"
#include "velmora/common/messages.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora {
namespace {

constexpr int kPoints = 4000;  // more than one piece of a write
const std::string kForeignLines = [] {
  std::string lines;
  for (int i = 0; i < 3000; ++i) lines += "Somebody's line " + std::to_string(i) + "\r\n";
  return lines;
}();

CString Mark(int number) {
  CString text;
  text.Format(L"#%d#", number);
  return text;
}

CString FolderOf(const CString& path) { return path.Left(path.ReverseFind(L'\\')); }

// One kind a way to write: a whole file, a part among the lines of others, a key of a profile, an operation
// of several calls with a temporary file of its own.
struct Kind {
  const wchar_t* name;
  std::string content;  // before the first write
  bool (*write)(const CString& path, int number);
};

const Kind kKinds[] = {
    {L"A.VL", "",
     [](const CString& path, int number) {
       CVaglinje line;
       line.typ = 1;
       Mark(number).GetView().copy(line.namn, 10);
       for (int i = 0; i < kPoints; ++i) {
         const kovltype point = {.x = i * 7.25, .y = 1.0 * number, .bulge = 0, .sek = i * 8.0};
         line.Ny(1, &point);
       }
       return line.Uppdat(path) == 0;
     }},
    {L"TUNDRIL.VL", kForeignLines + "*\r\n" + kForeignLines + "*\r\n",
     [](const CString& path, int number) {
       CVag2 set;
       Mark(number).GetView().copy(set.vlFil, 10);
       CProjPath project;
       project.m_VlPath = path;
       project.m_DbfKat = FolderOf(path);
       return set.SaveOmr(&project) == 0;
     }},
    {L"P.INI", "[Other]\r\na=b\r\n[Section]\r\n;" + kForeignLines + "key=\r\n",
     [](const CString& path, int number) { return WriteProfile(L"Section", L"key", Mark(number), path); }},
    {L"KODFIL.DAT", kForeignLines + "*\r\n", [](const CString& path, int number) {
       CTundrilIni ini;
       ini.m_cfgDir = ini.m_programDir = FolderOf(path);
       CProjPath project;
       CTundrilInst settings;
       settings.Init(&ini, &project);
       bool done = true;
       for (int i = 0; i <= kPoints; ++i)
         done = settings.KodfilDatWrite(i == 0 ? 1 : i < kPoints ? 0 : 2, Mark(number), L"text") == 0 && done;
       return done;
     }}};

bool Write(const CString& folder, int number) {
  bool done = true;
  for (const Kind& kind : kKinds) done = kind.write(folder + L"\\" + kind.name, number) && done;
  return done;
}

}  // namespace
}  // namespace velmora

int main(int count, char** arguments) {
  using namespace velmora;
  if (count != 4) return 2;
  SetMessageBoxHandler([](const MessageBoxCall&) { return IDOK; });
  const CString folder = PathFromSystem(arguments[1]);
  const int step = std::atoi(arguments[3]);
  if (step == 0)
    for (const Kind& kind : kKinds) WriteBytes(folder + L"\\" + kind.name, kind.content);
  for (int number = std::atoi(arguments[2]); Write(folder, number); number += step)
    if (step == 0) return 0;
  std::cout << "a write failed" << std::endl;
  return 1;
}
