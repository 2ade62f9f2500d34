#include "QELModels/Models/QELEditorial.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELEditorial>(
    property<&QELEditorial::key>(kQELEditorialKey),
    property<&QELEditorial::assetsIdentifiers>(kQELEditorialAssetsIds),
    property<&QELEditorial::assets>(kQELEditorialAssets));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELEditorial::key>(),
    attribute<&QELEditorial::assetsIdentifiers>("assetsIds"),
    relationship<&QELEditorial::assets>("_embedded.assets"));
constinit const FEMRulesOf<QELEditorial> QELEditorial::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<&QELEditorial::key, &QELEditorial::assetsIdentifiers, &QELEditorial::assets>;

constinit const ObjectClassOf<QELEditorial> QELEditorial::objectClass(
    describe<declared, Compared, Compared>("QELEditorial", Lives::inItsOwnBlock));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
