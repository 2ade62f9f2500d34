#pragma once

#include <string>

#include "JSON/JSONWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Value.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Writes what a property holds, nested records and lists included, as one JSON value.
///
/// A record is a dictionary of every property that its class declares, in that order, null where it is empty;
/// names that begin with "s_" stay out. A date is its seconds since 1970-01-01 UTC, a URL its text, a colour
/// a dictionary of `red`, `green`, `blue` and `alpha`, an enumeration its number, a raw sub-tree what it was.
QELMODELS_EXPORT void writeJSON(JSONWriter& writer, const Value& value);
/// The same of a record.
QELMODELS_EXPORT void writeJSON(JSONWriter& writer, const Object& record);
/// The same of a list of records; null makes a JSON null.
QELMODELS_EXPORT void writeJSON(JSONWriter& writer, const ListBase* list);

/// A value as JSON text.
QELMODELS_EXPORT std::string jsonFromValue(const Value& value,
                                           JSONWriter::Layout layout = JSONWriter::Layout::compact);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
