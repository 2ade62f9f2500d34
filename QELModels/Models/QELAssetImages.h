#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetImages`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELAssetImagesMain = "main";
inline constexpr std::string_view kQELAssetImagesFront = "front";
inline constexpr std::string_view kQELAssetImagesFeatured = "featured";
inline constexpr std::string_view kQELAssetImagesSnapshots = "snapshots";

/// Where the pictures of an asset are, without a size: `QELKavoHelper` asks for one. Equal to itself alone.
class QELMODELS_EXPORT QELAssetImages : public Record<QELAssetImages> {
public:
    Field<URL> main;       ///< the picture of the asset itself
    Field<URL> front;      ///< for front pages
    Field<URL> featured;   ///< for featured placements
    Field<URL> snapshots;  ///< one address for all snapshots

    static const ObjectClassOf<QELAssetImages> objectClass;
    static const FEMRulesOf<QELAssetImages> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
