// Packages of the size and make-up that office applications write, for benchmarks.
#ifndef FI_BENCH_PACKAGES_H_
#define FI_BENCH_PACKAGES_H_

#include <string>

namespace fi::bench {

// A word-processing document of Office Open XML, and one of OpenDocument.
std::string OfficeOpenXml();
std::string OpenDocument();

}  // namespace fi::bench

#endif  // FI_BENCH_PACKAGES_H_
