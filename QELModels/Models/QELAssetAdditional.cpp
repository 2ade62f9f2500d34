#include "QELModels/Models/QELAssetAdditional.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAssetAdditional>(
    property<&QELAssetAdditional::settings>(kQELAssetAdditionalSettings),
    property<&QELAssetAdditional::barrels>(kQELAssetAdditionalBarrels),
    property<&QELAssetAdditional::featuredChapters>(kQELAssetAdditionalFeaturedChapters),
    property<&QELAssetAdditional::chapters>(kQELAssetAdditionalChapters),
    property<&QELAssetAdditional::cuePoints>(kQELAssetAdditionalCuePoints),
    property<&QELAssetAdditional::sourceFiles>(kQELAssetAdditionalSourceFiles),
    property<&QELAssetAdditional::externalCategoryIdentifier>(kQELAssetAdditionalExternalCategoryIdentifier),
    property<&QELAssetAdditional::externalIdentifier>(kQELAssetAdditionalExternalIdentifier),
    property<&QELAssetAdditional::nextAsset>(kQELAssetAdditionalNextAsset),
    property<&QELAssetAdditional::metadata>(kQELAssetAdditionalMetadata),
    property<&QELAssetAdditional::access>(kQELAssetAdditionalAccess),
    property<&QELAssetAdditional::subtitles>(kQELAssetAdditionalSubtitles),
    property<&QELAssetAdditional::imageCaption>(kQELAssetAdditionalImageCaption),
    property<&QELAssetAdditional::url>(kQELAssetAdditionalUrl));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    relationship<&QELAssetAdditional::settings>(),
    attribute<&QELAssetAdditional::sourceFiles>(),
    attribute<&QELAssetAdditional::barrels>(),
    attribute<&QELAssetAdditional::imageCaption>(),
    attribute<&QELAssetAdditional::url>(),
    attribute<&QELAssetAdditional::access>(),
    attribute<&QELAssetAdditional::metadata>(),
    relationship<&QELAssetAdditional::chapters>(),
    relationship<&QELAssetAdditional::cuePoints>(),
    attribute<&QELAssetAdditional::externalCategoryIdentifier>("externalCategoryId"),
    attribute<&QELAssetAdditional::externalIdentifier>("externalId"),
    relationship<&QELAssetAdditional::featuredChapters>(),
    relationship<&QELAssetAdditional::subtitles>(),
    relationship<&QELAssetAdditional::nextAsset>());
constinit const FEMRulesOf<QELAssetAdditional> QELAssetAdditional::defaultRules = rules;

// ... and what makes two of them equal.
// Chapters, cue points and the next asset compare by identity, so records mapped apart that hold any are
// never equal.
using Compared = FieldsOf<
    &QELAssetAdditional::settings,
    &QELAssetAdditional::barrels,
    &QELAssetAdditional::featuredChapters,
    &QELAssetAdditional::chapters,
    &QELAssetAdditional::cuePoints,
    &QELAssetAdditional::sourceFiles,
    &QELAssetAdditional::externalCategoryIdentifier,
    &QELAssetAdditional::externalIdentifier,
    &QELAssetAdditional::nextAsset,
    &QELAssetAdditional::metadata,
    &QELAssetAdditional::access,
    &QELAssetAdditional::subtitles,
    &QELAssetAdditional::imageCaption,
    &QELAssetAdditional::url>;

constinit const ObjectClassOf<QELAssetAdditional> QELAssetAdditional::objectClass(
    describe<declared, Compared, Compared>("QELAssetAdditional"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
