#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "JSON/JSONWriter.h"
#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"

/// @file
/// What an audit of many documents answers, as a value: audits of parts add up to the audit of the whole,
/// whatever the parts and their order.

namespace QELModels::tool {

/// The outcomes that are counted, in the order in which they are shown.
inline constexpr std::array kAuditOutcomes{FEMOutcome::set,
                                           FEMOutcome::missing,
                                           FEMOutcome::null,
                                           FEMOutcome::refused,
                                           FEMOutcome::wrongKind,
                                           FEMOutcome::fault};

/// Where in the input something was seen. Places are in order by file, line and pointer, all by their bytes.
struct AuditPlace {
    std::string file;
    std::uint64_t line = 0;  ///< of the document, from 1; 1 in a file that is one document
    std::string pointer;     ///< a JSON Pointer from the document's root

    // The type is written, since not every standard library has `<=>` for texts: `<` serves as well.
    friend std::strong_ordering operator<=>(const AuditPlace&, const AuditPlace&) = default;
};

/// How often something was seen, and the least place where it was.
struct AuditTally {
    std::uint64_t count = 0;
    AuditPlace example;  ///< without a file when there is none

    void add(const AuditTally& other);
    friend bool operator==(const AuditTally&, const AuditTally&) = default;
};

/// What became of one property in all documents, one tally an outcome.
class AuditOutcomes {
public:
    AuditTally& operator[](FEMOutcome outcome) { return tallies_[static_cast<std::size_t>(outcome)]; }
    const AuditTally& operator[](FEMOutcome outcome) const {
        return tallies_[static_cast<std::size_t>(outcome)];
    }
    /// How often its rule was applied.
    std::uint64_t total() const;
    /// How often the document had a value there that the rule could not use.
    std::uint64_t problems() const;

    friend bool operator==(const AuditOutcomes&, const AuditOutcomes&) = default;

private:
    std::array<AuditTally, kAuditOutcomes.size()> tallies_;
};

/// A document that could not be read, or whose mapping faults.
struct AuditProblem {
    std::string file;
    std::uint64_t line = 0;
    std::uint64_t column = 0;  ///< of a broken document: in bytes, from 1
    std::string pointer;       ///< of a faulty document: the value that is at fault
    std::string reason;

    friend std::strong_ordering operator<=>(const AuditProblem&, const AuditProblem&) = default;
};

/// Documents with a problem of one kind: their number, and the first of them by name.
class AuditProblems {
public:
    /// How many are named: a file that is not JSON at all must not fill the memory.
    static constexpr std::size_t kMostNamed = 1000;

    void add(AuditProblem problem);
    void add(const AuditProblems& other);
    std::uint64_t count() const noexcept { return count_; }
    /// The least ones by file and line, in that order.
    const std::vector<AuditProblem>& named() const noexcept { return named_; }
    /// Problems of which only some are named.
    static AuditProblems of(std::uint64_t count, std::vector<AuditProblem> named);

    friend bool operator==(const AuditProblems&, const AuditProblems&) = default;

private:
    void name(AuditProblem problem);

    std::uint64_t count_ = 0;
    std::vector<AuditProblem> named_;
};

/// A text is not an audit: what is wrong, and where in the text, `pointer: what`.
struct NotAnAudit : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What many documents of one kind have in common.
struct Audit {
    /// The path of the value and the property that it fills, with `*` for indices.
    using PropertyKey = std::pair<std::string, std::string>;
    using Property = std::pair<const PropertyKey, AuditOutcomes>;
    using UnreadKey = std::pair<const std::string, AuditTally>;

    std::string kind;
    std::uint64_t documents = 0;  ///< the broken and the faulty ones too
    AuditProblems broken;
    AuditProblems faulty;
    std::map<PropertyKey, AuditOutcomes> properties;
    std::map<std::string, AuditTally> unread;  ///< by path, with `*` for indices

    /// Adds an audit of other documents of the same kind.
    void add(const Audit& other);
    /// A property's outcomes for people. A mapping reports an element of a list, or a document, only when it
    /// is not a record; here those that are records count as set, without an example.
    AuditOutcomes outcomesOf(const Property& property) const;
    /// How many properties had a problem.
    std::size_t propertiesWithProblems() const;
    /// The properties for people: those with the most problems first, then those that are filled least often,
    /// then by path. Valid until the audit changes.
    std::vector<const Property*> propertiesProblemsFirst() const QELMODELS_LENT;
    /// The keys that no rule reads, most frequent first, then by path. Valid until the audit changes.
    std::vector<const UnreadKey*> unreadMostFrequentFirst() const QELMODELS_LENT;

    /// Writes it for programs, the same audit always in the same bytes.
    void write(JSONWriter& writer) const;
    /// Reads what was written. Throws `NotAnAudit`.
    static Audit read(RepresentationView text);

    friend bool operator==(const Audit&, const Audit&) = default;
};

/// An outcome in words for people.
std::string_view outcomeLabel(FEMOutcome outcome) noexcept;
/// A count with commas between thousands.
std::string countText(std::uint64_t count);
/// A share in percent: "100 %" and "0 %" mean all and none.
std::string shareText(std::uint64_t count, std::uint64_t total);

}  // namespace QELModels::tool
