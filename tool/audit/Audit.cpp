#include "tool/audit/Audit.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "tool/Explanation.h"
#include "tool/Kinds.h"
#include "tool/Members.h"

namespace QELModels::tool {

namespace {

// Every JSON reader keeps such counts exactly, and no sum of a few files can overflow.
constexpr std::uint64_t kLargestCount = std::uint64_t{1} << 53;

// --- Writing ----------------------------------------------------------------------------------------------

void writeMembers(JSONWriter& writer, const AuditTally& tally) {
    writeMember(writer, "count", tally.count);
    writer.key("example");
    if (tally.count == 0) return writer.null();
    writer.beginDictionary();
    writeMember(writer, "file", tally.example.file);
    writeMember(writer, "line", tally.example.line);
    writeMember(writer, "pointer", tally.example.pointer);
    writer.endDictionary();
}

void writeProblems(JSONWriter& writer, const AuditProblems& problems, bool areFaults) {
    writer.beginDictionary();
    writeMember(writer, "count", problems.count());
    writer.key("named");
    writer.beginArray();
    for (const AuditProblem& problem : problems.named()) {
        writer.beginDictionary();
        writeMember(writer, "file", problem.file);
        writeMember(writer, "line", problem.line);
        if (areFaults)
            writeMember(writer, "pointer", problem.pointer);
        else
            writeMember(writer, "column", problem.column);
        writeMember(writer, "reason", problem.reason);
        writer.endDictionary();
    }
    writer.endArray();
    writer.endDictionary();
}

void writeProperty(JSONWriter& writer, const Audit::Property& property) {
    const auto& [key, outcomes] = property;
    writer.beginDictionary();
    writeMember(writer, "path", key.first);
    writeMember(writer, "property", key.second);
    for (const FEMOutcome outcome : kAuditOutcomes) {
        writer.key(outcomeName(outcome));
        writer.beginDictionary();
        writeMembers(writer, outcomes[outcome]);
        writer.endDictionary();
    }
    writer.endDictionary();
}

// --- Reading ----------------------------------------------------------------------------------------------

// A value of the text, and its pointer.
class Field {
public:
    Field(RepresentationView value, std::string pointer) : value_(value), pointer_(std::move(pointer)) {}

