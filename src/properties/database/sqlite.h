// SQLite databases (SQLite Database File Format): the text encoding and the library that wrote
// last.
#ifndef FI_PROPERTIES_DATABASE_SQLITE_H_
#define FI_PROPERTIES_DATABASE_SQLITE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadSqliteProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_DATABASE_SQLITE_H_
