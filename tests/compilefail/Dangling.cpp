// What a reference lends lives as long as the reference: clang tells where that was a temporary one. (Newer
// versions also tell of fields that are read through it.)

#include "QELModels/Mappers/QELAssetMapper.h"

#pragma clang diagnostic error "-Wdangling"

using namespace QELModels;

std::optional<Number> identifiers(RepresentationView first, RepresentationView second) {
    const QELAssetMapper mapper;
#ifdef FIXED
    const Ref<QELAsset> kept = mapper.mappedResponseFromJSONObject(first);
    const Ref<QELAsset> other = mapper.mappedResponseFromJSONObject(second);
    const QELAsset* lent = kept.get();
    const QELAsset& asset = *other;
#else
    // expect: destroyed at the end of the full-expression | local variable 'lent'
    const QELAsset* lent = mapper.mappedResponseFromJSONObject(first).get();
    // expect: destroyed at the end of the full-expression | local reference 'asset'
    const QELAsset& asset = *mapper.mappedResponseFromJSONObject(second);
#endif
    return lent->assetIdentifier() ? lent->assetIdentifier() : asset.assetIdentifier();
}
