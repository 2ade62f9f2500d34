#include "tool/audit/AuditPage.h"

#include <fmt/format.h>

#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>

#include "tool/Display.h"
#include "tool/Explanation.h"

namespace QELModels::tool {

namespace {

// The page may load nothing, and the browser is told so.
constexpr std::string_view kHead = R"html(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<meta http-equiv="Content-Security-Policy"
  content="default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'; img-src data:">
<link rel="icon" href="data:,">
)html";

// The colour-blind can tell the outcomes apart too: their colours differ in lightness, and each has a mark.
constexpr std::string_view kStyle = R"html(<style>
:root {
  --page: #f6f7f9; --card: #fff; --text: #1c2128; --faint: #5c6672; --line: #d9dee4; --accent: #0b62c4;
  --set: #2f9e63; --missing: #c9ced6; --null: #8f9aa8; --refused: #e8890c; --wrongKind: #c92a3d; --fault: #7b1fa2;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #14171b; --card: #1d2127; --text: #e6e9ed; --faint: #9aa5b1; --line: #343b44; --accent: #6cb2ff;
    --set: #3fb978; --missing: #4a525d; --null: #76818e; --refused: #f5a33b; --wrongKind: #f4606f; --fault: #c57be0;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 1.5rem 1rem 4rem; max-width: 74rem;
  font: 15px/1.5 system-ui, sans-serif; background: var(--page); color: var(--text);
}
h1 { font-size: 1.5rem; margin: 0 0 1rem; }
h2 { font-size: 1.15rem; margin: 2.25rem 0 .75rem; }
code { font: .92em ui-monospace, monospace; overflow-wrap: anywhere; }
.facts { display: grid; grid-template-columns: repeat(auto-fit, minmax(9rem, 1fr)); gap: .6rem; margin: 0; }
.facts div { background: var(--card); border: 1px solid var(--line); border-radius: .5rem; padding: .6rem .8rem; }
.facts dt { color: var(--faint); font-size: .85rem; }
.facts dd { margin: 0; font-size: 1.4rem; font-variant-numeric: tabular-nums; }
.facts .bad dd { color: var(--wrongKind); }
.tools {
  display: flex; flex-wrap: wrap; gap: .5rem .9rem; align-items: center; margin: 0 0 .75rem; padding: .5rem 0;
  position: sticky; top: 0; z-index: 1; background: var(--page);
}
.tools[hidden] { display: none; }
.tools input[type=search] { flex: 1 1 12rem; min-width: 0; }
.tools input[type=search], .tools select {
  font: inherit; color: inherit; background: var(--card); border: 1px solid var(--line); border-radius: .4rem;
  padding: .35rem .6rem; max-width: 100%;
}
.tools output { color: var(--faint); font-variant-numeric: tabular-nums; }
.legend { display: flex; flex-wrap: wrap; gap: .25rem 1rem; padding: 0; margin: 0 0 .75rem; list-style: none; color: var(--faint); }
.rows { list-style: none; margin: 0; padding: 0; background: var(--card); border: 1px solid var(--line); border-radius: .5rem; }
.rows > li { border-top: 1px solid var(--line); }
.rows > li:first-child, .rows > li[hidden] { border-top: 0; }
.rows > li.plain, summary { padding: .55rem .8rem; }
summary { cursor: pointer; list-style: none; display: grid; grid-template-columns: minmax(0, 5fr) minmax(0, 4fr) 4.5rem; gap: .2rem 1rem; align-items: center; }
summary::-webkit-details-marker { display: none; }
summary:hover { background: color-mix(in srgb, var(--accent) 8%, transparent); }
summary:focus-visible { outline: 2px solid var(--accent); outline-offset: -2px; }
.name > code { font-weight: 600; }
.name > code::before { content: "\25B8\A0"; color: var(--faint); font-weight: 400; }
[open] > summary .name > code::before { content: "\25BE\A0"; }
.place { color: var(--faint); font-size: .88rem; padding-left: 1.1em; }
.bar { display: flex; height: .8rem; border-radius: .25rem; overflow: hidden; background: var(--line); }
.bar i { flex: 0 1 auto; min-width: 2px; }
.share { text-align: right; font-variant-numeric: tabular-nums; }
.counts { grid-column: 1 / -1; padding-left: 1.1em; display: flex; flex-wrap: wrap; gap: 0 1rem; font-size: .88rem; }
.set, .missing, .null, .refused, .wrongKind, .fault { --mark: var(--set); }
.missing { --mark: var(--missing); } .null { --mark: var(--null); } .refused { --mark: var(--refused); }
.wrongKind { --mark: var(--wrongKind); } .fault { --mark: var(--fault); }
.bar i { background: var(--mark); }
.counts span::before, .legend li::before, dt.mark::before {
  content: ""; display: inline-block; width: .65em; height: .65em; margin-right: .4em; border-radius: 2px; background: var(--mark);
}
.examples { margin: 0; padding: .1rem .8rem .8rem 1.9em; display: grid; grid-template-columns: auto 1fr; gap: .2rem 1rem; }
.examples dt { white-space: nowrap; font-variant-numeric: tabular-nums; }
.examples dd { margin: 0; }
.none { color: var(--faint); }
@media (max-width: 40rem) {
  body { padding: 1rem .7rem 3rem; }
  .facts { grid-template-columns: repeat(2, 1fr); }
  summary { grid-template-columns: minmax(0, 1fr) 4.5rem; }
  .name { grid-column: 1 / -1; }
  .bar { margin-left: 1.1em; }
  .tools input[type=search] { flex-basis: 60%; }
  .tools select { order: 1; flex: 1 1 40%; min-width: 0; }
  .examples { grid-template-columns: 1fr; gap: 0; }
  .examples dd { margin: 0 0 .4rem 1.05em; }
}
@media print { .tools { display: none; } }
</style>
)html";

