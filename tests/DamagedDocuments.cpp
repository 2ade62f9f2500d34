#include "tests/DamagedDocuments.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "QELModels/Platform/KeyPath.h"

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

// What a rule makes of the value that a damage puts in its place.
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

WholeDocument::WholeDocument(const tool::Kind& kind) {
    writeDictionary({}, [&] {
        if (!kind.isPage()) return addMembers({}, {}, *kind.rules);
        const std::string path = pathOf({}, kind.keyPath);
        addAtKeyPath({Place::What::pagesList, path, {}, nullptr, kind.rules}, {}, kind.keyPath, [&] {
            writeList(path, {}, *kind.rules);
        });
    });
}

// A member, or an element where there is no key.
void WholeDocument::add(Place place, std::string_view key, const Write& write) {
    place.begin = text_.size();
    if (text_.back() != '{' && text_.back() != '[') text_ += ',';
    if (!key.empty()) text_ += '"' + std::string(key) + "\":";
    place.value = text_.size();
    const std::size_t position = places.size();
    places.push_back(std::move(place));
    write();
    places[position].end = text_.size();
}

void WholeDocument::addAtKeyPath(Place place, std::string path, std::string_view keyPath,
                                 const Write& write) {
    const KeyPath keys(keyPath);
    if (keys.isLast()) return add(std::move(place), keys.first, write);
    path = pathOf(std::move(path), keys.first);
    Place middle{Place::What::middleOfKeyPath, path, {}};
    middle.linesIfMissing = {{place.path, place.property, "missing"}};
    add(std::move(middle), keys.first, [&] {
        writeDictionary(path, [&] { addAtKeyPath(std::move(place), path, keys.rest, write); });
    });
}

// A dictionary that begins with a key that no rule reads.
void WholeDocument::writeDictionary(const std::string& path, const Write& writeMembers) {
    text_ += '{';
    const std::string unreadPath = path + '/' + std::string(kUnreadToken);
    unread.push_back({unreadPath, {}, "unread"});
    add({Place::What::unread, unreadPath, {}}, kUnreadKey, [this] { text_ += '1'; });
    writeMembers();
    text_ += '}';
}

void WholeDocument::writeList(const std::string& path, const std::string& property, const FEMRules& rules) {
    text_ += '[';
    for (const bool isEmpty : {true, false}) {
        const std::string elementPath = path + (isEmpty ? "/0" : "/1");
        const std::string element = property + (isEmpty ? "[0]" : "[1]");
        add({Place::What::element, elementPath, element, nullptr, &rules}, {}, [&] {
            writeDictionary(elementPath, [&] {
                if (!isEmpty) return addMembers(elementPath, element, rules);
                for (Line& line : missing(rules, elementPath, element))
                    lines.push_back(std::move(line));
            });
        });
    }
    text_ += ']';
}

void WholeDocument::addMembers(const std::string& path, const std::string& property, const FEMRules& rules) {
    for (const auto list : {rules.attributes, rules.relationships}) {
        for (const FEMRule& rule : list) {
            const std::string at = pathOf(path, rule.keyPath);
            const std::string name = joined(property, rule.property->name);
            lines.push_back({at, name, "set"});
            addAtKeyPath({Place::What::rule, at, name, &rule}, path, rule.keyPath, [&] {
                if (!rule.isRelationship())
                    text_ += valueFor(rule);
                else if (rule.toMany)
                    writeList(at, name, rule.nestedRules());
                else
                    writeDictionary(at, [&] { addMembers(at, name, rule.nestedRules()); });
            });
        }
    }
}

// No two values are alike.
std::string WholeDocument::valueFor(const FEMRule& rule) {
    const std::string number = std::to_string(++count_);
    switch (rule.accepts()) {
        case FEMAccepts::text:
            return "\"text " + number + '"';
        case FEMAccepts::reference:
            return "\"https://tv.example/" + number + '"';
        case FEMAccepts::color:
            return "\"#" + std::to_string(100000 + count_) + '"';
        case FEMAccepts::word:
            return '"' + std::string(rule.map.word(rule.map, rule.map.size - 1)) + '"';
        case FEMAccepts::number:
            return number;
        case FEMAccepts::array:
            return R"([{"any":)" + number + "}]";
        case FEMAccepts::dictionary:
            return R"({"any":{"deep":)" + number + "}}";
        default:
            return "null";
    }
}

std::string WholeDocument::damagedJSON(const Place& place, const Damage& damage) const {
    std::string text = text_;
    if (damage.json) return text.replace(place.value, place.end - place.value, *damage.json);
    text.erase(place.begin, place.end - place.begin);
    if (text[place.begin - 1] == '{' && text[place.begin] == ',') text.erase(place.begin, 1);
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
