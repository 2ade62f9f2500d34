#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/JSONReader.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Number.h"

/// JSON read the plain way: one function for each rule of the grammar, recursion, code units, `strtod`. The
/// library's reader must give the same values, refuse the same documents and name the same places.
namespace NaiveJSONOracle {

struct Value {
    enum class Kind { null, number, string, array, dictionary };

    Kind kind = Kind::null;
    QELModels::Number number;
    std::u16string text;
    std::vector<std::u16string> keys;  // of a dictionary, whose values are its elements
    std::vector<Value> elements;
};

struct Result {
    std::optional<Value> value;
    std::size_t errorOffset = 0;
};

Result read(std::string_view document, std::size_t maxDepth = QELModels::JSONReader::kDefaultMaxDepth);

/// Whether a representation is that value, member by member, bit by bit.
bool isSame(const Value& value, QELModels::RepresentationView view);

/// What is wrong with the answer of a reader: nothing, when the text is empty.
std::string disagreement(std::string_view document,
                         const std::optional<QELModels::Representation>& representation,
                         const QELModels::JSONError& error,
                         std::size_t maxDepth = QELModels::JSONReader::kDefaultMaxDepth);

}  // namespace NaiveJSONOracle
