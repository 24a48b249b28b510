#include "probes/content/marker_sequence.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;

constexpr FormatId kFound = 1;
constexpr size_t kOffset = 118;

FormatId Marked(IdentificationStream* stream) {
  return MarkerSequenceProbe(stream, kOffset) ? kFound : kNoMatch;
}

// `text` at the offset, in a hundred bytes of their own.
std::string At(const std::string& text) {
  return std::string(kOffset, '|') + text + std::string(100 - text.size(), 'x');
}

TEST(MarkerSequence, FiveSteps) {
  const std::string before(95, 'x');
  ExpectAnswers(Marked, {
                            {"at once", At("|N@|O"), kFound},
                            {"apart", At("..|N..@..|O"), kFound},
                            {"other bars between", At("|Nx|@x|x|O"), kFound},
                            {"other bars before", At("|x|N@|O"), kFound},
                            {"two bars before N", At("||N@|O"), kNoMatch},
                            {"three bars before N", At("|||N@|O"), kFound},
                            {"two bars before O", At("|N@||O"), kNoMatch},
                            {"no @", At("|N|O"), kNoMatch},
                            {"lower case", At("|n@|o"), kNoMatch},
                            {"O without a bar", At("|N@xO"), kNoMatch},
                            {"in the last bytes", At(before + "|N@|O"), kFound},
                            {"one byte late", At(before + "x|N@|") + "O", kNoMatch},
                            {"one byte early",
                             std::string(kOffset - 1, 'x') + "|N@|O" + before + "x", kNoMatch},
                        });
  ExpectAnswersWhenCut(Marked, At("|N@|O") + "x", {{kOffset + 100, kFound}});
}

}  // namespace
}  // namespace fi