    Field operator[](std::string_view key) const {
        const auto value = value_.valueForKey(key);
        if (!value) throw NotAnAudit(fmt::format("{}: '{}' is missing", pointer_, key));
        return {*value, fmt::format("{}/{}", pointer_, key)};
    }
    std::vector<Field> elements() const {
        if (!value_.isArray()) refuse("not an array");
        std::vector<Field> fields;
        for (const RepresentationView element : value_.elements())
            fields.emplace_back(element, fmt::format("{}/{}", pointer_, fields.size()));
        return fields;
    }
    std::string text() const {
        const auto text = value_.text();
        if (!text) refuse("not a string");
        return std::string(*text);
    }
    std::uint64_t count() const {
        const std::optional<Number> number = value_.number();
        if (!number || number->isBoolean()) refuse("not a number");
        const std::int64_t count = number->int64Value();
        if (count < 0 || Number(count) != *number || static_cast<std::uint64_t>(count) > kLargestCount)
            refuse("not a count");
        return static_cast<std::uint64_t>(count);
    }
    bool isNull() const { return value_.isNull(); }
    [[noreturn]] void refuse(std::string_view what) const {
        throw NotAnAudit(fmt::format("{}: {}", pointer_, what));
    }

private:
    RepresentationView value_;
    std::string pointer_;
};

AuditTally tallyFrom(const Field& field) {
    AuditTally tally;
    tally.count = field["count"].count();
    const Field example = field["example"];
    if (example.isNull() != (tally.count == 0)) example.refuse("does not go with the count");
    if (tally.count != 0)
        tally.example = {example["file"].text(), example["line"].count(), example["pointer"].text()};
    return tally;
}

AuditProblems problemsFrom(const Field& field, bool areFaults) {
    std::vector<AuditProblem> named;
    for (const Field& one : field["named"].elements()) {
        AuditProblem problem{one["file"].text(), one["line"].count(), 0, {}, one["reason"].text()};
        if (areFaults)
            problem.pointer = one["pointer"].text();
        else
            problem.column = one["column"].count();
        named.push_back(std::move(problem));
    }
    const std::uint64_t count = field["count"].count();
    if (named.size() != std::min<std::uint64_t>(count, AuditProblems::kMostNamed))
        field["named"].refuse("does not go with the count");
    return AuditProblems::of(count, std::move(named));
}

}  // namespace

void AuditTally::add(const AuditTally& other) {
    if (other.count == 0) return;
    if (count == 0 || other.example < example) example = other.example;
    count += other.count;
}

std::uint64_t AuditOutcomes::total() const {
    std::uint64_t total = 0;
    for (const AuditTally& tally : tallies_)
        total += tally.count;
    return total;
}

std::uint64_t AuditOutcomes::problems() const {
    return (*this)[FEMOutcome::refused].count + (*this)[FEMOutcome::wrongKind].count +
           (*this)[FEMOutcome::fault].count;
}

void AuditProblems::add(AuditProblem problem) {
    ++count_;
    name(std::move(problem));
}

void AuditProblems::add(const AuditProblems& other) {
    count_ += other.count_;
    for (const AuditProblem& problem : other.named_)
        name(problem);
}

AuditProblems AuditProblems::of(std::uint64_t count, std::vector<AuditProblem> named) {
    AuditProblems problems;
    problems.count_ = count;
    for (AuditProblem& problem : named)
        problems.name(std::move(problem));
    return problems;
}

// The least ones of all are among the least ones of each part, so the parts may forget the rest.
void AuditProblems::name(AuditProblem problem) {
    if (named_.size() == kMostNamed && named_.back() <= problem) return;
    named_.insert(std::upper_bound(named_.begin(), named_.end(), problem), std::move(problem));
    if (named_.size() > kMostNamed) named_.pop_back();
}

void Audit::add(const Audit& other) {
    documents += other.documents;
    broken.add(other.broken);
    faulty.add(other.faulty);
    for (const auto& [key, outcomes] : other.properties)
        for (const FEMOutcome outcome : kAuditOutcomes)
            properties[key][outcome].add(outcomes[outcome]);
    for (const auto& [path, tally] : other.unread)
        unread[path].add(tally);
}

AuditOutcomes Audit::outcomesOf(const Property& property) const {
    constexpr std::string_view kElement = "[*]";
    const auto& [path, name] = property.first;
    AuditOutcomes outcomes = property.second;
    std::uint64_t& set = outcomes[FEMOutcome::set].count;
    if (name.empty()) {
        // A page's list is looked for in the documents that are dictionaries.
        const auto noRecords = path.empty() ? properties.end() : properties.find({{}, {}});
        const std::uint64_t elsewhere = noRecords == properties.end() ? 0 : noRecords->second.total();
        const std::uint64_t counted = broken.count() + elsewhere + outcomes.total();
        set = documents - std::min(documents, counted);
    } else if (name.ends_with(kElement)) {
        // Each record's first rule is applied, whatever becomes of the others.
        for (const auto& [key, theirs] : properties) {
            const std::string_view member = key.second;
            if (!member.starts_with(name) || !key.first.starts_with(path + '/')) continue;
            const std::string_view rest = member.substr(name.size());
            if (rest.starts_with('.') && rest.find_first_of(".[", 1) == std::string_view::npos)
                set = std::max(set, theirs.total());
        }
    }
    return outcomes;
}

std::size_t Audit::propertiesWithProblems() const {
    return static_cast<std::size_t>(
        std::count_if(properties.begin(), properties.end(), [](const Property& property) {
            return property.second.problems() != 0;
        }));
}

std::vector<const Audit::Property*> Audit::propertiesProblemsFirst() const {
    struct Ranked {
        std::uint64_t problems;
        double filled;
        const Property* property;
    };
    std::vector<Ranked> ranked;
    for (const Property& property : properties) {
        const AuditOutcomes outcomes = outcomesOf(property);
        const auto total = static_cast<double>(std::max<std::uint64_t>(outcomes.total(), 1));
        const double filled = static_cast<double>(outcomes[FEMOutcome::set].count) / total;
        ranked.push_back({outcomes.problems(), filled, &property});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) {
        return a.problems != b.problems ? a.problems > b.problems : a.filled < b.filled;
    });
    std::vector<const Property*> result;
    result.reserve(ranked.size());
    for (const Ranked& one : ranked)
        result.push_back(one.property);
    return result;
}

