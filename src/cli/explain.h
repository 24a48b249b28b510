// Why an answer is what it is: the steps that the library told.
#ifndef FI_CLI_EXPLAIN_H_
#define FI_CLI_EXPLAIN_H_

#include <string>

#include "run/answer.h"

namespace fi::app {

// Appends a line for each step, for people, and a line for the costs.
void AppendSteps(const Answer& answer, std::string& out);

// ,"steps":[...] of a JSON object.
void AppendJsonSteps(const Answer& answer, std::string& out);

}  // namespace fi::app

#endif  // FI_CLI_EXPLAIN_H_
