#include "cli/project/commands.h"
#include "cli/terminal/error.h"
#include "velmora/common/string_table.h"
#include "velmora/project/projekt_status.h"
#include "velmora/text/nearest.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {

void ProjectStatus(const ProjectOptions& options) {
  CProjektStatus states;
  states.SetHandle(LibraryModule());
  states.Load();
  std::vector<Cell> only;
  if (!options.status.empty()) {
    const CString text = FromUtf8(options.status);
    int number = 0;
    NumberScanner scanner(text.GetView());
    const bool is_number = scanner.Next(&number) && scanner.Rest().empty();
    if (!is_number) number = states.Find(text);
    states.SetStatus(number);
    const bool unknown = states.m_nStatus == CProjektStatus::kUnknown;
    const bool by_name = !is_number && text.CompareNoCase(states.GetStatus()) == 0;
    if (unknown && (number != CProjektStatus::kUnknown || (!is_number && !by_name))) {
      std::vector<std::string> known;
      for (int at = states.Home(); at == 0; at = states++ == nullptr ? -1 : 0)
        known.push_back(ToUtf8(states.pael->text));
      throw Refusal(Quoted(options.status) + " is not a project status; velmora project status lists them" +
                    DidYouMean(options.status, known));
    }
    only = {static_cast<std::int64_t>(number), ToUtf8(states.GetStatus())};
  }
  OutputFile output(options.output.file, {});
  RecordWriter records(output, options.output.Format(), {{"number", "number", true}, {"text", "text"}});
  if (!only.empty()) records.Row(only);
  for (int at = only.empty() ? states.Home() : -1; at == 0; at = states++ == nullptr ? -1 : 0)
    records.Row({static_cast<std::int64_t>(states.pael->nummer), ToUtf8(states.pael->text)});
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
