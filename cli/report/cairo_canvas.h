// Drawings as PDF and PNG, through cairo.
#ifndef VELMORA_CLI_REPORT_CAIRO_CANVAS_H_
#define VELMORA_CLI_REPORT_CAIRO_CANVAS_H_

#include <functional>
#include <memory>
#include <string_view>

#include "cli/report/document_facts.h"
#include "velmora/drawing/canvas.h"

namespace velmora::cli {

// Why this build of the command makes neither PDF nor PNG, and what to do; null where it does.
const char* WhyNoCairo();

class FileCanvas : public drawing::Canvas {
 public:
  // Writes the rest. To be called last; without it the file is not whole.
  virtual void Finish() = 0;
};

// What these throw: a Refusal where the font is missing or cairo fails, and what `write` throws.

// A page a sheet of exactly its size, labelled with its number and listed in the outline by its title.
// Vectors, with text that can be searched; the font is embedded. `write` receives the bytes in order.
std::unique_ptr<FileCanvas> MakePdfCanvas(const DocumentFacts& facts,
                                          std::function<void(std::string_view)> write);

// A picture a sheet on white; `write` receives the whole file of each sheet in turn.
std::unique_ptr<FileCanvas> MakePngCanvas(double dots_per_inch, std::function<void(std::string_view)> write);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_CAIRO_CANVAS_H_