// Sorts and filters the rows of the page; each list is written in the order of its first choice.
constexpr std::string_view kScript = R"html(<script>
for (const tools of document.querySelectorAll(".tools")) {
  const list = document.getElementById(tools.dataset.list);
  const rows = [...list.children];
  const search = tools.querySelector("input");
  const order = tools.querySelector(".order");
  const only = tools.querySelector(".only");
  const shown = tools.querySelector("output");
  rows.forEach((row, i) => { row.dataset.first = i; });
  const update = () => {
    const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
    let count = 0;
    for (const row of rows) {
      const text = row.dataset.text.toLowerCase();
      const fits = words.every(word => text.includes(word)) &&
        (!only || !only.value || only.value.split(" ").some(outcome => row.dataset[outcome.toLowerCase()] > 0));
      row.hidden = !fits;
      count += fits;
    }
    shown.value = count + " of " + rows.length;
  };
  const sort = () => {
    const [key, direction] = order.value.split(" ");
    const compare = key === "text" ? (a, b) => (a.dataset.text < b.dataset.text ? -1 : a.dataset.text > b.dataset.text ? 1 : 0)
      : (a, b) => (Number(a.dataset[key]) - Number(b.dataset[key])) * direction || a.dataset.first - b.dataset.first;
    list.append(...rows.sort(compare));
  };
  search.addEventListener("input", update);
  order.addEventListener("change", sort);
  only?.addEventListener("change", update);
  tools.hidden = false;
  sort();
  update();
}
</script>
)html";

// Any text as HTML shows it, between quotes too. Signs take the place of what cannot be shown, and of what
// would reverse the text around it.
std::string escaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        text.remove_prefix(character.bytes);
        if (character.text == "&")
            result += "&amp;";
        else if (character.text == "<")
            result += "&lt;";
        else if (character.text == ">")
            result += "&gt;";
        else if (character.text == "\"")
            result += "&quot;";
        else if (character.text == "'")
            result += "&#39;";
        else
            result += character.text;
    }
    return result;
}

std::string percentOf(std::uint64_t count, std::uint64_t total) {
    constexpr double kAll = 100;
    return fmt::format("{:.4f}",
                       total == 0 ? 0 : kAll * static_cast<double>(count) / static_cast<double>(total));
}

class Page {
public:
    explicit Page(const Audit& audit) : audit_(audit) {}

