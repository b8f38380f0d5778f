#include "cli/report/cairo_canvas.h"

#include <cairo-pdf.h>

#include <cmath>
#include <cstdint>
#include <exception>
#include <utility>

#include "cli/report/cairo_drawing.h"
#include "cli/terminal/error.h"
#include "velmora/drawing/plain_text.h"
#include "velmora/drawing/scale.h"
#include "velmora/text/utc_text.h"
#include "velmora/version.h"

namespace velmora::cli {
namespace {

constexpr double kInch = 25.4;        // mm
constexpr double kPointsAnInch = 72;  // of PDF

// Takes cairo's bytes. What `write` throws must not pass through cairo, and cairo 1.16 can crash after an
// error of its stream: it is kept for Rethrow, and later bytes are dropped.
class ByteStream {
 public:
  explicit ByteStream(std::function<void(std::string_view)> write) : write_(std::move(write)) {}

  static cairo_status_t Take(void* stream, const unsigned char* bytes, unsigned int length) {
    auto& self = *static_cast<ByteStream*>(stream);
    if (!self.write_) return CAIRO_STATUS_SUCCESS;
    try {
      self.write_({reinterpret_cast<const char*>(bytes), length});
    } catch (...) {
      self.thrown_ = std::current_exception();
      self.Close();
    }
    return CAIRO_STATUS_SUCCESS;
  }
  void Rethrow() {
    if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
  }
  void Close() { write_ = nullptr; }

 private:
  std::function<void(std::string_view)> write_;
  std::exception_ptr thrown_;
};

class PdfCanvas final : public CairoCanvas {
 public:
  PdfCanvas(const DocumentFacts& facts, std::function<void(std::string_view)> write)
      : stream_(std::move(write)),
        surface_(cairo_pdf_surface_create_for_stream(ByteStream::Take, &stream_, 1, 1)) {
    RequireCairo(cairo_surface_status(surface_.get()));
    const std::string created = UtcDate(facts.created) + "T" + UtcTime(facts.created) + "Z";
    Set(CAIRO_PDF_METADATA_TITLE, facts.title);
    Set(CAIRO_PDF_METADATA_AUTHOR, facts.author);
    Set(CAIRO_PDF_METADATA_CREATOR, std::string("velmora ") + VersionText());
    Set(CAIRO_PDF_METADATA_CREATE_DATE, created);
    Set(CAIRO_PDF_METADATA_MOD_DATE, created);
  }

  ~PdfCanvas() override {
    stream_.Close();
    StopDrawing();
    // cairo 1.16 can crash when it ends a file in which it failed.
    if (HasFailed()) (void)surface_.release();
  }

  void BeginSheet(std::string_view title, double width, double height) override {
    EndPage();
    constexpr double kUnit = kPointsAnInch / kInch;
    const std::string number = std::to_string(++pages_);
    cairo_pdf_surface_set_size(surface_.get(), width * kUnit, height * kUnit);
    cairo_pdf_surface_set_page_label(surface_.get(), number.c_str());
    cairo_pdf_surface_add_outline(surface_.get(), CAIRO_PDF_OUTLINE_ROOT, drawing::PlainText(title).c_str(),
                                  ("page=" + number).c_str(), static_cast<cairo_pdf_outline_flags_t>(0));
    DrawOn(surface_.get(), kUnit);
  }

  void Finish() override {
    EndPage();
    cairo_surface_finish(surface_.get());
    stream_.Rethrow();
    RequireCairo(cairo_surface_status(surface_.get()));
  }

 private:
  void Set(cairo_pdf_metadata_t what, const std::string& text) {
    if (!text.empty()) cairo_pdf_surface_set_metadata(surface_.get(), what, drawing::PlainText(text).c_str());
  }
  void EndPage() {
    if (Context() == nullptr) return;
    cairo_show_page(Context());
    stream_.Rethrow();
    EndDrawing();
  }

  ByteStream stream_;
  CairoSurface surface_;
  int pages_ = 0;
};

void AppendBigEndian(std::uint32_t number, std::string* bytes) {
  for (int shift = 24; shift >= 0; shift -= 8) *bytes += static_cast<char>(number >> shift & 0xFF);
}

// Of a chunk's name and content.
std::uint32_t PngCheckSum(std::string_view bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
  }
  return ~sum;
}

// Says how large the picture is, so that programs print it to scale: a chunk after that of the header.
void AddResolution(double dots_per_inch, std::string* png) {
  constexpr size_t kEndOfHeader = 33;
  constexpr std::uint32_t kLength = 9;
  const auto dots_per_metre = static_cast<std::uint32_t>(std::lround(dots_per_inch * 1000 / kInch));
  std::string content = "pHYs";
  AppendBigEndian(dots_per_metre, &content);
  AppendBigEndian(dots_per_metre, &content);
  content += '\1';  // to the metre
  std::string chunk;
  AppendBigEndian(kLength, &chunk);
  chunk += content;
  AppendBigEndian(PngCheckSum(content), &chunk);
  png->insert(kEndOfHeader, chunk);
}

class PngCanvas final : public CairoCanvas {
 public:
  PngCanvas(double dots_per_inch, std::function<void(std::string_view)> write)
      : dots_per_inch_(dots_per_inch), write_(std::move(write)) {}

  void BeginSheet(std::string_view, double width, double height) override {
    Finish();
    const double unit = dots_per_inch_ / kInch;
    const double across = std::ceil(width * unit);
    const double down = std::ceil(height * unit);
    if (!(across < kMostAcross && down < kMostAcross && across * down <= kMostDots))
      throw Refusal("a sheet of " + drawing::PlainNumber(width) + " x " + drawing::PlainNumber(height) +
                    " mm has too many dots at " + drawing::PlainNumber(dots_per_inch_) +
                    " to the inch for a PNG; choose fewer, or a name that ends in .pdf");
    surface_.reset(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(across), static_cast<int>(down)));
    RequireCairo(cairo_surface_status(surface_.get()));
    DrawOn(surface_.get(), unit);
    Rectangle({0, 0, width + 1, height + 1}, {.layer = "paper", .fill = 0xFFFFFF});
  }

  void Finish() override {
    if (!surface_) return;
    EndDrawing();
    std::string file;
    ByteStream stream([&](std::string_view bytes) { file += bytes; });
    const cairo_status_t status =
        cairo_surface_write_to_png_stream(surface_.get(), ByteStream::Take, &stream);
    surface_.reset();
    stream.Rethrow();
    RequireCairo(status);
    AddResolution(dots_per_inch_, &file);
    write_(file);
  }

 private:
  static constexpr double kMostAcross = 32768;  // of cairo
  static constexpr double kMostDots = 250e6;    // a gigabyte of memory

  double dots_per_inch_;
  std::function<void(std::string_view)> write_;
  CairoSurface surface_;
};

}  // namespace

const char* WhyNoCairo() { return nullptr; }

std::unique_ptr<FileCanvas> MakePdfCanvas(const DocumentFacts& facts,
                                          std::function<void(std::string_view)> write) {
  return std::make_unique<PdfCanvas>(facts, std::move(write));
}

std::unique_ptr<FileCanvas> MakePngCanvas(double dots_per_inch, std::function<void(std::string_view)> write) {
  return std::make_unique<PngCanvas>(dots_per_inch, std::move(write));
}

}  // namespace velmora::cli
