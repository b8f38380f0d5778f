#include "cli/report/cairo_canvas.h"
#include "cli/terminal/error.h"

namespace velmora::cli {

const char* WhyNoCairo() {
  return "this build of velmora has no cairo, which PDF and PNG need; choose a name that ends in .html or "
         ".svg";
}

// NOLINTBEGIN(performance-unnecessary-value-param): declared for those that keep it
std::unique_ptr<FileCanvas> MakePdfCanvas(const DocumentFacts&, std::function<void(std::string_view)>) {
  throw Refusal(WhyNoCairo());
}

std::unique_ptr<FileCanvas> MakePngCanvas(double, std::function<void(std::string_view)>) {
  throw Refusal(WhyNoCairo());
}
// NOLINTEND(performance-unnecessary-value-param)

}  // namespace velmora::cli
