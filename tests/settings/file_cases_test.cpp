// The settings and code files: tests/settings/file_cases.txt is played case by case, and what the model and
// the facade answer must be what it says. VELMORA_RECORD=1 writes the answers into the file instead, to be
// reviewed with git diff.
//
//   == name                      a case, with an empty project, configuration and program folder
//   > file PATH, > lf PATH       a file of the lines "| " that follow, Windows-1252 with CR LF; with LF and
//   no
//                                line end behind the last
//   > folder PATH, > lock PATH, > unlock PATH
//   > show PATH                  the file's lines; > names PATH: what is in a folder
//   > model KIND PATH            its entries and its findings, "line! text", where "(kept)" is not lost by a
//                                rewrite and "(read)" is not misread
//   > settings FILE PATH         all keys with the values that apply, the content of PATH read as FILE
//
//   > read KIND [PATH|SIZE]      what the facade delivers until the sequence ends, each after its result
//   > next KIND [PATH|SIZE]      a single call
//   > write KIND MODE [text|...] a call; here and below only a result other than 0 is shown
//   > update                     MiljkodUppdatX
//
//   > open CLASS [PATH]          cfg, of the path or in memory; ini, beside that one; par, par0 to par2,
//                              none for par without an installation; jb23
//   > get KEY, > set KEY=VALUE   what FindKey and ReadKey, and WriteKey, of that object answer
//   > records                    how many there are, which is current, and GetParFilNamn
//
//   > init                       the facade, again
//   > value FILE KEY             its text, integer and real, and the last two of the built-in default
//   > put FILE KEY=VALUE         a text; "KEY:5" an integer, "KEY:2.5:3" a real with three decimals
//   > rig KEY, > rig KEY=VALUE   Jb23ReadKey and Jb23WriteKey
//   > local WORD [N [N]]         create, stones, remove, removestones, has, hasstones
//
// KIND is objects, lines, stamp, settings or rig, for the model "environment" and for the facade "section1",
// with its limits "limits1". Boxes are shown as "[caption|text]", their line ends as "/".
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <functional>
#include <memory>
#include <sstream>
#include <thread>

#include "tests/support/recorded_file.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/run_command.h"
#include "tests/support/test_files.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_files.h"
#include "velmora/settings/jb23_par.h"
#include "velmora/settings/parameter_files.h"
#include "velmora/settings/settings_text.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/settings/tundril_par.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

using Texts = testing::Lines;

