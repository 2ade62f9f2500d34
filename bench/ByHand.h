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

/// What an application asks of an asset, answered for plain structures as a good engineer would: no work that
/// the question does not need, one allocation where a text or a list is made. (`Members.h` has equality.)
namespace QELModels::bench::byHand {

using Asset = bench::Asset<RawText>;

/// A property's value, lent by the asset.
using Value = std::variant<std::monostate,
                           Number,
                           std::string_view,
                           URLView,
                           Date,
                           const FlightTimes*,
                           const Series*,
                           const StreamConfiguration<RawText>*,
                           const Category*,
                           const Images*,
                           const StreamUrls*,
                           const Additional<RawText>*>;

/// All properties by name. It keeps the asset, and so what its values lend.
struct Dictionary {
    std::shared_ptr<const Asset> asset;
    std::vector<std::pair<std::string_view, Value>> entries;
};

Dictionary dictionaryOf(std::shared_ptr<const Asset> asset);

/// Of the members that are compared. Lists and raw sub-trees count by their size alone, as they do in the
/// library.
std::size_t hashOf(const Asset& asset);

bool isLive(const Asset& asset);

/// The main image at the size of a cell in points; empty without one.
std::string imageURL(const Asset& asset, Size cell, double pixelsPerPoint);

/// How long until the asset's flight begins, seen from a date.
std::string countdown(const Asset& asset, Date from);

}  // namespace QELModels::bench::byHand