    std::string written() && {
        text_ = kHead;
        add("<title>Audit of {} documents</title>\n", escaped(audit_.kind));
        text_ += kStyle;
        addFacts();
        addProperties();
        addUnread();
        addProblems(audit_.broken, "Broken documents", "Every document is JSON.");
        addProblems(audit_.faulty, "Documents whose mapping faults", "No document makes a mapping fault.");
        text_ += kScript;
        return std::move(text_);
    }

private:
    template <class... Arguments>
    void add(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Arguments>(arguments)...);
    }

    // Whether a count other than 0 is a problem.
    enum class Fact { neutral, problem };

    void addFact(std::string_view name, std::uint64_t count, Fact fact = Fact::neutral) {
        add("<div{}><dt>{}</dt><dd>{}</dd></div>\n",
            fact == Fact::problem && count != 0 ? " class=\"bad\"" : "",
            name,
            countText(count));
    }

    void addFacts() {
        add("<h1>Audit of {} documents</h1>\n<dl class=\"facts\">\n", escaped(audit_.kind));
        addFact("documents", audit_.documents);
        addFact("broken", audit_.broken.count(), Fact::problem);
        addFact("faulty", audit_.faulty.count(), Fact::problem);
        addFact("properties", audit_.properties.size());
        addFact("with problems", audit_.propertiesWithProblems(), Fact::problem);
        addFact("unread keys", audit_.unread.size());
        text_ += "</dl>\n";
    }

    void addProperties() {
        text_ += "<h2>Properties</h2>\n<ul class=\"legend\">";
        for (const FEMOutcome outcome : kAuditOutcomes)
            add("<li class=\"{}\">{}</li>", outcomeName(outcome), outcomeLabel(outcome));
        text_ += "</ul>\n";
        text_ += R"html(<div class="tools" data-list="properties" hidden>
<input type="search" placeholder="Filter by name or path" aria-label="Filter by name or path">
<select class="only" aria-label="Show">
<option value="">All outcomes</option>
<option value="refused wrongKind fault">Any problem</option>
)html";
        for (const FEMOutcome outcome : kAuditOutcomes)
            if (outcome != FEMOutcome::set)
                add("<option value=\"{}\">Some {}</option>\n", outcomeName(outcome), outcomeLabel(outcome));
        text_ += R"html(</select>
