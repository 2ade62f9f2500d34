#include "tests/DamagedDocuments.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace QELModels::test {

namespace {

constexpr std::string_view kUnreadKey = "un/read~.x";
constexpr std::string_view kUnreadToken = "un~1read~0.x";

std::string joined(const std::string& property, std::string_view name) {
    return property.empty() ? std::string(name) : property + '.' + std::string(name);
}

std::string pathOf(std::string path, std::string_view keyPath) {
    path += '/';
    path += keyPath;
    std::replace(path.begin(), path.end(), '.', '/');
    return path;
}

Lines missing(const FEMRules& rules, const std::string& path, const std::string& property) {
    Lines lines;
    for (const auto list : {rules.attributes, rules.relationships})
        for (const FEMRule& rule : list)
            lines.push_back({pathOf(path, rule.keyPath), joined(property, rule.property->name), "missing"});
    return lines;
}

bool isAtOrUnder(const Line& line, const std::string& path) {
    return line.path == path || line.path.starts_with(path + '/');
}

void write(std::string& out, const Tree& tree, std::span<const std::size_t> steps, const Damage* damage) {
    out += tree.scalar;
    if (!tree.isContainer()) return;
    bool isFirst = true;
    for (std::size_t i = 0; i < tree.members.size(); ++i) {
        const bool isOnTheWay = !steps.empty() && steps.front() == i;
        const bool isHere = isOnTheWay && steps.size() == 1;
        if (isHere && !damage->json) continue;
        if (!std::exchange(isFirst, false)) out += ',';
        if (tree.isDictionary()) out += '"' + tree.members[i].key + "\":";
        if (isHere)
            out += *damage->json;
        else
            write(
                out, tree.members[i], isOnTheWay ? steps.subspan(1) : std::span<const std::size_t>(), damage);
    }
    out += tree.isDictionary() ? '}' : ']';
}

// What a rule makes of a value that stands there.
std::string outcome(const FEMRule& rule, const Damage& damage) {
    const std::string_view json = *damage.json;
    if (json == "null") return "null";
    const bool isMapped = rule.map.apply != nullptr;
    const std::string unfit = isMapped ? "refused" : "wrongKind";
    switch (rule.accepts()) {
        case FEMAccepts::text:
            return damage.name == "string" ? "set" : unfit;
        case FEMAccepts::reference:
        case FEMAccepts::word:
            return "refused";  // the string is neither a URL nor in any table
        case FEMAccepts::color:
            return damage.name == "string" ? "refused" : "fault";
        case FEMAccepts::number:
            return damage.name == "number" || damage.name == "boolean" ? "set" : unfit;
        case FEMAccepts::array:
            return damage.name == "array" ? "set" : unfit;
        case FEMAccepts::dictionary:
            return damage.name == "dictionary" ? "set" : unfit;
        default:
            return "?";
    }
}

}  // namespace

const std::vector<Damage>& allDamages() {
    static const std::vector<Damage> damages{{"missing", std::nullopt},
                                             {"null", "null"},
                                             {"string", R"("a b")"},
                                             {"number", "7.5"},
                                             {"boolean", "true"},
                                             {"array", "[]"},
                                             {"dictionary", "{}"}};
    return damages;
}

WholeDocument::WholeDocument(const tool::Kind& kind) : root_{"{"} {
    const auto addUnread = [this] {
        places.push_back({Place::What::unread, {0}, '/' + std::string(kUnreadToken), {}});
        unread.push_back({'/' + std::string(kUnreadToken), {}, "unread"});
        add({}, std::string(kUnreadKey), {"1"});
    };
    addUnread();
    if (!kind.isPage()) {
        fillRecord({}, {}, {}, *kind.rules);
        return;
    }
    std::string path;
    Steps at = reach({}, path, kind.keyPath, {pathOf({}, kind.keyPath), {}, "missing"});
    const std::string key(kind.keyPath.substr(kind.keyPath.rfind('.') + 1));
    path += '/' + key;
    at = add(at, key, {"["});
    places.push_back({Place::What::pagesList, at, path, {}, nullptr, kind.rules});
    fillList(at, path, {}, *kind.rules);
}

Tree& WholeDocument::tree(const Steps& steps) {
    Tree* tree = &root_;
    for (const std::size_t step : steps)
        tree = &tree->members[step];
    return *tree;
}

WholeDocument::Steps WholeDocument::add(Steps at, std::string key, Tree added) {
    Tree& container = tree(at);
    added.key = std::move(key);
    container.members.push_back(std::move(added));
    at.push_back(container.members.size() - 1);
    return at;
}

// A dictionary with a key that no rule reads.
WholeDocument::Steps WholeDocument::addDictionary(Steps at, const std::string& path, std::string key) {
    at = add(std::move(at), std::move(key), {"{"});
    const std::string unreadPath = path + '/' + std::string(kUnreadToken);
    const Steps steps = add(at, std::string(kUnreadKey), {"1"});
    places.push_back({Place::What::unread, steps, unreadPath, {}});
    unread.push_back({unreadPath, {}, "unread"});
    return at;
}

