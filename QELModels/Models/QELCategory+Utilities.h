#pragma once

#include <string>

#include "QELModels/Models/QELCategory.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// @defgroup categoryFacts Facts of a category
/// @{

/// The key under which the category's curated list is filed, such as "category-42"; "category-(null)" without
/// an identifier. A number that is not an integer keeps its fraction.
QELMODELS_EXPORT std::string editorialKey(const QELCategory& category);
/// The same for the category's parent.
QELMODELS_EXPORT std::string parentCategoryEditorialKey(const QELCategory& category);
/// Whether the category may be played on every kind of device. True without additional data, false when the
/// additional data does not say so.
QELMODELS_EXPORT bool allowAllDevices(const QELCategory& category) noexcept;

/// @}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
