#include "cli/explain.h"

#include <string_view>

#include "cli/limits.h"
#include "formatid/identify.h"
#include "run/text/escape.h"
#include "run/text/json.h"

namespace fi::app {
namespace {

std::string_view KindName(uint32_t kind) {
  switch (kind) {
    case kFiTraceRow:
      return "row";
    case kFiTraceProbe:
      return "probe";
    case kFiTraceRead:
      return "read";
    case kFiTraceMember:
      return "member";
    case kFiTraceStream:
      return "stream";
    case kFiTraceCandidate:
      return "candidate";
    case kFiTraceAnswer:
      return "answer";
    default:
      return "other";
  }
}

std::string NameOf(uint16_t id) {
  FIFormatFacts facts;
  std::string name = std::to_string(id);
  if (UTGetFormatFacts(id, &facts) == 0) name += std::string(" (") + facts.name + ")";
  return name;
}

void AppendStep(const TraceStep& step, std::string& out) {
  switch (step.kind) {
    case kFiTraceRow:
      out += "row " + std::to_string(step.row) + " matches: ";
      AppendEscaped(step.text, out);
      out += " -> " + NameOf(step.id);
      break;
    case kFiTraceProbe:
      out += "probe " + std::to_string(step.number) + ": ";
      out += step.id == 0 ? "nothing" : NameOf(step.id);
      break;
    case kFiTraceRead:
      out += "read " + std::to_string(step.count) + " bytes at " + std::to_string(step.offset);
      break;
    case kFiTraceMember:
    case kFiTraceStream:
      out += step.kind == kFiTraceMember ? "opened member " : "opened stream ";
      AppendEscaped(step.text, out);
      break;
    case kFiTraceCandidate:
      out += "not " + NameOf(step.id) + ": ";
      AppendEscaped(step.text, out);
      break;
    case kFiTraceAnswer:
      out += "answer " + NameOf(step.id);
      break;
    default:
      AppendEscaped(step.text, out);
      break;
  }
}

}  // namespace

void AppendSteps(const Answer& answer, std::string& out) {
  if (!answer.steps.empty()) out += "  steps:\n";
  for (const TraceStep& step : answer.steps) {
    out += "    ";
    AppendStep(step, out);
    out += '\n';
  }
  out += "  cost:          ";
  AppendSpent(answer.spent, out);
  out += '\n';
}

void AppendJsonSteps(const Answer& answer, std::string& out) {
  out += ",\"steps\":[";
  bool isFirst = true;
  for (const TraceStep& step : answer.steps) {
    if (!isFirst) out += ',';
    isFirst = false;
    out += "{\"kind\":";
    AppendJsonString(KindName(step.kind), out);
    out += ",\"text\":";
    AppendJsonText(step.text, out);
    out += ",\"id\":" + std::to_string(step.id) + ",\"row\":" + std::to_string(step.row);
    out += ",\"number\":" + std::to_string(step.number);
    out += ",\"offset\":" + std::to_string(step.offset);
    out += ",\"count\":" + std::to_string(step.count) + '}';
  }
  out += ']';
}

}  // namespace fi::app
