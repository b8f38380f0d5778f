// KODFIL.DAT, MILJKOD.DAT, LINKOD.PAR and title-block files.
#include <cwchar>

#include "tests/settings/settings_folders.h"
#include "velmora/settings/code_lines.h"

namespace velmora {
namespace {

class CodeFiles : public SettingsFolders {
 protected:
  // What the readers deliver to the end, "code|text" and so on, and the end's result.
  std::vector<CString> ObjectCodes() {
    std::vector<CString> all;
    int result = 0;
    while ((result = inst_.KodfilDatRead(code_, text_)) == 0) all.push_back(CString(code_) + L"|" + text_);
    EXPECT_EQ(result, -1);
    return all;
  }
  std::vector<CString> Miljkods(int section, bool limits) {
    std::vector<CString> all;
    int max = 0, step = 0;
    while (inst_.MiljkodRead(section, code_, text_, limits ? &max : nullptr, limits ? &step : nullptr) == 0) {
      CString entry;
      entry.Format(limits ? L"%s|%s|%d|%d" : L"%s|%s", CString(code_), CString(text_), max, step);
      all.push_back(entry);
    }
    return all;
  }
  std::vector<CString> Lines() {
    std::vector<CString> all;
    for (;;) {
      double number = 0;
      int value = 0;
      const int result = inst_.LinkodRead(code_, word_, text_, &number, &value);
      CString line;
      line.Format(result > 0 ? L"%d|%s|%s|%.2f|%d|%s" : L"%d", result, CString(code_), CString(word_), number,
                  value, CString(text_));
      all.push_back(line);
      if (result == 0 || result == -1) return all;
    }
  }

