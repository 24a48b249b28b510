// What one identification costs. From memory: what the walk of the signatures and the fallback cost
// by themselves. From a file: beside the least that any tool must do, which is to open the file,
// read its first 4 KB and close it; compare within one run.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/packages.h"
#include "formatid/formatid.h"

namespace {

constexpr size_t kFileSize = 1 << 20;

// Bytes that no signature claims and that are no text, as compressed data has them.
std::string Binary() {
  std::string bytes(kFileSize, '\0');
  uint32_t state = 1;
  for (char& c : bytes) c = static_cast<char>((state = state * 1664525u + 1013904223u) >> 24);
  bytes[0] = 'x';
  return bytes;
}

std::string Prose() {
  std::string text;
  for (size_t line = 0; text.size() < kFileSize; ++line) {
    text += "Only words, line after line, and now and then a number such as ";
    text += std::to_string(line * line) + (line % 3 == 0 ? ".\n" : ", and so on.\n");
  }
  return text;
}

std::string Behind(const std::string& signature) { return signature + Binary(); }

// The file of a scenario; each stands for one way through an identification.
std::string Scenario(const std::string& name) {
  if (name == "png") return Behind(std::string("\x89PNG\r\n\x1A\n", 8));
  if (name == "drawing") return Behind(std::string("AC1015\0\0", 8));  // row 127
  if (name == "pdf") return Behind("%PDF-1.4\n");                      // row 134
  if (name == "text") return Prose();
  if (name == "docx") return fi::bench::OfficeOpenXml();
  if (name == "odt") return fi::bench::OpenDocument();
  return Binary();
}

void FromMemory(benchmark::State& state, const std::string& name, uint32_t flags) {
  const std::string bytes = Scenario(name);
  const IOMemorySource source = {bytes.data(), bytes.size(), "x.bin"};
  FormatId id = 0;
  for (auto _ : state) {
    FIIdFile(kIoSourceMemory, &source, flags, &id);
    benchmark::DoNotOptimize(id);
  }
  state.SetLabel(std::to_string(id));
}

// A file that is removed when the benchmark ends.
class ScratchFile {
 public:
  explicit ScratchFile(const std::string& bytes) {
    std::string pattern = (std::filesystem::temp_directory_path() / "formatid-XXXXXX").string();
    const int descriptor = ::mkstemp(pattern.data());
    if (descriptor >= 0) ::close(descriptor);
    path_ = pattern;
    std::ofstream(path_, std::ios::binary) << bytes;
  }
  ~ScratchFile() { std::filesystem::remove(path_); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  const char* Path() const { return path_.c_str(); }

 private:
  std::string path_;
};

void Identify(benchmark::State& state, const char* path) {
  FormatId id = 0;
  for (auto _ : state) {
    FIIdFile(kIoSourcePath, path, kFiTextFallback | kFiDelimitedText, &id);
    benchmark::DoNotOptimize(id);
  }
  state.SetLabel(std::to_string(id));
}

void FromFile(benchmark::State& state, const std::string& name) {
  const ScratchFile file(Scenario(name));
  Identify(state, file.Path());
}

void OpenReadClose(benchmark::State& state) {
  const ScratchFile file(Scenario("pdf"));
  char buffer[4096];
  for (auto _ : state) {
    const int descriptor = ::open(file.Path(), O_RDONLY | O_CLOEXEC);
    benchmark::DoNotOptimize(::read(descriptor, buffer, sizeof(buffer)));
    ::close(descriptor);
  }
}

BENCHMARK_CAPTURE(FromMemory, full_table_miss, "binary", 0u);
BENCHMARK_CAPTURE(FromMemory, full_table_miss_and_fallback, "binary", uint32_t{kFiTextFallback});
BENCHMARK_CAPTURE(FromMemory, full_table_miss_and_supplement, "binary",
                  kFiTextFallback | kFiSupplement);
BENCHMARK_CAPTURE(FromMemory, hit_at_row_127, "drawing", 0u);
BENCHMARK_CAPTURE(FromMemory, hit_at_row_134, "pdf", 0u);
BENCHMARK_CAPTURE(FromMemory, hit_at_row_277, "png", 0u);
BENCHMARK_CAPTURE(FromMemory, text, "text", kFiTextFallback | kFiDelimitedText);
BENCHMARK_CAPTURE(FromMemory, text_and_supplement, "text",
                  kFiTextFallback | kFiDelimitedText | kFiSupplement);
BENCHMARK_CAPTURE(FromMemory, office_open_xml, "docx", 0u);
BENCHMARK_CAPTURE(FromMemory, open_document, "odt", 0u);
BENCHMARK(OpenReadClose);
BENCHMARK_CAPTURE(FromFile, signature, "pdf");
BENCHMARK_CAPTURE(FromFile, nothing, "binary");
BENCHMARK_CAPTURE(FromFile, text, "text");
BENCHMARK_CAPTURE(FromFile, office_open_xml, "docx");
BENCHMARK_CAPTURE(FromFile, open_document, "odt");

}  // namespace

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  for (int i = 1; i < count; ++i) {
    const std::string name = std::filesystem::path(arguments[i]).filename().string();
    benchmark::RegisterBenchmark(("GivenFile/" + name).c_str(), Identify, arguments[i]);
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
