#include "QELModels/Models/QELAssetChapter.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAssetChapter>(
    property<&QELAssetChapter::title>(kQELChaptersTitle),
    property<&QELAssetChapter::chapterDescription>(kQELChaptersDescription),
    property<&QELAssetChapter::timeline>(kQELChaptersTimeline),
    property<&QELAssetChapter::featured>(kQELChaptersFeatured));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELAssetChapter::timeline>(),
    attribute<&QELAssetChapter::featured>(),
    attribute<&QELAssetChapter::title>("title", captured(kQELHTMLTransformer)),
    attribute<&QELAssetChapter::chapterDescription>("description", captured(kQELHTMLTransformer)));
constinit const FEMRulesOf<QELAssetChapter> QELAssetChapter::defaultRules = rules;

// ... and what makes two of them equal.
// Identity comes first, so a chapter equals itself alone and lists of chapters are equal only when they share
// them.
using Compared = IdentityThenFieldsOf<
    &QELAssetChapter::title,
    &QELAssetChapter::chapterDescription,
    &QELAssetChapter::timeline,
    &QELAssetChapter::featured>;

constinit const ObjectClassOf<QELAssetChapter> QELAssetChapter::objectClass(
    describe<declared, Compared, Compared>("QELAssetChapter"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