  wchar_t code_[40] = {}, word_[40] = {}, text_[260] = {};
};

TEST_F(CodeFiles, ObjectCodes) {
  EXPECT_TRUE(ObjectCodes().empty());
  EXPECT_EQ(inst_.KodfilDatWrite(3, L"A", L"b"), 0);
  EXPECT_TRUE(NamesIn(At(L"cfg")).empty());
  Put(L"cfg\\KODFIL.DAT", "rubrik utan slut\r\nA b\r\n");
  EXPECT_TRUE(ObjectCodes().empty());
  const CString path =
      Put(L"cfg\\KODFIL.DAT",
          "Rubrik f\xF6r h\xE5l\n*\xC4ndras ej\nB\xC5 borrh\xE5l i lera\n\nensam\n*\n 1\t2 3\n");
  EXPECT_EQ(ObjectCodes(), (std::vector<CString>{L"B\u00C5|borrh\u00E5l", L"1|2"}));
  // The central file is written while the project has none.
  inst_.KodfilDatWrite(0, L"X", L"f\u00F6r tidigt");
  inst_.KodfilDatWrite(1, L"A", L"\u00E5 \u00E4");
  inst_.KodfilDatWrite(0, L"", L"tomt");
  inst_.KodfilDatWrite(0, L"B", L"");
  EXPECT_EQ(ReadBytes(path).find("A "), std::string::npos);  // until it is finished
  inst_.KodfilDatWrite(2, L"C", L"c");
  const std::string written = "Rubrik f\xF6r h\xE5l\r\n*\xC4ndras ej\r\nA \xE5 \xE4\r\nB \r\nC c\r\n*\r\n";
  EXPECT_EQ(ReadBytes(path), written);
  Put(L"proj\\KODFIL.DAT", "*\r\n");
  inst_.KodfilDatWrite(3, L"P", L"p");
  EXPECT_EQ(Bytes(L"proj\\KODFIL.DAT"), "*\r\nP p\r\n*\r\n");
  EXPECT_EQ(ReadBytes(path), written);

  // Buffers hold what fits of a word.
  wchar_t small_code[3], small_text[1];
  Put(L"proj\\KODFIL.DAT", "*\r\nKOD text\r\n");
  EXPECT_EQ(inst_.KodfilDatRead(small_code, small_text), 0);
  EXPECT_TRUE(CString(small_code) == L"KO" && small_text[0] == L'\0');
  EXPECT_EQ(inst_.KodfilDatRead(small_code, small_text), -1);
  EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(CodeFiles, ARewriteThatIsNotFinishedOrMeetsAForeignLetterLeavesTheFile) {
  const std::string kodfil = "*\r\nA a\r\n*\r\n", linkod = "K W 1 2\r\n*\r\n";
  Put(L"cfg\\KODFIL.DAT", kodfil);
  Put(L"cfg\\KODFIL.tmp", "annans");
  Put(L"cfg\\LINKOD.PAR", linkod);
  Put(L"cfg\\stamp.par", "NONE x 1 2\r\n");
  inst_.KodfilDatWrite(1, L"B", L"b");
  EXPECT_EQ(inst_.LinkodWrite(1, L"", L"", L"", L"", L""), 0);  // gives the other up
  EXPECT_EQ(inst_.LinkodWrite(2, L"\u0416", L"w", L"1", L"", L""), 0);
  EXPECT_EQ(inst_.LinkodWrite(5, L"", L"", L"", L"", L""), -1);
  EXPECT_EQ(inst_.StampParWrite(At(L"cfg\\stamp.par"), 1, L"", L"", L"", L"", L""), 0);
  EXPECT_EQ(ObjectCodes(), std::vector<CString>{});  // ends the sequence
  EXPECT_EQ(inst_.StampParWrite(L"", 2, L"", L"", L"", L"", L""), -1);
  EXPECT_EQ(Bytes(L"cfg\\KODFIL.DAT") + Bytes(L"cfg\\LINKOD.PAR") + Bytes(L"cfg\\stamp.par"),
            kodfil + linkod + "NONE x 1 2\r\n");
  EXPECT_EQ(NamesIn(At(L"cfg")), (std::vector<CString>{L"KODFIL.DAT", L"LINKOD.PAR", L"stamp.par"}));
  EXPECT_EQ(TakeMessages(), (std::vector<CString>{L"Skrivning av Tundril - Linkod.par inst\u00E4llningar|Kan "
                                                  L"inte \u00F6ppna -filen\n@\\cfg\\LINKOD.PAR\nAvbryter!"}));
  // The stream is shared: a read that was left goes on, whatever is asked for, and in a copy too.
  Put(L"cfg\\KODFIL.DAT", "*\r\nA a\r\nB b\r\n");
  ASSERT_EQ(inst_.KodfilDatRead(code_, text_), 0);
  CTundrilInst copy(inst_);
  EXPECT_EQ(copy.MiljkodRead(3, code_, text_, nullptr, nullptr), 0);
  EXPECT_STREQ(code_, L"B");
  EXPECT_EQ(inst_.KodfilDatRead(code_, text_), -1);
  EXPECT_EQ(copy.KodfilDatRead(code_, text_), 0);
}

TEST_F(CodeFiles, MessagesWhenAFileCannotBeOpened) {
  for (const wchar_t* name : {L"proj\\KODFIL.DAT", L"proj\\MILJKOD.DAT", L"proj\\LINKOD.PAR"})
    MakeFolder(At(name));
  double number = 0;
  int value = 0;
  EXPECT_EQ(inst_.KodfilDatRead(code_, text_), -1);
  EXPECT_EQ(inst_.KodfilDatWrite(3, L"A", L"a"), 0);
  EXPECT_EQ(inst_.MiljkodRead(1, code_, text_, nullptr, nullptr), -1);
  EXPECT_EQ(inst_.MiljKodWrite(1, L"", L"", 0, 0), 0);
  EXPECT_EQ(inst_.MiljKodWrite(7, L"", L"", 0, 0), -1);
  EXPECT_EQ(inst_.LinkodRead(code_, word_, text_, &number, &value), -1);
  EXPECT_EQ(inst_.StampParRead(At(L"finns ej"), code_, word_, &number, &number, &number), -1);
  EXPECT_EQ(inst_.StampParRead(L"", code_, word_, &number, &number, &number), 0);
  EXPECT_EQ(inst_.StampParWrite(At(L"finns ej\\x"), 1, L"", L"", L"", L"", L""), 0);
  const CString read = L"\nAvbryter l\u00E4sning!",
                ends = L" inst\u00E4llningar|Kan inte \u00F6ppna -filen\n@\\";
  EXPECT_EQ(
      TakeMessages(),
      (std::vector<CString>{
          L"L\u00E4sning av Velmora - kodfil.dat" + ends + L"proj\\KODFIL.DAT" + read,
          L"Skrivning av Tundril - kodfil.dat" + ends + L"proj\\KODFIL.DAT\n@\\proj\\KODFIL.tmp\nAvbryter!",
          L"L\u00E4sning av Tundril - Miljkod.dat" + ends + L"proj\\MILJKOD.DAT" + read,
          L"Skrivning av Tundril - Miljkod.dat" + ends + L"proj\\MILJKOD.DAT\nAvbryter!",
          L"L\u00E4sning av Tundril - Linkod.dat" + ends + L"proj\\LINKOD.PAR" + read,
          L"L\u00E4sning av Tundril - St\u00E4mpel" + ends + L"finns ej" + read,
          L"Skrivning av Tundril - St\u00E4mpel" + ends + L"finns ej\\x\nAvbryter!"}));
  inst_.MiljkodUppdatX();
  EXPECT_EQ(TakeMessages().size(), 4u);  // three sections and the rewrite
}

TEST(MiljkodFormat, Limits) {
  const struct {
    const wchar_t* text;
    const wchar_t* left;
    int max, step;
  } kCases[] = {{L"F\u00F6roreningsklass max=6 steg=1", L"F\u00F6roreningsklass", 6, 1},
                {L"Klass MAX=6  StEg=7 ", L"Klass", 6, 7},
                {L"Klass max=6", L"Klass", 6, 20},
                {L"Klass steg=5", L"Klass", 100, 5},
                {L"Klass steg=5 max=6", L"Klass", 100, 5},
                {L"Klass max=0 steg=0", L"Klass", 0, 20},
                {L"Klass max=100000 steg=100001", L"Klass", 100000, 20},
                {L"Klass max=99999999999 steg=x", L"Klass", 100, 20},
                {L"Massa = ingen gr\u00E4ns", L"Massa = ingen gr\u00E4ns", 100, 20},
                {L"steg=5", L"steg=5", 100, 20},
                {L"max=6 steg=1 l\u00F6s", L"max=6 steg=1 l\u00F6s", 100, 20},
                {L"", L"", 100, 20}};
  for (const auto& c : kCases) {
    CString text = c.text;
    const MiljkodLimits limits = TakeMiljkodLimits(&text);
    EXPECT_EQ(text, c.left) << ToUtf8(c.text);
    EXPECT_TRUE(limits.max == c.max && limits.step == c.step)
        << ToUtf8(c.text) << limits.max << ' ' << limits.step;
  }
}

TEST_F(CodeFiles, EnvironmentalCodesBySection) {
  EXPECT_EQ(inst_.MiljKodWrite(2, L"A", L"a", 0, 0), -1);
  EXPECT_TRUE(inst_.MiljKodWrite(1, L"", L"", 0, 0) == 0 && NamesIn(At(L"cfg")).empty());
  Put(L"cfg\\MILJKOD.DAT",
      "huvud\r\n*\r\n*\r\nX ok\xE4nd \r\n\r\n  ABCD  fyra \xE5 max=2 \r\nABCDE fem\r\nA\r\n*\r\n*\r\nK1 "
      "Klass X K1 max=3 steg=2\r\n");
  EXPECT_TRUE(Miljkods(0, false).empty());
  EXPECT_EQ(Miljkods(1, false), (std::vector<CString>{L"X|ok\u00E4nd", L"ABCD|fyra \u00E5 max=2", L"A|"}));
  EXPECT_EQ(TakeMessages(),
            (std::vector<CString>{L"Velmora|Fel rad, namn \u00E4r f\u00F6r l\u00E5ngt\nABCDE fem"}));
  EXPECT_TRUE(Miljkods(2, false).empty() && Miljkods(7, true).empty());
  EXPECT_EQ(Miljkods(3, true), (std::vector<CString>{L"K1|Klass X K1|3|2"}));
  EXPECT_EQ(Miljkods(3, false), (std::vector<CString>{L"K1|Klass X K1 max=3 steg=2"}));

  EXPECT_EQ(inst_.MiljkodUppdatX(), 0);
  const std::string updated =
      "*\r\n*\r\nX ok\xE4nd\r\nABCD fyra \xE5 max=2\r\nA \r\n*\r\nTOLK Tolkad klassificering\r\n*\r\n"
      "K1 Klass X K1 max=3 steg=2\r\nFK F\xF6roreningsklass max=6 steg=1\r\n*\r\n";
  EXPECT_EQ(Bytes(L"cfg\\MILJKOD.DAT"), updated);
  const auto modified = GetFileStatus(At(L"cfg\\MILJKOD.DAT"))->modified;
  inst_.MiljkodUppdatX();
  EXPECT_EQ(GetFileStatus(At(L"cfg\\MILJKOD.DAT"))->modified, modified);
  EXPECT_EQ(TakeMessages().size(), 1u);  // the long name, once more before it went
}

TEST_F(CodeFiles, ASectionThatNoSuiteWroteIsNotRewritten) {
  std::string bytes = "*\r\n*\r\n";
  for (int i = 0; i < 140'000; ++i) bytes += "a\n";
  Put(L"cfg\\MILJKOD.DAT", bytes);
  EXPECT_EQ(inst_.MiljkodUppdatX(), 0);
  EXPECT_TRUE(Bytes(L"cfg\\MILJKOD.DAT") == bytes);
  EXPECT_EQ(TakeMessages().size(), 1U);
}

TEST_F(CodeFiles, LineCodes) {
  EXPECT_EQ(Lines(), (std::vector<CString>{L"0"}));
  const std::string forty(40, 'k');
  Put(L"prog\\LINKOD.PAR",
      "V\xC4G CONTINUOUS 0.5 7                             bred v\xE4g \r\nPV12 W 1\r\nPV150 W 1.5 2\r\nPVX "
      "W "
      "1\r\nPV W 1\r\n"
      "PV99999999999 W 2\r\nett tv\xE5\r\nA B x\r\n" +
          forty + " W 1e2 9\r\n* slut\r\nefter E 1 1\r\n");
  EXPECT_EQ(Lines(), (std::vector<CString>{L"1|V\u00C4G|CONTINUOUS|0.50|7|bred v\u00E4g", L"2|12|W|1.00|0|",
                                           L"3|150|W|1.50|2|", L"1|PVX|W|1.00|0|", L"1|PV|W|1.00|0|",
                                           L"3|99999999999|W|2.00|0|", L"-2", L"-2",
                                           L"1|" + CString(L'k', 39) + L"|W|100.00|9|", L"0"}));
  EXPECT_EQ(inst_.LinkodWrite(2, L"", L"", L"", L"", L""), -1);
  inst_.LinkodWrite(1, L"", L"", L"", L"", L"");
  inst_.LinkodWrite(2, L"V\u00C4G", L"CONTINUOUS", L"0.5", L"bred v\u00E4g", L"ej");
  inst_.LinkodWrite(4, L"120", L"W", L"2.50", L"", L"3");
  inst_.LinkodWrite(2, CString(L'x', 45), L"W", L"1", L"text", L"");
  inst_.LinkodWrite(5, L"", L"", L"", L"", L"");
  EXPECT_EQ(Bytes(L"prog\\LINKOD.PAR"), "V\xC4G CONTINUOUS 0.5" + std::string(31, ' ') +
                                            "bred v\xE4g\r\nPV120 W 2.50 3" + std::string(35, ' ') + "\r\n" +
                                            std::string(45, 'x') + " W 1text\r\n*\r\n");
  EXPECT_EQ(Lines()[0], L"1|V\u00C4G|CONTINUOUS|0.50|0|bred v\u00E4g");
}

TEST_F(CodeFiles, TitleBlocks) {
  const CString path = At(L"stamp.par");
  EXPECT_EQ(inst_.StampParWrite(path, 2, L"", L"", L"", L"", L""), -1);
  inst_.StampParWrite(path, 1, L"", L"", L"", L"", L"");
  inst_.StampParWrite(L"", 2, L"KUND", L"Gr\u00E4vbolaget", L"10.5", L"20", L"2.5");
  inst_.StampParWrite(L"", 2, L"SKALA", L"1:200", L"1", L"2", L"");
  inst_.StampParWrite(L"", 2, L"LOGO", L"x", L"1", L"", L"");
  EXPECT_EQ(inst_.StampParWrite(L"", 3, L"", L"", L"", L"", L""), 0);
  EXPECT_EQ(ReadBytes(path), "KUND Gr\xE4vbolaget 10.5 20 2.5\r\nSKALA 1:200 1 2 \r\nLOGO x 1  \r\n");
  double a = 0, b = 0, c = 0;
  EXPECT_EQ(inst_.StampParRead(path, code_, word_, &a, &b, &c), 1);
  EXPECT_TRUE(CString(word_) == L"Gr\u00E4vbolaget" && a == 10.5 && b == 20 && c == 2.5);
  EXPECT_EQ(inst_.StampParRead(L"", code_, word_, &a, &b, &c), 1);
  EXPECT_TRUE(CString(code_) == L"SKALA" && c == 3);
  EXPECT_EQ(inst_.StampParRead(L"", code_, word_, &a, &b, &c), -2);
  EXPECT_EQ(inst_.StampParRead(L"", code_, word_, &a, &b, &c), 0);
}

}  // namespace
}  // namespace velmora
