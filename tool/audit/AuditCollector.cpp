#include "tool/audit/AuditCollector.h"

#include <algorithm>
#include <deque>
#include <unordered_map>

#include "QELModels/Records/MappingFault.h"
#include "tool/Explanation.h"

namespace QELModels::tool {

namespace {

bool isSame(std::string_view a, std::string_view b) noexcept {
    // What rules read and fill is constant data, so that comparing addresses settles nearly all.
    return a.size() == b.size() && (a.data() == b.data() || a == b);
}

// Puts the indices of a path in place of others, whose memory is used again.
void readIndices(const FEMPath& path, std::vector<std::size_t>& indices) {
    std::size_t count = 0;
    for (const FEMPath* step = &path; step != nullptr; step = step->parent())
        count += step->isElement() ? 1 : 0;
    indices.resize(count);
    for (const FEMPath* step = &path; step != nullptr; step = step->parent())
        if (step->isElement()) indices[--count] = step->index();
}

}  // namespace

struct AuditCollector::Example {
    std::string_view file;
    std::uint64_t line;
    std::vector<std::size_t> indices;  // those in the pointer
    std::string pointer;
};

struct AuditCollector::Tally {
    std::uint64_t count = 0;
    std::uint64_t document = 0;  // the number of the document of the example
    std::unique_ptr<Example> example;
};

// One step of the paths. All elements of a list share one.
struct AuditCollector::Step {
    Step(const FEMPath& at, std::size_t place)
        : position(place), isDocumentKey(at.isDocumentKey()), property(at.propertyName()) {
        // The key paths of rules are constant data. Keys of documents, and where a mapping begins, are
        // copied.
        const bool isConstant = !isDocumentKey && at.parent() != nullptr;
        if (!isConstant) copy = at.keyPath();
        keyPath = isConstant ? at.keyPath() : std::string_view(copy);
    }

    // The step of all elements of a list has no key.
    bool isFor(const FEMPath& at) const noexcept {
        return isDocumentKey == at.isDocumentKey() && isSame(keyPath, at.keyPath()) &&
               isSame(property, at.propertyName());
    }

    std::size_t position;  // among the steps that follow the same step
    bool isDocumentKey;
    std::string copy;
    std::string_view keyPath;
    std::string_view property;

    std::vector<Step*> next;    // in the order in which they were first seen
    std::size_t following = 0;  // which of them is expected next
    std::unordered_multimap<std::string_view, Step*> nextByKey;

    std::vector<Tally> tallies;
    std::string path;  // with "*" for indices, once something is counted here
    std::string model;
};

// All steps from one root. Events of a record come in the order of its rules, and the keys of one document in
// much the same order as those of the next: the step that is looked for is nearly always the one after the
// last.
class AuditCollector::Steps {
public:
    Step& at(const FEMPath& path) {
        if (void* note = path.note()) return *static_cast<Step*>(note);
        Step& before = path.parent() == nullptr ? root_ : at(*path.parent());
        Step& step = after(before, path);
        path.note() = &step;
        return step;
    }

    Tally& tally(const FEMPath& path, std::size_t number) {
        Step& step = at(path);
        if (step.tallies.size() <= number) [[unlikely]] {
            step.tallies.resize(number + 1);
            step.path = path.pointer(FEMPath::Indices::any);
            step.model = path.property(FEMPath::Indices::any);
        }
        return step.tallies[number];
    }

    const std::deque<Step>& all() const { return steps_; }

private:
    Step& after(Step& before, const FEMPath& path) {
        if (!before.next.empty()) [[likely]] {
            const bool isPastLast = before.following >= before.next.size();
            Step& step = *before.next[isPastLast ? 0 : before.following];
            if (step.isFor(path)) [[likely]] {
                before.following = step.position + 1;
                return step;
            }
        }
        Step& step = found(before, path);
        before.following = step.position + 1;
        return step;
    }

    Step& found(Step& before, const FEMPath& path) {
        const auto [first, last] = before.nextByKey.equal_range(path.keyPath());
        const auto known =
            std::find_if(first, last, [&](const auto& entry) { return entry.second->isFor(path); });
        if (known != last) return *known->second;
        Step& step = steps_.emplace_back(path, before.next.size());
        before.next.push_back(&step);
        before.nextByKey.emplace(step.keyPath, &step);
        return step;
    }

    Step root_{FEMPath(), 0};
    std::deque<Step> steps_;
};

AuditCollector::AuditCollector(const Kind& kind)
    : kind_(kind), rules_(std::make_unique<Steps>()), unread_(std::make_unique<Steps>()) {
    documents_.kind = kind.name;
}

AuditCollector::~AuditCollector() = default;

void AuditCollector::add(RepresentationView document, std::string_view file, std::uint64_t line) {
    ++documents_.documents;
    ++document_;
    file_ = file;
    line_ = line;
    try {
        observeMapping(kind_, document, {}, *this);
    } catch (const MappingFault& fault) {
        documents_.faulty.add(
            {std::string(file), line, 0, std::string(fault.pointer()), std::string(fault.what())});
        return;
    }
    enumerateUnreadKeys(kind_, document, {}, [this](const FEMPath& path, RepresentationView) {
        count(unread_->tally(path, 0), path);
    });
}

void AuditCollector::addBroken(AuditProblem problem) {
    ++documents_.documents;
    documents_.broken.add(std::move(problem));
}

void AuditCollector::ruleApplied(const FEMEvent& event) {
    count(rules_->tally(event.path, static_cast<std::size_t>(event.outcome)), event.path);
}

// Documents come in order, so the first document has the least place, which need not be the first in it.
void AuditCollector::count(Tally& tally, const FEMPath& path) {
    if (tally.count++ != 0) [[likely]] {
        if (tally.document != document_ || !comesBefore(path, *tally.example)) return;
    }
    tally.document = document_;
    readIndices(path, indices_);
    tally.example = std::make_unique<Example>(Example{file_, line_, indices_, path.pointer()});
}

// Pointers of one step differ only in their indices. An index ends at the end of its pointer or at a slash,
// which is less than any digit. So the first index that differs decides, by its digits as a text.
bool AuditCollector::comesBefore(const FEMPath& path, const Example& example) {
    if (example.indices.empty()) return false;
    readIndices(path, indices_);
    const auto [mine, its] =
        std::mismatch(indices_.begin(), indices_.end(), example.indices.begin(), example.indices.end());
    return mine != indices_.end() && *its != 0 && std::to_string(*mine) < std::to_string(*its);
}

Audit AuditCollector::audit() const {
    Audit audit = documents_;
    const auto tallyOf = [](const Tally& tally) {
        const Example& example = *tally.example;
        return AuditTally{tally.count, {std::string(example.file), example.line, example.pointer}};
    };
    for (const Step& step : rules_->all())
        for (std::size_t i = 0; i < step.tallies.size(); ++i)
            if (step.tallies[i].count != 0)
                audit.properties[{step.path, step.model}][static_cast<FEMOutcome>(i)].add(
                    tallyOf(step.tallies[i]));
    for (const Step& step : unread_->all())
        for (const Tally& tally : step.tallies)
            audit.unread[step.path].add(tallyOf(tally));
    return audit;
}

}  // namespace QELModels::tool
