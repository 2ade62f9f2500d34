#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Mapping/FEMPath.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "tool/Kinds.h"
#include "tool/audit/Audit.h"

namespace QELModels::tool {

/// Counts what becomes of every property of the documents that it is given, one thread's share of them. An
/// asset has more than a hundred rules, so the counts lie in a tree of the steps of paths: an event finds its
/// count with one comparison or two, and texts are made only for the examples that are kept.
class AuditCollector final : private FEMObserver {
public:
    explicit AuditCollector(const Kind& kind);
    ~AuditCollector() override;

    /// Maps a document and counts what became of it; one whose mapping faults is counted as faulty. Documents
    /// are given in the order of their places. The file's name outlives the collector.
    void add(RepresentationView document, std::string_view file, std::uint64_t line);
    /// Counts a document that could not be read.
    void addBroken(AuditProblem problem);

    /// What has been counted.
    Audit audit() const;

private:
    struct Step;
    struct Tally;
    struct Example;
    class Steps;

    void ruleApplied(const FEMEvent& event) override;
    void count(Tally& tally, const FEMPath& path);
    bool comesBefore(const FEMPath& path, const Example& example);

    const Kind& kind_;
    Audit documents_;  // all but what the trees count
    std::unique_ptr<Steps> rules_;
    std::unique_ptr<Steps> unread_;
    std::uint64_t document_ = 0;  // its number, from 1
    std::string_view file_;
    std::uint64_t line_ = 0;
    std::vector<std::size_t> indices_;
};

}  // namespace QELModels::tool
