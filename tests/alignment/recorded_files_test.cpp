// Files as they are read and written back, from recorded/files.txt:
//
//   == alignment             what reads the file: alignment, set, support or area
//   > 0 0 0 0 7 $Name        its lines, in Windows-1252 with CR LF on disk; "~" for one without a line end
//   < 0.0000 0.0000 ...      the file as it is then written
//   ! Fel rad : ...          the texts shown meanwhile
//   ? 3 coincides with ...   of a set, what the checks find, with the number of the point in the plan or
//   profile
#include <gtest/gtest.h>

#include <numeric>
#include <utility>

#include "tests/alignment/shapes.h"
#include "tests/support/recorded_file.h"
#include "velmora/alignment/checks.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/vag2.h"
#include "velmora/platform/files.h"
#include "velmora/text/codepage.h"

namespace velmora {
namespace {

class RecordedFiles : public AlignmentFiles {
 protected:
  RecordedFiles() {
    project_.SetPath(folder_.Path());
    MakeFolder(project_.m_DbfKat);
    WriteBytes(project_.m_DbfKat + L"\\a.vl", "0 0 0 10 1 $namn\r\n0 10 0 20\r\n");
  }

  // The file after it was read and written by an object of this kind.
  std::string Rewritten(const std::string& kind, const std::string& bytes) {
    WriteBytes(file_, bytes);
    int result = 0;
    CVaglinje line;
    CVag2 set;
    if (kind == "alignment") result = line.Init(file_) + line.Uppdat(file_);
    if (kind == "set") result = set.Init(file_) + set.Uppdat(file_);
    Find(CheckPlan, set.plan.Points());
    Find(CheckProfile, set.profil.Points());
    if (kind == "support") result = CStodPunkt(file_).Uppdat(nullptr);
    EXPECT_EQ(result, 0);
    if (kind != "area") return ReadBytes(file_);
    WriteBytes(project_.m_VlPath, bytes);
    const bool read = set.ReadOmr(&project_) == 0;
    EXPECT_EQ(set.plan.Points().size(), read ? 2U : 0U);
    CopyToField(set.vlFil, read ? L"read.vl" : L"refused.vl");
    EXPECT_EQ(set.SaveOmr(&project_), 0);
    return ReadBytes(project_.m_VlPath);
  }

  std::string Answers(const std::string& kind, const std::string& bytes) {
    messages_.status.clear();
    std::wstring text;
    AppendDecoded(Rewritten(kind, bytes), TextEncoding::kWindows1252, &text);
    std::string answers;
    for (std::wstring_view rest = text; !rest.empty();) {
      const size_t end = rest.find(L"\r\n");
      answers += (end == std::wstring_view::npos ? "<~ " : "< ") + Utf8FromWide(rest.substr(0, end)) + "\n";
      rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + 2);
    }
    for (const CString& status : messages_.status) answers += "! " + ToUtf8(status) + "\n";
    return answers + std::exchange(findings_, {});
  }

  void Find(BoundedFindings (*check)(const std::vector<kovltype>&, const std::vector<int>&),
            const std::vector<kovltype>& points) {
    std::vector<int> numbers(points.size());
    std::iota(numbers.begin(), numbers.end(), 1);
    for (const Finding& finding : check(points, numbers).listed) {
      findings_ += "? " + std::to_string(finding.line) + " " + finding.text + "\n";
      EXPECT_FALSE(finding.misread || finding.lost);
    }
  }

  std::string findings_;
  CProjPath project_;
};

TEST_F(RecordedFiles, AreReadAndWrittenAsRecorded) {
  testing::PlayRecorded(
      RecordedFile("files.txt"), [this](const std::string& kind, const testing::Lines& lines) {
        std::string played, bytes;
        for (const std::string& line : lines) {
          const std::string sign = line.substr(0, line.find(' '));
          if (sign != ">" && sign != "~" && sign != "#") continue;
          played += line + "\n";
          if (sign == "#") continue;
          const std::wstring text = WideFromUtf8(line.substr(std::min<size_t>(line.size(), 2)));
          EXPECT_TRUE(AppendEncoded(text, TextEncoding::kWindows1252, &bytes));
          if (sign == ">") bytes += "\r\n";
        }
        return played + Answers(kind, bytes);
      });
  EXPECT_TRUE(messages_.boxes.empty());
}

}  // namespace
}  // namespace velmora
