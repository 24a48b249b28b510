// The limits of one identification on the command line.
#ifndef FI_CLI_LIMITS_H_
#define FI_CLI_LIMITS_H_

#include <string>
#include <string_view>

#include "formatid/identify.h"

namespace fi::app {

// "reads=100,memory=none". False with a reason. What is not named stays as it is.
bool ParseLimits(std::string_view list, FILimits& limits, std::string& error);

// The names of the limits and what each counts.
std::string LimitsText();

// Appends what an identification cost, by the same names.
void AppendSpent(const FILimits& spent, std::string& out);

}  // namespace fi::app

#endif  // FI_CLI_LIMITS_H_
