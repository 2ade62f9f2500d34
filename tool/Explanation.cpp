#include "tool/Explanation.h"

#include <string>

namespace QELModels::tool {

namespace {

using Visit = std::function<void(const Finding& finding)>;

std::string_view keyPathOf(const Kind& kind, std::string_view keyPath) {
    return keyPath.empty() ? kind.keyPath : keyPath;
}

class Findings final : public FEMObserver {
public:
    explicit Findings(const Visit& visit) : visit_(visit) {}
    void ruleApplied(const FEMEvent& event) override {
        visit_({event.path.pointer(), event.path.property(), outcomeName(event.outcome), event.value});
    }

private:
    const Visit& visit_;
};

}  // namespace

std::string_view outcomeName(FEMOutcome outcome) noexcept {
    switch (outcome) {
        case FEMOutcome::set:
            return "set";
        case FEMOutcome::missing:
            return "missing";
        case FEMOutcome::null:
            return "null";
        case FEMOutcome::refused:
            return "refused";
        case FEMOutcome::wrongKind:
            return "wrongKind";
        case FEMOutcome::fault:
            return "fault";
    }
    return {};
}

void observeMapping(const Kind& kind, RepresentationView document, std::string_view keyPath,
                    FEMObserver& observer) {
    // A page's mapper would report a missing list. That the document is not a page says more.
    if (kind.isPage() && !document.isDictionary()) {
        const FEMOutcome outcome = document.isNull() ? FEMOutcome::null : FEMOutcome::wrongKind;
        return observer.ruleApplied({FEMPath(), nullptr, outcome, document});
    }
    kind.map(document, keyPath, {&observer, nullptr, {}});
}

void enumerateUnreadKeys(const Kind& kind, RepresentationView document, std::string_view keyPath,
                         const FEMUnreadKeys::Visit& visit) {
    if (kind.isPage())
        FEMUnreadKeys::inCollection(document, keyPathOf(kind, keyPath), *kind.rules, visit);
    else
        FEMUnreadKeys::inObject(document, {}, *kind.rules, visit);
}

void explain(const Kind& kind, RepresentationView document, std::string_view keyPath, const Visit& visit) {
    Findings findings(visit);
    observeMapping(kind, document, keyPath, findings);
    enumerateUnreadKeys(kind, document, keyPath, [&](const FEMPath& path, RepresentationView value) {
        visit({path.pointer(), {}, kUnread, value});
    });
}

}  // namespace QELModels::tool
