#include "cli/report/stamp.h"

#include <algorithm>
#include <set>

#include "cli/context/settings_lines.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/sheet_frame.h"
#include "velmora/platform/files.h"
#include "velmora/settings/code_files.h"
#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

// What the fields of the suite's settings dialogs say, in its Swedish and its Norwegian set.
enum class Content { kDate, kProject, kRoad, kAuthor, kScale, kSheet, kGiven, kNothing };
struct NamedContent {
  const char* name;
  Content content;
};
constexpr NamedContent kContents[] = {
    {"NONE", Content::kNothing}, {"DATUM", Content::kDate},       {"PROJEKT", Content::kProject},
    {"INNEH", Content::kRoad},   {"SKALA", Content::kScale},      {"RITARE", Content::kAuthor},
    {"RNR", Content::kSheet},    {"LOGO", Content::kNothing},     {"KUND", Content::kGiven},
    {"RAD1", Content::kGiven},   {"RAD2", Content::kGiven},       {"HANDL", Content::kGiven},
    {"UNR", Content::kGiven},    {"PROSJEKT", Content::kProject}, {"TEGNER", Content::kAuthor},
    {"ID", Content::kGiven},     {"POS", Content::kSheet},        {"MÅLESTOKK", Content::kScale},
};

const NamedContent* ContentNamed(const std::string& name) {
  const auto* const found = std::find_if(
      std::begin(kContents), std::end(kContents),
      [&](const NamedContent& c) { return FromUtf8(name).CompareNoCase(FromUtf8(c.name)) == 0; });
  return found == std::end(kContents) ? nullptr : found;
}

double NumberOf(const CodeEntry& entry, StampField field) {
  return ParseNumber(entry.fields[field].GetView()).value_or(0);
}

}  // namespace

std::vector<drawing::StampField> ReadStamp(const std::map<std::string, std::string>& given,
                                           const std::string& road_name, ReportSetup* setup) {
  std::vector<drawing::StampField> stamp;
  std::set<std::string> unused;
  for (const auto& [name, text] : given) unused.insert(name);
  std::string known;
  if (!setup->stamp_file.empty()) {
    const CodeFile file =
        ReadCodeFile(SettingsFileKind::kStamp, TextLinesOf(PathFromSystem(setup->stamp_file)));
    for (const CodeEntry& entry : file.entries) {
      const std::string name = ToUtf8(entry.code);
      const std::string word = ToUtf8(entry.fields[kStampWord]);
      known += (known.empty() ? "" : ", ") + name;
      drawing::StampField field;
      field.x = NumberOf(entry, kStampFirst);
      field.y = NumberOf(entry, kStampSecond);
      field.size = NumberOf(entry, kStampThird);
      std::string from = "text of the field";
      const auto option = std::find_if(given.begin(), given.end(), [&](const auto& one) {
        return FromUtf8(one.first).CompareNoCase(entry.code) == 0;
      });
      const NamedContent* const content = ContentNamed(word);
      if (option != given.end()) {
        unused.erase(option->first);
        field.text = option->second;
        from = "--field";
      } else if (content != nullptr) {
        from = "computed";
        switch (content->content) {
          case Content::kDate:
            field.text = setup->date;
            break;
          case Content::kProject:
            field.text = ToUtf8(NameOfPath(PathFromSystem(setup->project)));
            break;
          case Content::kRoad:
            field.text = road_name;
            break;
          case Content::kAuthor:
            field.text = setup->author;
            break;
          case Content::kScale:
            field.is_scale = true;
            break;
          case Content::kSheet:
            field.is_sheet_number = true;
            break;
          case Content::kGiven:
            from = "empty; give it with --field " + name + "=TEXT";
            break;
          case Content::kNothing:
            from = "nothing is drawn";
        }
        if (field.text.empty() && from == "computed" && !field.is_scale && !field.is_sheet_number)
          from = "not known; give it with --field " + name + "=TEXT";
      } else {
        field.text = word;
      }
      setup->lines.push_back({"field " + name,
                              field.is_scale          ? "the sheet's scale"
                              : field.is_sheet_number ? "the sheet's number"
                                                      : field.text,
                              from});
      if (field.text.empty() && !field.is_scale && !field.is_sheet_number) continue;
      if (!drawing::IsInTitleBlock(field))
        Warn(At(setup->stamp_file,
                "field " + name + " is not drawn: it starts at " + FormatShortest(field.x) + " " +
                    FormatShortest(field.y) + " and is " + FormatShortest(field.size) +
                    " mm high; the title block is " + FormatShortest(drawing::kTitleWidth) + " mm wide and " +
                    FormatShortest(drawing::kTitleHeight) + " mm high, and texts are up to " +
                    FormatShortest(drawing::kLargestStampText) + " mm high"));
      stamp.push_back(std::move(field));
    }
  }
  if (!unused.empty())
    throw Refusal("--field " + *unused.begin() + ": " +
                  (known.empty() ? "no file of title-block fields is in use; give one with --stamp FILE"
                                 : setup->stamp_file + " has the fields " + known));
  return stamp;
}

}  // namespace velmora::cli