Texts Split(const std::string& text, char separator) {
  Texts parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

std::string Shown(const CString& text) {
  std::string shown = ToUtf8(text);
  std::replace(shown.begin(), shown.end(), '\n', '/');
  return shown;
}

// A project and an installation with their three folders.
class SettingsFolders : public ::testing::Test {
 protected:
  SettingsFolders() {
    for (const wchar_t* name : {L"proj", L"cfg", L"prog"}) MakeFolder(folder_.File(name));
    ini_.m_cfgDir = folder_.File(L"cfg");
    ini_.m_programDir = folder_.File(L"prog");
    project_.SetPath(folder_.File(L"proj"));
    inst_.Init(&ini_, &project_);
  }

  CString At(const wchar_t* path) const { return folder_.File(path); }
  CString Put(const wchar_t* path, std::string_view bytes) const {
    WriteBytes(At(path), bytes);
    return At(path);
  }
  std::string Bytes(const wchar_t* path) const { return ReadBytes(At(path)); }

  // The boxes so far, "caption|text", and none left. The test's folder is shown as "@".
  std::vector<CString> TakeMessages() {
    std::vector<CString> shown;
    for (const MessageBoxCall& box : messages_.boxes) {
      CString text = box.caption + L"|" + box.text;
      for (int at = text.Find(folder_.Path()); at >= 0; at = text.Find(folder_.Path()))
        text = text.Left(at) + L"@" + text.Mid(at + folder_.Path().GetLength());
      shown.push_back(text);
    }
    messages_.boxes.clear();
    return shown;
  }

  TemporaryFolder folder_;
  RecordedMessages messages_;
  CTundrilIni ini_;
  CProjPath project_;
  CTundrilInst inst_;
};

class FileCases : public SettingsFolders {
 public:
  void TestBody() override {}

  // The case with the answers that it gets now.
  std::string Play(const Texts& lines) {
    std::string played;
    for (size_t i = 0; i < lines.size(); ++i) {
      if (lines[i].starts_with("#")) played += lines[i] + "\n";
      if (!lines[i].starts_with("> ")) continue;
      played += lines[i] + "\n";
      const Texts words = Split(lines[i].substr(2), ' ');
      if (words[0] == "file" || words[0] == "lf") {
        CString content;
        const wchar_t* const end = words[0] == "lf" ? L"\n" : L"\r\n";
        for (; i + 1 < lines.size() && lines[i + 1].starts_with("| "); ++i) {
          played += lines[i + 1] + "\n";
          content += FromUtf8(lines[i + 1].substr(2)) + end;
        }
        if (words[0] == "lf") content = content.Left(content.GetLength() - 1);
        std::string bytes;
        EXPECT_TRUE(AppendEncoded(content.GetView(), TextEncoding::kWindows1252, &bytes));
        Put(FromUtf8(words[1]), bytes);
        continue;
      }
      played += Answer(words, lines[i]);
      for (const CString& box : TakeMessages()) played += "[" + Shown(box) + "]\n";
    }
    return played;
  }

 private:
  std::string Answer(const Texts& words, const std::string& command) {
    const std::string& verb = words[0];
    const CString path = words.size() > 1 ? At(FromUtf8(words[1])) : CString();
    if (verb == "folder") MakeFolder(path);
    if (verb == "lock" || verb == "unlock") SetWriteProtected(path, verb == "lock");
    if (verb == "update") inst_.MiljkodUppdatX();
    if (verb == "init") inst_.Init(&ini_, &project_);
    if (verb == "model") return Model(words[1], LinesOf(words[2]));
    if (verb == "settings") {
      std::string all;
      const Settings settings(ParameterFileNamed(FromUtf8(words[1])), LinesOf(words[2]));
      for (const Setting& setting : settings.All())
        all += ToUtf8(setting.key + L"=" + setting.value) + (setting.stored ? " (file)" : "") +
               (setting.built_in ? "\n" : " (no default)\n");
      return all;
    }
    if (verb == "names") {
      std::string names;
      for (const CString& name : NamesIn(path)) names += (names.empty() ? "" : " ") + ToUtf8(name);
      return "(" + names + ")\n";
    }
    if (verb == "show") return Content(ReadBytes(path));
    if (verb == "open") Open(words[1], words.size() > 2 ? At(FromUtf8(words[2])) : CString());
    if (verb == "get" || verb == "records") return verb == "get" ? get_(Rest(command, "get ")) : records_();
    if (verb == "set") return Result(set_(Key(Rest(command, "set ")), Value(command)));
    if (verb == "value") return Values(FromUtf8(words[1]), FromUtf8(words[2]));
    if (verb == "put") return Result(PutValue(FromUtf8(words[1]), words[2], Rest(command, words[1] + " ")));
    if (verb == "rig") {
      const CString key = Rest(command, "rig ");
      const bool write = key.Find(L'=') >= 0;
      return "\"" + ToUtf8(write ? inst_.Jb23WriteKey(Key(key), Value(command)) : inst_.Jb23ReadKey(key)) +
             "\"\n";
    }
    if (verb == "local") return Result(Local(words));
    if (verb == "write") {
      const size_t fields = command.find(words[2], command.find(words[1])) + words[2].size() + 1;
      Texts texts = Split(fields < command.size() ? command.substr(fields) : "", '|');
      texts.resize(6);
      return Result(Write(words[1], std::stoi(words[2]), texts));
    }
    std::string all;
    for (bool more = verb == "read" || verb == "next"; more; more = more && verb == "read") {
      CString text;
      const int result = Read(words[1], words.size() > 2 ? words[2] : "", &text);
      const bool by_result = words[1] == "lines" || words[1] == "stamp";
      const bool delivered = by_result ? result > 0 : result == 0;
      more = delivered || result == -2;
      all += std::to_string(result) + (delivered ? " " + ToUtf8(text) : "") + "\n";
    }
    return all;
  }

  static std::string Result(int result) { return result == 0 ? "" : std::to_string(result) + "\n"; }
  static CString Rest(const std::string& command, const std::string& before) {
    return FromUtf8(command.substr(command.find(before) + before.size()));
  }
  static CString Key(const CString& text) { return text.Left(text.Find(L'=')); }
  static CString Value(const std::string& command) { return Rest(command, "="); }

  static std::string Content(const std::string& bytes) {
    std::wstring text;
    AppendDecoded(bytes, TextEncoding::kWindows1252, &text);
    std::string shown;
    for (std::string line : Split(ToUtf8(CString(std::wstring_view(text))), '\n')) {
      const bool ended = line.ends_with('\r');
      if (ended) line.pop_back();
      shown += "| " + line + (ended ? "\n" : " (no CR LF)\n");
    }
    return shown;
  }

  template <class List, class... Arguments>
  void Hold(const Arguments&... arguments) {
    const auto list = std::make_shared<List>(arguments...);
    get_ = [=](const CString& key) {
      return std::to_string(list->FindKey(key)) + " " + ToUtf8(list->ReadKey(key)) + "\n";
    };
    set_ = [=](const CString& key, const CString& value) { return list->WriteKey(key, value); };
    records_ = [=, from = folder_.Path().GetLength()] {
      CString name;
      if constexpr (!std::is_same_v<List, CTundrilCFG>) name = list->GetParFilNamn().Mid(from);
      int count = 0;
      const int at = list->Where(&count);
      return std::to_string(at) + " of " + std::to_string(count) + " " + ToUtf8(name) + "\n";
    };
  }
  void Open(const std::string& name, const CString& path) {
    if (name == "ini") ini_.m_iniPath = path;
    if (name == "ini") return Hold<CTundrilCFG>(&ini_);
    if (name == "cfg") return Hold<CTundrilCFG>(L"Karsk", path);
    if (name == "jb23") return Hold<CJb23Par>(&ini_, &project_);
    if (name == "par") return Hold<CTundrilPAR>(&ini_, &project_);
    if (name == "none") return Hold<CTundrilPAR>(nullptr, nullptr);
    Hold<CTundrilPAR>(&ini_, &project_, name.back() - '0');
  }

  std::string Values(const CString& file, const CString& key) {
    std::string values = ToUtf8(inst_.ReadKey(file, key));
    for (const int only_default : {0, 1})
      values += " " + std::to_string(inst_.ReadKeyInt(file, key, only_default)) + " " +
                FormatShortest(inst_.ReadKeyDouble(file, key, only_default));
    return values + "\n";
  }
  int PutValue(const CString& file, const std::string& word, const CString& text) {
    const Texts parts = Split(word, ':');
    if (parts.size() == 1) return inst_.WriteKey(file, Key(text), text.Mid(text.Find(L'=') + 1));
    const CString key = FromUtf8(parts[0]);
    return parts.size() == 2 ? inst_.WriteKey(file, key, std::stoi(parts[1]))
                             : inst_.WriteKey(file, key, std::stod(parts[1]), std::stoi(parts[2]));
  }
  int Local(const Texts& words) {
    const int first = words.size() > 2 ? std::stoi(words[2]) : 0;
    const std::string& verb = words[1];
    if (verb == "create") return inst_.CreateLokalaFiler(first, std::stoi(words[3]));
    if (verb == "stones") return inst_.CreateLokalStenFil(first);
    if (verb == "remove") return inst_.RemoveLokalaFiler();
    if (verb == "removestones") return inst_.RemoveLokalStenFil();
    return verb == "has" ? inst_.ProjInst() : inst_.ProjStenInst();
  }

  TextLines LinesOf(const std::string& path) const {
    TextLines lines;
    ReadTextLines(At(FromUtf8(path)), &lines);
    return lines;
  }

  static std::string Model(const std::string& name, const TextLines& lines) {
    const Texts kNames = {"objects", "environment", "lines", "stamp", "settings", "rig"};
    const auto kind =
        static_cast<SettingsFileKind>(std::find(kNames.begin(), kNames.end(), name) - kNames.begin());
    std::string shown;
    if (kind < SettingsFileKind::kSettings) {
      for (const CodeEntry& entry : ReadCodeFile(kind, lines).entries) {
        shown += std::to_string(entry.line) + (entry.section > 0 ? "/" + std::to_string(entry.section) : "") +
                 " " + ToUtf8(entry.code);
        for (const CString& field : entry.fields) shown += "|" + ToUtf8(field);
        shown += "\n";
      }
    } else {
      for (const StoredSetting& setting : ReadStoredSettings(name == "rig", lines).settings)
        shown += ToUtf8(setting.key + L"=" + setting.value) + "\n";
    }
    for (const Finding& finding : CheckSettingsText(kind, lines))
      shown += std::to_string(finding.line) + "! " + finding.text + (finding.lost ? "" : " (kept)") +
               (finding.misread ? "" : " (read)") + "\n";
    return shown;
  }

  int Read(const std::string& kind, const std::string& where, CString* text) {
    const int size = kind == "stamp" || where.empty() ? 40 : std::stoi(where);
    std::vector<wchar_t> a(static_cast<size_t>(size)), b(a), c(a);
    int max = 0, step = 0, result = 0;
    double n[3] = {};
    const bool limits = kind.starts_with("limits");
    CString numbers;
    if (kind == "objects") {
      result = inst_.KodfilDatRead(a.data(), size, b.data(), size);
    } else if (kind == "lines") {
      result = inst_.LinkodRead(a.data(), size, b.data(), size, c.data(), size, &n[0], &max);
      numbers.Format(L"|%.2f|%d|%s", n[0], max, CString(c.data()));
    } else if (kind == "stamp") {
      const CString path = where.empty() ? CString() : At(FromUtf8(where));
      result = inst_.StampParRead(path, a.data(), size, b.data(), size, &n[0], &n[1], &n[2]);
      numbers.Format(L"|%.2f|%.2f|%.2f", n[0], n[1], n[2]);
    } else {
      result = inst_.MiljkodRead(kind.back() - '0', a.data(), size, b.data(), size, limits ? &max : nullptr,
                                 limits ? &step : nullptr);
      if (limits) numbers.Format(L"|%d|%d", max, step);
    }
    *text = CString(a.data()) + L"|" + b.data() + numbers;
    return result;
  }

  int Write(const std::string& kind, int mode, const Texts& texts) {
    std::vector<CString> t;
    for (const std::string& text : texts) t.push_back(FromUtf8(text));
    if (kind == "objects") return inst_.KodfilDatWrite(mode, t[0], t[1]);
    if (kind == "lines") return inst_.LinkodWrite(mode, t[0], t[1], t[2], t[3], t[4]);
    if (kind == "stamp")
      return inst_.StampParWrite(t[0].IsEmpty() ? t[0] : At(t[0]), mode, t[1], t[2], t[3], t[4], t[5]);
    return inst_.MiljKodWrite(mode, t[0], t[1], std::atoi(texts[2].c_str()), std::atoi(texts[3].c_str()));
  }

  // Of the object that was opened.
  std::function<std::string(const CString&)> get_;
  std::function<int(const CString&, const CString&)> set_;
  std::function<std::string()> records_;
};

TEST(SettingsFiles, CasesAreAnsweredAsRecorded) {
  testing::PlayRecorded(testing::PathFromEnvironment("VELMORA_SETTINGS_CASES"),
                        [](const auto&, const auto& lines) { return FileCases().Play(lines); });
}

// The stream is shared: a read that was left goes on, whatever is asked for, and in a copy too.
TEST_F(SettingsFolders, ACopyOfTheFacadeGoesOnReading) {
  wchar_t code[40], text[40];
  Put(L"cfg\\KODFIL.DAT", "*\r\nA a\r\nB b\r\n");
  ASSERT_EQ(inst_.KodfilDatRead(code, text), 0);
  CTundrilInst copy(inst_);
  EXPECT_EQ(copy.MiljkodRead(3, code, text, nullptr, nullptr), 0);
  EXPECT_STREQ(code, L"B");
  EXPECT_EQ(inst_.KodfilDatRead(code, text), -1);
  EXPECT_EQ(copy.KodfilDatRead(code, text), 0);
}

TEST_F(SettingsFolders, ASectionLargerThanTheSuiteWritesIsNotRewritten) {
  std::string bytes = "*\r\n*\r\n";
  for (int i = 0; i < 140'000; ++i) bytes += "a\n";
  Put(L"cfg\\MILJKOD.DAT", bytes);
  EXPECT_EQ(inst_.MiljkodUppdatX(), 0);
  EXPECT_TRUE(Bytes(L"cfg\\MILJKOD.DAT") == bytes);
  EXPECT_EQ(TakeMessages().size(), 1U);
}

TEST(LocaleCheckAndFix, APointAfterAnyLocale) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  const std::string text = std::setlocale(LC_CTYPE, nullptr);
  for (const char* name : {"Swedish", "sv_SE.UTF-8", "de_DE.UTF-8"}) std::setlocale(LC_NUMERIC, name);
  if (std::string(std::localeconv()->decimal_point) == ".")
    GTEST_SKIP() << "no locale here has a decimal comma";
  EXPECT_EQ(CTundrilInst::LocaleCheckAndFix(), 0);
  EXPECT_STREQ(std::localeconv()->decimal_point, ".");
  EXPECT_EQ(std::setlocale(LC_CTYPE, nullptr), text);
  std::setlocale(LC_NUMERIC, before.c_str());
}

// Each of two writers finds its own value after every write, also while the other one writes another line.
TEST_F(SettingsFolders, TwoWritersOfRigSettingsLoseNothing) {
  Put(L"cfg\\JB23.PAR", "1 1\r\n1 1\r\n1 1\r\n");
  const auto write = [this](const wchar_t* key) {
    CTundrilInst inst;
    inst.Init(&ini_, &project_);
    for (int i = 100; i < 160; ++i) {
      CString value;
      value.Format(L"%d", i);
      inst.Jb23WriteKey(key, value);
      EXPECT_EQ(inst.Jb23ReadKey(key), value);
    }
  };
  std::thread other([&] { write(L"SJUNKSTEG"); });
  write(L"SJUNKSKALA");
  other.join();
  EXPECT_EQ(Bytes(L"cfg\\JB23.PAR").substr(0, 3), "159");
}

}  // namespace
}  // namespace velmora
