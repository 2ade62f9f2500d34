#include "URLOracle.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace {

// A rule takes the positions where it may begin to all the positions where it may end.
using Positions = std::vector<std::size_t>;
using Rule = std::function<Positions(std::string_view, const Positions&)>;

constexpr int kAnyTimes = std::numeric_limits<int>::max();

Rule oneOf(std::string_view characters) {
    return [set = std::string(characters)](std::string_view text, const Positions& begins) {
        Positions ends;
        for (const std::size_t p : begins) {
            if (p < text.size() && set.find(text[p]) != std::string::npos) ends.push_back(p + 1);
        }
        return ends;
    };
}

// In order.
Rule all(std::vector<Rule> rules) {
    return [rules](std::string_view text, const Positions& begins) {
        Positions ends = begins;
        for (const Rule& rule : rules) {
            if (ends.empty()) break;
            ends = rule(text, ends);
        }
        return ends;
    };
}

Rule any(std::vector<Rule> rules) {
    return [rules](std::string_view text, const Positions& begins) {
        Positions ends;
        for (const Rule& rule : rules) {
            const Positions more = rule(text, begins);
            ends.insert(ends.end(), more.begin(), more.end());
        }
        std::sort(ends.begin(), ends.end());
        ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
        return ends;
    };
}

Rule times(int least, int most, Rule rule) {
    return [=](std::string_view text, const Positions& begins) {
        std::vector<bool> isEnd(text.size() + 1);
        Positions ends;
        Positions last = begins;
        for (int count = 0; !last.empty(); ++count) {
            if (count >= least) {
                std::erase_if(last, [&](std::size_t p) { return isEnd[p]; });
                for (const std::size_t p : last)
                    isEnd[p] = true;
                ends.insert(ends.end(), last.begin(), last.end());
            }
            if (count == most) break;
            last = rule(text, last);
        }
        return ends;
    };
}

Rule literal(std::string_view text) {
    std::vector<Rule> characters;
    for (const char& c : text)
        characters.push_back(oneOf({&c, 1}));
    return all(characters);
}

Rule many(Rule rule) {
    return times(0, kAnyTimes, rule);
}
Rule some(Rule rule) {
    return times(1, kAnyTimes, rule);
}
Rule maybe(Rule rule) {
    return times(0, 1, rule);
}

Rule uriReference() {
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const std::string digits = "0123456789";
    const Rule alpha = oneOf(letters);
    const Rule digit = oneOf(digits);
    const Rule hexdig = oneOf(digits + "ABCDEFabcdef");

    const Rule pctEncoded = all({literal("%"), hexdig, hexdig});
    const Rule unreserved = oneOf(letters + digits + "-._~");
    const Rule subDelims = oneOf("!$&'()*+,;=");
    const Rule pchar = any({unreserved, pctEncoded, subDelims, oneOf(":@")});

    // Brackets are allowed here and nowhere in the standard.
    const Rule query = many(any({pchar, oneOf("/?"), oneOf("[]")}));
    const Rule fragment = query;

    const Rule segment = many(pchar);
    const Rule segmentNz = some(pchar);
    const Rule segmentNzNc = some(any({unreserved, pctEncoded, subDelims, literal("@")}));
    const Rule pathAbempty = many(all({literal("/"), segment}));
    const Rule pathAbsolute = all({literal("/"), maybe(all({segmentNz, pathAbempty}))});
    const Rule pathNoscheme = all({segmentNzNc, pathAbempty});
    const Rule pathRootless = all({segmentNz, pathAbempty});
    const Rule pathEmpty = all({});

    const Rule regName = many(any({unreserved, pctEncoded, subDelims}));
    const Rule decOctet = any({digit,
                               all({oneOf("123456789"), digit}),
                               all({literal("1"), digit, digit}),
                               all({literal("2"), oneOf("01234"), digit}),
                               all({literal("25"), oneOf("012345")})});
    const Rule dot = literal(".");
    const Rule ipv4Address = all({decOctet, dot, decOctet, dot, decOctet, dot, decOctet});
    const Rule colon = literal(":");
    const Rule h16 = times(1, 4, hexdig);
    const Rule ls32 = any({all({h16, colon, h16}), ipv4Address});
    const auto groups = [&](int count) { return times(count, count, all({h16, colon})); };
    const auto upTo = [&](int count) { return maybe(all({times(0, count, all({h16, colon})), h16})); };
    const Rule gap = literal("::");
    const Rule ipv6Address = any({
        all({groups(6), ls32}),
        all({gap, groups(5), ls32}),
        all({upTo(0), gap, groups(4), ls32}),
        all({upTo(1), gap, groups(3), ls32}),
        all({upTo(2), gap, groups(2), ls32}),
        all({upTo(3), gap, groups(1), ls32}),
        all({upTo(4), gap, ls32}),
        all({upTo(5), gap, h16}),
        all({upTo(6), gap}),
    });
    const Rule ipvFuture = all({oneOf("vV"), some(hexdig), dot, some(any({unreserved, subDelims, colon}))});
    const Rule ipLiteral = all({literal("["), any({ipv6Address, ipvFuture}), literal("]")});
    const Rule host = any({ipLiteral, ipv4Address, regName});
    const Rule userinfo = many(any({unreserved, pctEncoded, subDelims, colon}));
    const Rule port = many(digit);
    const Rule authority = all({maybe(all({userinfo, literal("@")})), host, maybe(all({colon, port}))});

    const Rule withAuthority = all({literal("//"), authority, pathAbempty});
    const Rule scheme = all({alpha, many(any({alpha, digit, oneOf("+-.")}))});
    const Rule hierPart = any({withAuthority, pathAbsolute, pathRootless, pathEmpty});
    const Rule relativePart = any({withAuthority, pathAbsolute, pathNoscheme, pathEmpty});
    return all({any({all({scheme, colon, hierPart}), relativePart}),
                maybe(all({literal("?"), query})),
                maybe(all({literal("#"), fragment}))});
}

}  // namespace

bool isURLByGrammar(std::string_view text) {
    static const Rule grammar = uriReference();
    const Positions ends = grammar(text, {0});
    return std::find(ends.begin(), ends.end(), text.size()) != ends.end();
}
