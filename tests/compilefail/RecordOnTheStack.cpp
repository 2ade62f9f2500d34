// expect: use of deleted function .*QELAsset::QELAsset|deleted default constructor of 'const
// [A-Za-z0-9_:]*QELAsset' Records are made by mapping alone.

#include "QELModels/Mappers/QELAssetMapper.h"

using namespace QELModels;

std::optional<Number> identifier() {
#ifdef FIXED
    const auto asset = QELAssetMapper().mappedResponseFromJSONObject(Representation());
    return asset->assetIdentifier();
#else
    const QELAsset asset;
    return asset.assetIdentifier();
#endif
}
