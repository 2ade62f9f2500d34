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
class QELMODELS_EXPORT QELAssetImages : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<URL> main;       ///< the picture of the asset itself
    Field<URL> front;      ///< for front pages
    Field<URL> featured;   ///< for featured placements
    Field<URL> snapshots;  ///< one address for all snapshots

    /// How a document fills it, made anew at every call.
    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }

    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