<select class="order" aria-label="Order">
<option value="first 1">Problems first</option>
<option value="share 1">Least filled first</option>
<option value="share -1">Most filled first</option>
<option value="total -1">Most frequent first</option>
<option value="text 1">By name</option>
</select>
<output></output>
</div>
<ul class="rows" id="properties">
)html";
        for (const Audit::Property* property : audit_.propertiesProblemsFirst())
            addProperty(*property);
        text_ += "</ul>\n";
    }

    void addProperty(const Audit::Property& property) {
        const auto& [path, name] = property.first;
        const AuditOutcomes outcomes = audit_.outcomesOf(property);
        addRowAttributes(path, name, outcomes);
        add("><details><summary><div class=\"name\"><code>{}</code><div "
            "class=\"place\"><code>{}</code></div></div>\n",
            escaped(name.empty() ? "(the document)" : name),
            escaped(path));
        addBar(outcomes);
        addCounts(outcomes);
        text_ += "</summary>\n";
        addExamples(outcomes);
        text_ += "</details></li>\n";
    }

    // The attributes of a row have what it is sorted and filtered by.
    void addRowAttributes(const std::string& path, const std::string& name, const AuditOutcomes& outcomes) {
        add("<li data-text=\"{} {}\" data-total=\"{}\" data-share=\"{}\"",
            escaped(name),
            escaped(path),
            outcomes.total(),
            percentOf(outcomes[FEMOutcome::set].count, outcomes.total()));
        for (const FEMOutcome outcome : kAuditOutcomes)
            if (outcomes[outcome].count != 0)
                add(" data-{}=\"{}\"", outcomeName(outcome), outcomes[outcome].count);
    }

    void addBar(const AuditOutcomes& outcomes) {
        const std::string share = shareText(outcomes[FEMOutcome::set].count, outcomes.total());
        add("<div class=\"bar\" role=\"img\" aria-label=\"{} set\">", share);
        for (const FEMOutcome outcome : kAuditOutcomes)
            if (outcomes[outcome].count != 0)
                add("<i class=\"{}\" style=\"width:{}%\"></i>",
                    outcomeName(outcome),
                    percentOf(outcomes[outcome].count, outcomes.total()));
        add("</div><div class=\"share\">{}</div>\n", share);
    }

    void addCounts(const AuditOutcomes& outcomes) {
        text_ += "<div class=\"counts\">";
        for (const FEMOutcome outcome : kAuditOutcomes)
            if (outcomes[outcome].count != 0)
                add("<span class=\"{}\">{} {}</span>",
                    outcomeName(outcome),
                    countText(outcomes[outcome].count),
                    outcomeLabel(outcome));
        text_ += "</div>";
    }

    void addExamples(const AuditOutcomes& outcomes) {
        text_ += "<dl class=\"examples\">";
        for (const FEMOutcome outcome : kAuditOutcomes)
            if (!outcomes[outcome].example.file.empty())
                add("<dt class=\"mark {}\">{} {}</dt><dd>{}</dd>",
                    outcomeName(outcome),
                    outcomeLabel(outcome),
                    shareText(outcomes[outcome].count, outcomes.total()),
                    placeText(outcomes[outcome].example));
        text_ += "</dl>";
    }

    void addUnread() {
        text_ += "<h2>Keys that no rule reads</h2>\n";
        if (audit_.unread.empty()) {
            text_ += "<p class=\"none\">Every key is read.</p>\n";
            return;
        }
        text_ += R"html(<div class="tools" data-list="unread" hidden>
<input type="search" placeholder="Filter by path" aria-label="Filter by path">
<select class="order" aria-label="Order">
<option value="first 1">Most frequent first</option>
<option value="total 1">Least frequent first</option>
<option value="text 1">By path</option>
</select>
<output></output>
</div>
<ul class="rows" id="unread">
)html";
        const auto keys = audit_.unreadMostFrequentFirst();
        const std::uint64_t most = keys.front()->second.count;
        for (const Audit::UnreadKey* key : keys) {
            const auto& [path, tally] = *key;
            add("<li data-text=\"{0}\" data-total=\"{1}\"><details><summary><div "
                "class=\"name\"><code>{0}</code></div>\n"
                "<div class=\"bar\" aria-hidden=\"true\"><i class=\"null\" style=\"width:{2}%\"></i></div>"
                "<div class=\"share\">{3}</div></summary>\n"
                "<dl class=\"examples\"><dt>for example</dt><dd>{4}</dd></dl></details></li>\n",
                escaped(path),
                tally.count,
                percentOf(tally.count, most),
                countText(tally.count),
                placeText(tally.example));
        }
        text_ += "</ul>\n";
    }

    void addProblems(const AuditProblems& problems, std::string_view title, std::string_view none) {
        add("<h2>{}</h2>\n", title);
        if (problems.count() == 0) {
            add("<p class=\"none\">{}</p>\n", none);
            return;
        }
        text_ += "<ul class=\"rows\">\n";
        for (const AuditProblem& problem : problems.named()) {
            const std::string place =
                problem.column != 0 ? fmt::format(":{}", problem.column) : ' ' + escaped(problem.pointer);
            add("<li class=\"plain\"><code>{}:{}{}</code> {}</li>\n",
                escaped(problem.file),
                problem.line,
                place,
                escaped(problem.reason));
        }
        const std::uint64_t more = problems.count() - problems.named().size();
        if (more != 0) add("<li class=\"plain none\">and {} more</li>\n", countText(more));
        text_ += "</ul>\n";
    }

    static std::string placeText(const AuditPlace& place) {
        return fmt::format("<code>{}:{}</code> <code>{}</code>",
                           escaped(place.file),
                           place.line,
                           place.pointer.empty() ? "(the document)" : escaped(place.pointer));
    }

    const Audit& audit_;
    std::string text_;
};

}  // namespace

std::string auditPage(const Audit& audit) {
    return Page(audit).written();
}

}  // namespace QELModels::tool
