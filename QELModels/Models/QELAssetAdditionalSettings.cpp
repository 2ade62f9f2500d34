#include "QELModels/Models/QELAssetAdditionalSettings.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAssetAdditionalSettings>(
    property<&QELAssetAdditionalSettings::showAds>(kQELAssetAdditionalSettingsShowAds),
    property<&QELAssetAdditionalSettings::showEmbed>(kQELAssetAdditionalSettingsShowEmbed),
    property<&QELAssetAdditionalSettings::showComments>(kQELAssetAdditionalSettingsShowComments),
    property<&QELAssetAdditionalSettings::tonoRegistered>(kQELAssetAdditionalSettingsTonoRegistered),
    property<&QELAssetAdditionalSettings::createdBy>(kQELAssetAdditionalSettingsCreatedBy),
    property<&QELAssetAdditionalSettings::lastEditedBy>(kQELAssetAdditionalSettingsLastEditedBy),
    property<&QELAssetAdditionalSettings::source>(kQELAssetAdditionalSettingsSource),
    property<&QELAssetAdditionalSettings::notes>(kQELAssetAdditionalSettingsNotes),
    property<&QELAssetAdditionalSettings::showInNewest>(kQELAssetAdditionalSettingsShowInNewest),
    property<&QELAssetAdditionalSettings::loopGeneratorEnabled>(
        kQELAssetAdditionalSettingsLoopGeneratorEnabled),
    property<&QELAssetAdditionalSettings::escenicId>(kQELAssetAdditionalSettingsEscenicId),
    property<&QELAssetAdditionalSettings::playhead>(kQELAssetAdditionalSettingsPlayhead),
    property<&QELAssetAdditionalSettings::startIndexPoint>(kQELAssetAdditionalSettingsStartIndexPoint),
    property<&QELAssetAdditionalSettings::ageLimit>(kQELAssetAdditionalSettingsAgeLimit));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELAssetAdditionalSettings::lastEditedBy>(),
    attribute<&QELAssetAdditionalSettings::showEmbed>(),
    attribute<&QELAssetAdditionalSettings::escenicId>(),
    attribute<&QELAssetAdditionalSettings::showInNewest>(),
    attribute<&QELAssetAdditionalSettings::source>(),
    attribute<&QELAssetAdditionalSettings::startIndexPoint>(),
    attribute<&QELAssetAdditionalSettings::notes>(),
    attribute<&QELAssetAdditionalSettings::showAds>(),
    attribute<&QELAssetAdditionalSettings::createdBy>(),
    attribute<&QELAssetAdditionalSettings::showComments>(),
    attribute<&QELAssetAdditionalSettings::loopGeneratorEnabled>(),
    attribute<&QELAssetAdditionalSettings::playhead>(),
    attribute<&QELAssetAdditionalSettings::tonoRegistered>(),
    attribute<&QELAssetAdditionalSettings::ageLimit>());
constinit const FEMRulesOf<QELAssetAdditionalSettings> QELAssetAdditionalSettings::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<
    &QELAssetAdditionalSettings::showAds,
    &QELAssetAdditionalSettings::showEmbed,
    &QELAssetAdditionalSettings::showComments,
    &QELAssetAdditionalSettings::tonoRegistered,
    &QELAssetAdditionalSettings::createdBy,
    &QELAssetAdditionalSettings::lastEditedBy,
    &QELAssetAdditionalSettings::source,
    &QELAssetAdditionalSettings::notes,
    &QELAssetAdditionalSettings::showInNewest,
    &QELAssetAdditionalSettings::loopGeneratorEnabled,
    &QELAssetAdditionalSettings::escenicId,
    &QELAssetAdditionalSettings::playhead,
    &QELAssetAdditionalSettings::startIndexPoint,
    &QELAssetAdditionalSettings::ageLimit>;

constinit const ObjectClassOf<QELAssetAdditionalSettings> QELAssetAdditionalSettings::objectClass(
    describe<declared, Compared, Compared>("QELAssetAdditionalSettings"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
