#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "QELModels/Values/Date.h"
#include "QELModels/Values/Size.h"
#include "RawText.h"
#include "Records.h"

/// What an application asks of an asset, answered for plain structures as a good engineer would do it: no
/// work that the question does not need, one allocation for each text or list. (Equality is in `Members.h`.)
namespace QELModels::bench::byHand {

using Asset = bench::Asset<RawText>;

/// A property's value, lent by the asset.
using Value = std::variant<std::monostate, Number, std::string_view, URLView, Date, const FlightTimes*,
                           const Series*, const StreamConfiguration<RawText>*, const Category*, const Images*,
                           const StreamUrls*, const Additional<RawText>*>;

/// All properties by name. It keeps the asset alive, so that what its values lend stays valid.
struct Dictionary {
    std::shared_ptr<const Asset> asset;
    std::vector<std::pair<std::string_view, Value>> entries;
};

Dictionary dictionaryOf(std::shared_ptr<const Asset> asset);

/// The hash of the members that are compared. Of lists and raw sub-trees only the size is hashed, as in the
/// library.
std::size_t hashOf(const Asset& asset);

bool isLive(const Asset& asset);

/// The main image at the size of a cell in points; empty without one.
std::string imageURL(const Asset& asset, Size cell, double pixelsPerPoint);

/// The time from a date to the begin of the asset's flight, as a text.
std::string countdown(const Asset& asset, Date from);

}  // namespace QELModels::bench::byHand
