#include "tool/audit/AuditTable.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "tool/Display.h"

namespace QELModels::tool {

namespace {

class TableWriter {
public:
    TableWriter(const Audit& audit, bool isColored, Output& output)
        : audit_(audit), isColored_(isColored), output_(output) {}

    void write() {
        line(fmt::format("{} documents of kind {}, {} broken, {} faulty",
                         countText(audit_.documents),
                         audit_.kind,
                         countText(audit_.broken.count()),
                         countText(audit_.faulty.count())),
             Style::bold);
        line(fmt::format("{} properties, {} with problems, {} unread keys",
                         audit_.properties.size(),
                         audit_.propertiesWithProblems(),
                         audit_.unread.size()),
             Style::bold);
        for (const Audit::Property* property : audit_.propertiesProblemsFirst())
            write(*property);
        writeUnread();
        write(audit_.broken, "Broken documents");
        write(audit_.faulty, "Documents whose mapping faults");
    }

private:
    static Style styleOf(FEMOutcome outcome) {
        if (outcome == FEMOutcome::set) return Style::faint;
        return outcome == FEMOutcome::missing || outcome == FEMOutcome::null ? Style::yellow : Style::red;
    }

    void line(std::string_view text, Style style = Style::plain) {
        output_.write(styled(text, style, isColored_) + '\n');
    }

    static std::string placeText(const AuditPlace& place) {
        if (place.file.empty()) return {};
        return fmt::format(
            "  {}:{} {}", shown(place.file, kUncut).text, place.line, shown(place.pointer, kUncut).text);
    }

    // A property's name and path, then a line for each outcome that it had.
    void write(const Audit::Property& property) {
        const auto& [path, name] = property.first;
        const std::string place = path.empty() ? "the document" : shown(path, kUncut).text;
        const std::string head =
            name.empty() ? place : fmt::format("{}  {}", shown(name, kUncut).text, place);
        const AuditOutcomes outcomes = audit_.outcomesOf(property);
        line("\n" + head, outcomes.problems() != 0 ? Style::bold : Style::plain);
        for (const FEMOutcome outcome : kAuditOutcomes) {
            const AuditTally& tally = outcomes[outcome];
            if (tally.count == 0) continue;
            line(fmt::format("  {:<10} {:>11} {:>7}{}",
                             outcomeLabel(outcome),
                             countText(tally.count),
                             shareText(tally.count, outcomes.total()),
                             placeText(tally.example)),
                 styleOf(outcome));
        }
    }

    void writeUnread() {
        if (!audit_.unread.empty()) line("\nKeys that no rule reads", Style::bold);
        for (const Audit::UnreadKey* key : audit_.unreadMostFrequentFirst())
            line(fmt::format("  {:>11}  {}{}",
                             countText(key->second.count),
                             shown(key->first, kUncut).text,
                             placeText(key->second.example)));
    }

    void write(const AuditProblems& problems, std::string_view title) {
        if (problems.count() != 0) line(fmt::format("\n{}", title), Style::bold);
        for (const AuditProblem& problem : problems.named()) {
            const std::string place = problem.column != 0 ? fmt::format("{}", problem.column)
                                                          : ' ' + shown(problem.pointer, kUncut).text;
            line(fmt::format("  {}:{}:{}: {}",
                             shown(problem.file, kUncut).text,
                             problem.line,
                             place,
                             shown(problem.reason, kUncut).text));
        }
        const std::uint64_t more = problems.count() - problems.named().size();
        if (more != 0) line(fmt::format("  and {} more", countText(more)));
    }

    const Audit& audit_;
    bool isColored_;
    Output& output_;
};

}  // namespace

void writeAuditTable(const Audit& audit, bool isColored, Output& output) {
    TableWriter(audit, isColored, output).write();
}

}  // namespace QELModels::tool
