// The values of a record by name, for CSV and templates.
#ifndef FI_CLI_COLUMNS_H_
#define FI_CLI_COLUMNS_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "run/answer.h"
#include "run/hasher.h"

namespace fi::app {

// What a record is made of.
struct RecordSource {
  std::string_view path;
  const Answer& answer;
  uint64_t number;                   // of the input, from 1
  std::span<const HashKind> hashes;  // what Answer::hashes holds
};

struct Column {
  std::string_view name;
  // Appends the value as text; nothing where there is none.
  void (*append)(const RecordSource& source, std::string& out);
};

// nullptr when no column has the name.
const Column* FindColumn(std::string_view name);

// A list of names with commas between them, or "droid". False with a reason.
bool ParseColumns(std::string_view list, std::vector<const Column*>& columns, std::string& error);

// What --csv prints when no columns are asked for: all but the hashes, and of those `hashes`.
std::vector<const Column*> UsualColumns(std::span<const HashKind> hashes);

// The hashes among `columns`.
std::vector<HashKind> HashesOf(std::span<const Column* const> columns);

// Appends a field of a CSV record (RFC 4180).
void AppendCsvField(std::string_view text, std::string& out);

// AppendCsvField for text that a stranger chose: an apostrophe precedes text that a spreadsheet
// would take as a formula, and text with an apostrophe at its beginning.
void AppendCsvCell(std::string_view text, std::string& out);

std::string_view StatusName(AnswerStatus status);
std::string_view BasisName(uint16_t basis);  // empty for no basis
void AppendNumber(int64_t value, std::string& out);

}  // namespace fi::app

#endif  // FI_CLI_COLUMNS_H_
