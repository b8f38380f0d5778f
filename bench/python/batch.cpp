// The batch that the Python package is measured beside: Locator::Vagstv over the arrays of a file.
//
//   python_batch FILE VERTICES COUNT
//
// FILE holds doubles: northing, easting, bulge and station of each vertex, then the northings and the
// eastings of the points. Each line of standard input is a number of threads; the answer is the seconds that
// the batch took, with the arrays of its results made anew, as a caller of the package gets them.
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/measure.h"
#include "velmora/alignment/alignment_format.h"
#include "velmora/locator/locator.h"

namespace {

using velmora::kovltype;

struct Batch {
  std::vector<kovltype> road;
  std::vector<double> northing, easting;
};

template <class Element>
bool Fill(std::FILE* file, std::vector<Element>* to) {
  return std::fread(to->data(), sizeof(Element), to->size(), file) == to->size();
}

bool Read(const char* name, size_t vertices, size_t count, Batch* batch) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name, "rb"), std::fclose);
  batch->road.resize(vertices);
  batch->northing.resize(count);
  batch->easting.resize(count);
  static_assert(sizeof(kovltype) == 4 * sizeof(double));
  return file != nullptr && Fill(file.get(), &batch->road) && Fill(file.get(), &batch->northing) &&
         Fill(file.get(), &batch->easting);
}

void Locate(const velmora::Locator& locator, const Batch& batch, size_t threads) {
  const size_t count = batch.northing.size();
  const auto station = std::make_unique_for_overwrite<double[]>(count);
  const auto offset = std::make_unique_for_overwrite<double[]>(count);
  const auto result = std::make_unique_for_overwrite<int[]>(count);
  std::vector<std::thread> running;
  for (size_t i = 0; i < threads; ++i) {
    const size_t from = count * i / threads;
    const size_t size = count * (i + 1) / threads - from;
    const auto part = [&, from, size] {
      locator.Vagstv(&batch.northing[from], &batch.easting[from], size, &station[from], &offset[from],
                     &result[from]);
    };
    if (i + 1 < threads)
      running.emplace_back(part);
    else
      part();
  }
  for (std::thread& thread : running) thread.join();
}

}  // namespace

int main(int argc, char** argv) {
  Batch batch;
  if (argc != 4 || !Read(argv[1], std::stoull(argv[2]), std::stoull(argv[3]), &batch)) return 2;
  const velmora::Locator locator(batch.road, velmora::kPlanType);
  for (size_t threads = 0; std::cin >> threads;)
    std::cout << velmora::bench::Elapsed([&] { Locate(locator, batch, threads); }) << std::endl;
}
