#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetStreamUrls`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELAssetStreamUrlsHls = "hls";
inline constexpr std::string_view kQELAssetStreamUrlsHds = "hds";
inline constexpr std::string_view kQELAssetStreamUrlsMp4 = "mp4";

/// Where the streams of an asset are.
class QELMODELS_EXPORT QELAssetStreamUrls : public Record<QELAssetStreamUrls> {
public:
    Field<URL> hls;  ///< HTTP Live Streaming
    Field<URL> hds;  ///< HTTP Dynamic Streaming
    Field<URL> mp4;  ///< progressive file

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToUrls(const QELAssetStreamUrls* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELAssetStreamUrls> objectClass;
    static const FEMRulesOf<QELAssetStreamUrls> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