std::vector<const Audit::UnreadKey*> Audit::unreadMostFrequentFirst() const {
    std::vector<const UnreadKey*> keys;
    keys.reserve(unread.size());
    for (const UnreadKey& key : unread)
        keys.push_back(&key);
    std::stable_sort(keys.begin(), keys.end(), [](const UnreadKey* a, const UnreadKey* b) {
        return a->second.count > b->second.count;
    });
    return keys;
}

void Audit::write(JSONWriter& writer) const {
    writer.beginDictionary();
    writeMember(writer, "kind", kind);
    writeMember(writer, "documents", documents);
    writer.key("broken");
    writeProblems(writer, broken, false);
    writer.key("faulty");
    writeProblems(writer, faulty, true);
    writer.key("properties");
    writer.beginArray();
    for (const Property& property : properties)
        writeProperty(writer, property);
    writer.endArray();
    writer.key(kUnread);
    writer.beginArray();
    for (const UnreadKey* key : unreadMostFrequentFirst()) {
        writer.beginDictionary();
        writeMember(writer, "path", key->first);
        writeMembers(writer, key->second);
        writer.endDictionary();
    }
    writer.endArray();
    writer.endDictionary();
}

Audit Audit::read(RepresentationView text) {
    const Field field(text, "");
    Audit audit;
    audit.kind = field["kind"].text();
    const auto isOurs = [&](const Kind& known) { return known.name == audit.kind; };
    if (std::none_of(kinds().begin(), kinds().end(), isOurs)) field["kind"].refuse("no kind of document");
    audit.documents = field["documents"].count();
    audit.broken = problemsFrom(field["broken"], false);
    audit.faulty = problemsFrom(field["faulty"], true);
    if (audit.broken.count() + audit.faulty.count() > audit.documents)
        field["documents"].refuse("fewer than are broken or faulty");
    for (const Field& row : field["properties"].elements()) {
        AuditOutcomes& outcomes = audit.properties[{row["path"].text(), row["property"].text()}];
        for (const FEMOutcome outcome : kAuditOutcomes)
            outcomes[outcome].add(tallyFrom(row[outcomeName(outcome)]));
    }
    for (const Field& row : field[kUnread].elements())
        audit.unread[row["path"].text()].add(tallyFrom(row));
    return audit;
}

std::string_view outcomeLabel(FEMOutcome outcome) noexcept {
    return outcome == FEMOutcome::wrongKind ? "wrong kind" : outcomeName(outcome);
}

std::string countText(std::uint64_t count) {
    constexpr std::size_t kGroup = 3;
    std::string text = std::to_string(count);
    for (std::size_t at = text.size(); at > kGroup;)
        text.insert(at -= kGroup, 1, ',');
    return text;
}

std::string shareText(std::uint64_t count, std::uint64_t total) {
    constexpr double kAll = 100;
    constexpr double kLeastShown = 0.1;
    if (count == 0) return "0 %";
    if (count == total) return "100 %";
    const double percent = kAll * static_cast<double>(count) / static_cast<double>(total);
    if (percent < kLeastShown) return "<0.1 %";
    return fmt::format("{:.1f} %", std::min(percent, kAll - kLeastShown));
}

}  // namespace QELModels::tool
