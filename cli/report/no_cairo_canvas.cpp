#include "cli/report/cairo_canvas.h"
#include "cli/terminal/error.h"

namespace velmora::cli {

const char* WhyNoCairo() {
  return "this build of velmora has no cairo, which PDF and PNG need; choose a name that ends in .html or "
         ".svg";
}

std::unique_ptr<FileCanvas> MakePdfCanvas(const DocumentFacts&, std::function<void(std::string_view)>) {
  throw Refusal(WhyNoCairo());
}

std::unique_ptr<FileCanvas> MakePngCanvas(double, std::function<void(std::string_view)>) {
  throw Refusal(WhyNoCairo());
}

}  // namespace velmora::cli
