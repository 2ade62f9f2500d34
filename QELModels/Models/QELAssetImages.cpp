#include "QELModels/Models/QELAssetImages.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAssetImages>(
    property<&QELAssetImages::main>(kQELAssetImagesMain),
    property<&QELAssetImages::front>(kQELAssetImagesFront),
    property<&QELAssetImages::featured>(kQELAssetImagesFeatured),
    property<&QELAssetImages::snapshots>(kQELAssetImagesSnapshots));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELAssetImages::featured>("featured", captured(kQELNSURLTransformer)),
    attribute<&QELAssetImages::front>("front", captured(kQELNSURLTransformer)),
    attribute<&QELAssetImages::main>("main", captured(kQELNSURLTransformer)),
    attribute<&QELAssetImages::snapshots>("snapshots", captured(kQELNSURLTransformer)));
constinit const FEMRulesOf<QELAssetImages> QELAssetImages::defaultRules = rules;

constinit const ObjectClassOf<QELAssetImages> QELAssetImages::objectClass(
    describe<declared>("QELAssetImages"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
