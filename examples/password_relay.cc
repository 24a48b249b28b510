// Names what is in an encrypted document, with the passwords that its user knows, and tells each
// step where --explain is given.
//
//   formatid_example_password_relay [--explain] FILE PASSWORD...
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "formatid/formatid.hpp"

namespace {

void Explain(const FITraceRecord& step) {
  switch (step.kind) {
    case kFiTraceRow:
      std::printf("  row %u says %u: %s\n", unsigned{step.row}, unsigned{step.id}, step.text);
      break;
    case kFiTraceProbe:
      std::printf("  probe %u found %u\n", step.number, unsigned{step.id});
      break;
    case kFiTraceStream:
    case kFiTraceMember:
      std::printf("  opened \"%s\"\n",
                  static_cast<unsigned char>(step.text[0]) < ' ' ? step.text + 1 : step.text);
      break;
    default:
      break;
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool explains = !arguments.empty() && arguments.front() == "--explain";
  if (explains) arguments.erase(arguments.begin());
  if (arguments.empty()) return 2;

  formatid::Request request(formatid::Source::file(arguments.front()));
  request.password([&](std::uint32_t attempt) -> std::optional<std::string> {
    if (attempt + 1 >= arguments.size()) return std::nullopt;
    return arguments[attempt + 1];
  });
  if (explains) request.trace(Explain);
  const formatid::Result result = request.identify();
  std::printf("%u %s: %s\n", unsigned{result.id()}, result.raw().name,
              FIStatusText(result.status()));
  return result.status() == kFiOk ? 0 : 1;
}