// The dictionary in which the last key of a key path belongs; those before it are made on the way.
WholeDocument::Steps WholeDocument::reach(Steps at, std::string& path, std::string_view keyPath,
                                          const Line& lineIfMissing) {
    for (std::size_t dot; (dot = keyPath.find('.')) != std::string_view::npos;
         keyPath.remove_prefix(dot + 1)) {
        const std::string key(keyPath.substr(0, dot));
        path += '/' + key;
        const Steps dictionary = addDictionary(at, path, key);
        places.push_back(
            {Place::What::middleOfKeyPath, dictionary, path, {}, nullptr, nullptr, {lineIfMissing}});
        at = dictionary;
    }
    return at;
}

// No two values are alike.
Tree WholeDocument::valueFor(const FEMRule& rule) {
    const std::string number = std::to_string(++count_);
    switch (rule.accepts()) {
        case FEMAccepts::text:
            return {"\"text " + number + '"'};
        case FEMAccepts::reference:
            return {"\"https://tv.example/" + number + '"'};
        case FEMAccepts::color:
            return {"\"#" + std::to_string(100000 + count_) + '"'};
        case FEMAccepts::word:
            return {'"' + std::string(rule.map.word(rule.map, rule.map.size - 1)) + '"'};
        case FEMAccepts::number:
            return {number};
        case FEMAccepts::array:
            return {"[", {{"{", {{number, {}, "any"}}}}};
        case FEMAccepts::dictionary:
            return {"{", {{"{", {{number, {}, "deep"}}, "any"}}};
        default:
            return {"null"};
    }
}

void WholeDocument::fillRecord(Steps at, const std::string& path, const std::string& property,
                               const FEMRules& rules) {
    for (const auto list : {rules.attributes, rules.relationships}) {
        for (const FEMRule& rule : list) {
            const Line line{
                pathOf(path, rule.keyPath), joined(property, rule.property->name), std::string("set")};
            std::string parent = path;
            const Steps owner =
                reach(at, parent, rule.keyPath, {line.path, line.property, std::string("missing")});
            const std::string key(rule.keyPath.substr(rule.keyPath.rfind('.') + 1));
            lines.push_back(line);
            Steps value;
            if (!rule.isRelationship())
                value = add(owner, key, valueFor(rule));
            else if (rule.toMany)
                value = add(owner, key, {"["});
            else
                value = addDictionary(owner, line.path, key);
            places.push_back({Place::What::rule, value, line.path, line.property, &rule});
            if (!rule.isRelationship()) continue;
            if (rule.toMany)
                fillList(value, line.path, line.property, rule.nestedRules());
            else
                fillRecord(value, line.path, line.property, rule.nestedRules());
        }
    }
}

void WholeDocument::fillList(const Steps& at, const std::string& path, const std::string& property,
                             const FEMRules& rules) {
    for (std::size_t i = 0; i < 2; ++i) {
        const std::string elementPath = path + '/' + std::to_string(i);
        const std::string elementProperty = property + '[' + std::to_string(i) + ']';
        const Steps element = addDictionary(at, elementPath, {});
        places.push_back({Place::What::element, element, elementPath, elementProperty, nullptr, &rules});
        if (i == 0) {
            for (Line& line : missing(rules, elementPath, elementProperty))
                lines.push_back(std::move(line));
        } else {
            fillRecord(element, elementPath, elementProperty, rules);
        }
    }
}

std::string WholeDocument::json() const {
    std::string text;
    write(text, root_, {}, nullptr);
    return text;
}

std::string WholeDocument::damagedJSON(const Place& place, const Damage& damage) const {
    std::string text;
    write(text, root_, place.steps, &damage);
    return text;
}

Lines WholeDocument::linesOf(const Place& place, const Damage& damage) const {
    Lines all = lines;
    const auto isHere = [&](const Line& line) { return isAtOrUnder(line, place.path); };
    const auto first = std::find_if(all.begin(), all.end(), isHere);
    const auto last = std::find_if_not(first, all.end(), isHere);
    const auto replaceBy = [&](Lines told) {
        const auto at = all.erase(first, last);
        all.insert(at, std::make_move_iterator(told.begin()), std::make_move_iterator(told.end()));
    };

    const std::string told = !damage.json ? "missing" : damage.name == "null" ? "null" : "wrongKind";
    switch (place.what) {
        case Place::What::unread:
            break;
        case Place::What::middleOfKeyPath:
            replaceBy(place.linesIfMissing);
            break;
        case Place::What::pagesList:
            replaceBy(damage.name == "array" ? Lines() : Lines{{place.path, {}, told}});
            break;
        case Place::What::element:
            replaceBy(damage.name == "dictionary" ? missing(*place.rules, place.path, place.property)
                                                  : Lines{{place.path, place.property, told}});
            break;
        case Place::What::rule: {
            const std::string became = damage.json ? outcome(*place.rule, damage) : "missing";
            Lines now{{place.path, place.property, became}};
            if (became == "set" && place.rule->isRelationship() && !place.rule->toMany)
                for (Line& line : missing(place.rule->nestedRules(), place.path, place.property))
                    now.push_back(std::move(line));
            if (became == "fault") {
                all.erase(first, all.end());
                all.push_back(now.front());
                return all;
            }
            replaceBy(std::move(now));
        }
    }
    const bool staysUnread = place.what == Place::What::unread && damage.json;
    for (const Line& line : unread)
        if (staysUnread || !isAtOrUnder(line, place.path)) all.push_back(line);
    return all;
}

}  // namespace QELModels::test
