// Files, folders and private profiles.
#include "tests/reliability/operations.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/text_file.h"

namespace velmora::testing {
namespace {

void PrepareOld(Scene& s) {
  s.MakeFile(L"A.TXT", "old\r\n");
  s.MakeFile(L"B.TXT", std::string(150'000, 'b'));
}

bool ReplaceThroughANamedFile(Scene& s) {
  FileReplacement file;
  const bool begun = file.Begin(s.At(L"B.TXT"), s.At(L"B.tmp"));
  file.Abandon();
  return begun && file.Begin(s.At(L"A.TXT"), s.At(L"A.tmp")) && file.Write(std::string(70'000, 'n')) &&
         file.Write("end") && file.Commit();
}

bool WriteText(Scene& s) {
  TextWriter writer;
  if (!writer.Begin(s.At(L"A.TXT"))) return false;
  writer.Write(L"åäö\n");
  writer.WriteAscii(std::string(100'000, '1'));
  return writer.Commit();
}

}  // namespace

Operations FileOperations() {
  const auto profile = Holding(
      L"cfg\\Velmora.ini", "; kept\r\n[SYSTEM]\r\nDOCEXE = old\r\nother line\r\n\r\n[ARKIV]\r\nMAPPAR=x\r\n");
  return {
      {"ReplaceAFile", PrepareOld,
       [](Scene& s) { return ReplaceFileContent(s.At(L"A.TXT"), std::string(150'000, 'n')); }},
      {"MakeAFile", PrepareOld, [](Scene& s) { return ReplaceFileContent(s.At(L"NEW.TXT"), "new"); }},
      {"ReplaceThroughANamedFile", PrepareOld, ReplaceThroughANamedFile},
      {"WriteText", Holding(L"A.TXT", "\xEF\xBB\xBFold\r\n"), WriteText},
      {"CopyOverAFile", PrepareOld,
       [](Scene& s) { return CopyWholeFile(s.At(L"B.TXT"), s.At(L"A.TXT"), false); }},
      {"CopyToAFreeName", PrepareOld,
       [](Scene& s) { return CopyWholeFile(s.At(L"B.TXT"), s.At(L"NEW.TXT"), true); }},
      {.name = "RemoveAFile",
       .prepare = PrepareOld,
       .run = [](Scene& s) { return RemoveWholeFile(s.At(L"A.TXT")); },
       .forgets = true},
      {.name = "RemoveAFolder",
       .prepare = [](Scene& s) { s.MakeFolders(L"F"); },
       .run = [](Scene& s) { return RemoveEmptyFolder(s.At(L"F")); },
       .forgets = true},
      {"MakeAFolder", PrepareOld, [](Scene& s) { return MakeFolder(s.At(L"F")); }},
      {"ChangeAProfile", profile,
       [](Scene& s) { return WriteProfile(L"system", L"DocExe", L"new", s.ini.m_iniPath); }},
      {"ChangeAProfileWithAMark", Holding(L"A.INI", "\xEF\xBB\xBF[S]\r\nk=å\r\n"),
       [](Scene& s) { return WriteProfile(L"S", L"k", L"åäö", s.At(L"A.INI")); }},
      {"MakeAProfile", PrepareOld, [](Scene& s) { return WriteProfile(L"S", L"k", L"v", s.At(L"NEW.INI")); }},
      {"DeleteAKeyOfTheIniFile", profile,
       [](Scene& s) { return s.ini.WriteKey(L"SYSTEM", L"DOCEXE", L""); }}};
}

}  // namespace velmora::testing
