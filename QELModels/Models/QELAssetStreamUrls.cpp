#include "QELModels/Models/QELAssetStreamUrls.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAssetStreamUrls>(
    property<&QELAssetStreamUrls::hls>(kQELAssetStreamUrlsHls),
    property<&QELAssetStreamUrls::hds>(kQELAssetStreamUrlsHds),
    property<&QELAssetStreamUrls::mp4>(kQELAssetStreamUrlsMp4));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELAssetStreamUrls::hds>("hds", captured(kQELNSURLTransformer)),
    attribute<&QELAssetStreamUrls::hls>("hls", captured(kQELNSURLTransformer)),
    attribute<&QELAssetStreamUrls::mp4>("mp4", captured(kQELNSURLTransformer)));
constinit const FEMRulesOf<QELAssetStreamUrls> QELAssetStreamUrls::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<&QELAssetStreamUrls::hls, &QELAssetStreamUrls::hds, &QELAssetStreamUrls::mp4>;

constinit const ObjectClassOf<QELAssetStreamUrls> QELAssetStreamUrls::objectClass(
    describe<declared, Compared, Compared>("QELAssetStreamUrls"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
