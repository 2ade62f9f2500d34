#include "QELModels/Models/QELStreamConfiguration.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELStreamConfiguration>(
    property<&QELStreamConfiguration::properties>(kQELStreamConfigurationProperties),
    property<&QELStreamConfiguration::configuration>("configuration"));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(attribute<&QELStreamConfiguration::properties>());
constinit const FEMRulesOf<QELStreamConfiguration> QELStreamConfiguration::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<&QELStreamConfiguration::properties>;

constinit const ObjectClassOf<QELStreamConfiguration> QELStreamConfiguration::objectClass(
    describe<declared, Compared, Compared>("QELStreamConfiguration"));

QELStreamConfigurationFlags QELStreamConfiguration::configuration() const {
    std::int64_t flags = 0;
    if (const auto list = properties()) {
        for (const RepresentationView property : list->elements()) {
            const auto name = property.text();
            if (name == "tokenSecured") flags |= QELStreamConfigurationTokenSecured;
            if (name == "encrypted") flags |= QELStreamConfigurationEncrypted;
            if (name == "geoblocked") flags |= QELStreamConfigurationGeoblocked;
            if (name == "playerVerified") flags |= QELStreamConfigurationPlayerVerified;
        }
    }
    return static_cast<QELStreamConfigurationFlags>(flags == 0 ? QELStreamConfigurationNone : flags);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
