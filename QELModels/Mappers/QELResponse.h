#pragma once

#include <optional>
#include <utility>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Values/Error.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The envelope in which an application carries a mapped result, together with the number of the next page
/// and an error. The library defines it and never makes one.
class QELResponse {
public:
    /// Keeps the three as they are; each may be null.
    QELResponse(std::optional<Number> nextPage, Value result, std::optional<Error> error)
        : nextPage_(nextPage), result_(std::move(result)), error_(std::move(error)) {}

    /// The number of the next page of a listing; null when there is none.
    std::optional<Number> nextPage() const noexcept { return nextPage_; }
    /// A record or a list of records; null when there is none.
    const Value& result() const noexcept QELMODELS_LENT { return result_; }
    /// What the request or the mapping ended with; null when all went well.
    const std::optional<Error>& error() const noexcept QELMODELS_LENT { return error_; }

private:
    std::optional<Number> nextPage_;
    Value result_;
    std::optional<Error> error_;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
