// What a trace tells of an identification.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "formatid/identify.h"
#include "tests/support/compound_file_writer.h"
#include "tests/support/zip_writer.h"

namespace fi {
namespace {

// The steps as words; reads are summed up.
struct Story {
  std::string steps;
  uint64_t bytesRead = 0;

  static void Tell(void* context, const FITraceRecord* record) {
    auto* story = static_cast<Story*>(context);
    EXPECT_EQ(record->size, sizeof *record);
    const std::string text = record->text;
    const std::string id = std::to_string(record->id);
    switch (record->kind) {
      case kFiTraceRow:
        EXPECT_GT(record->row, 0);
        story->steps += "row[" + text + "]=" + id + ' ';
        break;
      case kFiTraceProbe:
        story->steps += "probe(" + std::to_string(record->number) + ")=" + id + ' ';
        break;
      case kFiTraceRead:
        story->bytesRead += record->count;
        break;
      case kFiTraceMember:
        story->steps += "member(" + text + ") ";
        break;
      case kFiTraceStream:
        story->steps += "stream(" + text + ") ";
        break;
      case kFiTraceCandidate:
        story->steps += "dropped(" + id + ": " + text + ") ";
        break;
      case kFiTraceAnswer:
        story->steps += "answer=" + id;
        break;
      default:
        ADD_FAILURE() << record->kind;
    }
  }
};

Story TraceOf(const std::string& bytes, FITrace trace = Story::Tell) {
  Story story;
  FIRequest request = FI_REQUEST_INIT;
  request.source.kind = kFiSourceMemory;
  request.source.data = bytes.data();
  request.source.size = bytes.size();
  FIResult plain = FI_RESULT_INIT;
  FIIdentify(&request, &plain);
  request.trace = trace;
  request.traceContext = &story;
  FIResult traced = FI_RESULT_INIT;
  EXPECT_EQ(FIIdentify(&request, &traced), plain.status);
  EXPECT_EQ(traced.id, plain.id) << "a trace changes no answer";
  EXPECT_EQ(traced.row, plain.row);
  EXPECT_EQ(traced.spent.bytesRead, plain.spent.bytesRead);
  if (trace == Story::Tell) {
    EXPECT_EQ(story.bytesRead, traced.spent.bytesRead);
    EXPECT_TRUE(story.steps.ends_with("answer=" + std::to_string(traced.id))) << story.steps;
  }
  return story;
}

TEST(Trace, TellsWhatMattered) {
  const struct {
    const char* what;
    std::string bytes;
    const char* step;
  } cases[] = {
      {"a row with its text", "GIF89a", "row[rw 'GIF8'"},
      {"a row of the supplement",
       std::string("\x7F"
                   "ELF\2\1\1",
                   7) +
           std::string(60, '\0'),
       "row[rw 7F 'ELF'"},
      {"members", testing::ZipWriter().Add("META-INF/manifest.xml", "<a/>").Finish(),
       "member(meta-inf/manifest.xml)"},
      {"streams",
       testing::WriteCompoundFile({testing::Stream(u"WordDocument", std::string(600, '\0'))}),
       "stream(WordDocument)"},
      {"a probe that found nothing", std::string(200, 'x'), "=0 "},
  };
  for (const auto& each : cases) {
    const Story story = TraceOf(each.bytes);
    EXPECT_NE(story.steps.find(each.step), std::string::npos) << each.what << ": " << story.steps;
  }
}

TEST(Trace, WhatItThrowsEndsInTheCall) {
  const FITrace throws = [](void*, const FITraceRecord*) {
    throw std::runtime_error("of the host");
  };
  (void)TraceOf("GIF89a", throws);
}

}  // namespace
}  // namespace fi
