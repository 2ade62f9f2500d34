// The promise: HTML cleaning gives exactly what the word-for-word version gives, for every text whatever it
// holds, keeps texts well formed, touches nothing outside its buffers, and takes linear time.

#include <QELModels/Categories/NSString+HTMLRemoval.h>
#include <QELModels/Categories/detail/HTMLCleaning.h>
#include <QELModels/Memory/detail/BlockArena.h>
#include <QELModels/Values/Text.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/HTMLRemovalOracle.h"
#include "tests/Sequences.h"
#include "tests/TestSupport.h"

namespace {

using namespace QELModels;
using namespace std::string_view_literals;
using test::Exact;
using Pieces = std::vector<std::u16string>;

std::u16string utf16(std::string_view text) {
    return Text::toUTF16(text);
}

/// Cleans a text with the slack of a block after it, which holds what would continue the text.
void expectNoneOfTheSlack(std::string_view text, std::string_view result) {
    for (const std::string_view after : {"<", ">", "a>", "&", ";", "amp;lt;", "#65;", "\xED\xB8\x80"}) {
        std::string slack;
        while (slack.size() < detail::kSlack)
            slack += after;
        slack.resize(detail::kSlack);
        const Exact from(std::string(text) + slack);
        const Exact to(std::string(from.size, '?'));
        const std::size_t size =
            detail::withoutHTMLTagsOfBlock(from.view().substr(0, text.size()), to.bytes.get());
        EXPECT_EQ(to.view().substr(0, size), result) << after;
    }
}

/// What all forms of cleaning make of a text; they must agree.
std::string cleaned(std::string_view text) {
    const Exact from(text);
    const Exact to(std::string(text.size(), '?'));
    const std::string result(to.view().substr(0, HTMLRemoval::withoutHTMLTags(from.view(), to.bytes.get())));
    EXPECT_EQ(HTMLRemoval::withoutHTMLTags(from.view()), result);
    expectNoneOfTheSlack(text, result);
    EXPECT_EQ(HTMLRemoval::isPlainText(from.view()), text.find_first_of("<&") == text.npos);
    return result;
}

/// The results are the oracle's.
void expectSameAsOracle(const std::u16string& units) {
    const std::string text = Text::fromUTF16(units);
    ASSERT_EQ(cleaned(text), Text::fromUTF16(HTMLRemovalOracle::stringByStrippingHTML(units)))
        << testing::PrintToString(units);
    ASSERT_EQ(HTMLRemoval::qel_decodeHTMLCharacterEntities(text),
              Text::fromUTF16(HTMLRemovalOracle::qel_decodeHTMLCharacterEntities(units)))
        << testing::PrintToString(units);
}

std::u16string concatenated(const Pieces& pieces) {
    std::u16string text;
    for (const auto& piece : pieces)
        text += piece;
    return text;
}

/// All sequences of up to `longest` of the pieces, between two texts.
void expectSameForAll(const Pieces& pieces, std::size_t longest, const std::u16string& before = u"",
                      const std::u16string& after = u"") {
    test::forEachSequence(pieces, longest, [&](const Pieces& sequence) {
        expectSameAsOracle(before + concatenated(sequence) + after);
    });
}

Pieces charactersOf(std::u16string_view alphabet) {
    Pieces pieces;
    for (const char16_t unit : alphabet)
        pieces.emplace_back(1, unit);
    return pieces;
}

std::string repeated(std::string_view piece, std::size_t times) {
    std::string text;
    for (std::size_t i = 0; i < times; ++i)
        text += piece;
    return text;
}

// --- Known results ----------------------------------------------------------------------------------------

struct Row {
    std::string_view text;
    std::string_view result;
};

TEST(HTMLRemoval, RemovesTagsThenDecodes) {
    const Row rows[] = {
        {"", ""},
        {"Plain", "Plain"},
        {"<p>Hello <b>world</b></p>", "Hello world"},
        {"1 < 2 and 3 > 2", "1  2"},
        {"a <> b <>> c", "a <> b <>> c"},
        {"<<b>x>", "x>"},
        {"a <br\r\n\n/>b", "a b"},
        {"open < and not closed", "open < and not closed"},
        {"a &lt;b&gt; c", "a <b> c"},
        {"&l<i>t;", "<"},  // a reference that the removal of a tag puts together
        {"<&gt;>", ""},
        {"Bl\xC3\xA5 <i>\xC3\xB8y</i>", "Bl\xC3\xA5 \xC3\xB8y"},
        {"\xED\xA0\xBD<b>\xED\xB8\x80", "\xF0\x9F\x98\x80"},  // halves that meet join
        {"\xED\xA0\xBD<b><i>\xED\xB8\x80!", "\xF0\x9F\x98\x80!"},
        {"\xED\xA0\xBD<b>\xED\xA0\xBD", "\xED\xA0\xBD\xED\xA0\xBD"},
        {"\xED\xB8\x80<b>\xED\xA0\xBD", "\xED\xB8\x80\xED\xA0\xBD"},
    };
    for (const auto& [text, result] : rows)
        EXPECT_EQ(cleaned(text), result) << text;
}

TEST(HTMLRemoval, DecodesNames) {
    const Row rows[] = {
        {"AT&T", "AT&T"},
        {"&nbsp;|&Eacute;|&yuml;", "\xC2\xA0|\xC3\x89|\xC3\xBF"},
        {"&EACUTE;&eacute &euro;&;&", "&EACUTE;&eacute &euro;&;&"},
        {"&amp;&lt;&gt;&apos;&quot;", "&<>'\""},
        {"&amp;lt;", "&lt;"},
        {"&amp;lt; &lt;", "< <"},
        {"&gt; &amp;gt;", "> >"},
        {"&gt; &amp;lt;", "> &lt;"},
        {"&amp;nbsp; &nbsp;", "&nbsp; \xC2\xA0"},  // Latin-1 comes before "&amp;"
        {"&amp;amp;lt; &lt;", "&amp;lt; <"},
        {"&lt\0;"sv, "&lt\0;"sv},
    };
    for (const auto& [text, result] : rows)
        EXPECT_EQ(cleaned(text), result) << text;
    for (std::size_t i = 0; i < HTMLRemovalOracle::kNamedReferences; ++i) {
        const auto& [reference, character] = HTMLRemovalOracle::namedReference(i);
        const std::u16string name = reference.substr(1);
        expectSameAsOracle(reference + u"&" + reference + u"&amp;" + name);
        expectSameAsOracle(u"&amp;" + name + u"&x" + name + reference.substr(0, name.size()));
        EXPECT_EQ(utf16(cleaned(Text::fromUTF16(reference))), std::u16string(1, character));
        for (std::size_t at = 1; at <= reference.size(); ++at)
            expectSameAsOracle(std::u16string(reference).insert(at, u"<b>"));
    }
}

TEST(HTMLRemoval, DecodesNumbers) {
    const Row rows[] = {
        {"&#65;&#x42;", "AB"},
        {"&#x;|&#;|&#+;|&#-;|&#x0x;", "\0|\0|\0|\0|\0"sv},
        {"&#X41;|&#x-41;|&#- 65;|&# x41;", "\0|\0|\0|\0"sv},
        {"&#x 41;|&#x\t0X41;|&#x41G;|&#\r+65;|&#65e;|&#0065;", "A|A|A|A|A|A"},
        {"&#x0x0x41;|&#\xC2\xA0"
         "65;|&#x\xE2\x80\x83"
         "41;",
         "\0|\0|\0"sv},  // no-break and em space
        {"&#12&#65;", "\x0C"},
        {"&#6&lt;5;", "\x06"},
        {"a;&#66;", "a;B"},
        {"&amp;#65;|&#38;#65;|&#38;#38;#38;#65;", "A|A|A"},
        {"&#38;lt;|&#38;|&#38;amp;#65;", "&lt;|&|&amp;#65;"},
        {"&&#35;65;", "&#65;"},  // the search does not go back to the '&'
        {"&#65&#59;x;", "Ax;"},
        {"&#229;&#8211;&#xFFFF;", "\xC3\xA5\xE2\x80\x93\xEF\xBF\xBF"},
        {"&#128512;", "\xEF\x98\x80"},
        {"&#x100000041;|&#xFFFFFFFF;|&#x10041;", "\xEF\xBF\xBF|\xEF\xBF\xBF|A"},
        {"&#2147483713;|&#2147483647;|&#99999999999999999999999;", "\xEF\xBF\xBF|\xEF\xBF\xBF|\xEF\xBF\xBF"},
        {"&#-1;|&#-65471;|&#-2147483583;", "\xEF\xBF\xBF|A|A"},
        {"&#-2147483648;|&#-2147483713;", "\0|\0"sv},
        {"&#xD83D;&#xDE00;|\xED\xA0\xBD&#56832;|&#55357;\xED\xB8\x80",
         "\xF0\x9F\x98\x80|\xF0\x9F\x98\x80|\xF0\x9F\x98\x80"},
        {"&#xDE00;&#xD83D;", "\xED\xB8\x80\xED\xA0\xBD"},
        {"&#65", "&#65"},
        {"&#65;&#", "A&#"},
    };
    for (const auto& [text, result] : rows)
        EXPECT_EQ(cleaned(text), result) << text;
}

TEST(HTMLRemoval, EncodesThreeCharacters) {
    const Row rows[] = {
        {"", ""},
        {"<a href=\"x\">Salt & pepper's</a>", "&lt;a href=\"x\"&gt;Salt &amp; pepper's&lt;/a&gt;"},
        {"&lt;\xC3\xA5&", "&amp;lt;\xC3\xA5&amp;"},
    };
    for (const auto& [text, result] : rows) {
        EXPECT_EQ(HTMLRemoval::mz_encodeHTMLCharacterEntities(text), result) << text;
        EXPECT_EQ(HTMLRemovalOracle::mz_encodeHTMLCharacterEntities(utf16(text)), utf16(result));
    }
}

TEST(HTMLRemoval, TakesNullAndReturnsPlainText) {
    EXPECT_EQ(HTMLRemoval::stringByStrippingHTML(std::nullopt), "");
    EXPECT_EQ(HTMLRemoval::stringByStrippingHTML(nullptr), "");
    EXPECT_EQ(HTMLRemoval::stringByStrippingHTML("<b>&amp;"), "&");
    EXPECT_EQ(HTMLRemoval::qel_decodeHTMLCharacterEntities("<b>&amp;"), "<b>&");
    EXPECT_EQ(cleaned(std::string_view()), "");

    std::string plain(100, 'x');
    const char* const bytes = plain.data();
    const std::string same = HTMLRemoval::qel_decodeHTMLCharacterEntities(std::move(plain));
    EXPECT_EQ(same.data(), bytes);
    EXPECT_EQ(same, std::string(100, 'x'));
}

// --- Against the word-for-word version --------------------------------------------------------------------

TEST(HTMLRemoval, SeesEveryMarkAtEveryPlace) {
    constexpr std::size_t kFourSteps = 36;
    for (std::size_t size = 1; size <= kFourSteps; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            for (const char byte :
                 "<&;=%'\xBC\xA6\0\x7F"sv) {  // the marks, their neighbours, and with high bits
                std::string text(size, 'a');
                text[at] = byte;
                const bool isMark = byte == '<' || byte == '&';
                ASSERT_EQ(HTMLRemoval::isPlainText(Exact(text).view()), !isMark) << size << ' ' << at;
                text.back() = '&';
                ASSERT_FALSE(HTMLRemoval::isPlainText(text));
            }
        }
    }
}

TEST(HTMLRemoval, IsExactForAllSmallTexts) {
    expectSameForAll(charactersOf(u"&#x;<>1a"), 6);
    expectSameForAll(charactersOf(u"&#;<>\xD83D\xDE00"), 6);
    expectSameForAll(charactersOf(u"<>a"), 9);
}

TEST(HTMLRemoval, IsExactForAllSequencesOfAwkwardPieces) {
    expectSameForAll({u"&#38;", u"&#35;", u"&#59;", u"&amp;", u"#", u";", u"&", u"#65;", u"&#x", u"41"}, 5);
    expectSameForAll({u"&amp;", u"&lt;", u"lt;", u"amp;", u"&", u"quot;", u"&quot;", u"<", u">", u"&#60;"},
                     4);
    expectSameForAll({u"\xD83D", u"\xDE00", u"&#xD83D;", u"&#xDE00;", u"<b>", u"<", u">", u"\U0001F600"}, 5);
    expectSameForAll(charactersOf(u" \v+-0x9Af;"), 4, u"&#", u";");
    expectSameForAll(charactersOf(u" \v+-0x9Af;"), 4, u"&#x", u";");
}

// One of the pieces between the bars.
rc::Gen<std::u16string> oneOf(std::u16string_view pieces) {
    Pieces all(1);
    for (const char16_t unit : pieces) {
        if (unit == u'|')
            all.emplace_back();
        else
            all.back() += unit;
    }
    return rc::gen::elementOf(all);
}

rc::Gen<std::u16string> awkwardPiece() {
    using namespace rc;
    const auto number =
        gen::map(gen::container<Pieces>(oneOf(u"x| |\t|+|-|0|0x|3|8|D83D|dE00|65|4294967295|&amp;")),
                 [](const Pieces& body) { return u"&#" + concatenated(body) + u";"; });
    const auto name = gen::map(gen::inRange<std::size_t>(0, HTMLRemovalOracle::kNamedReferences),
                               [](std::size_t i) { return HTMLRemovalOracle::namedReference(i).reference; });
    return gen::weightedOneOf<std::u16string>({
        {4, oneOf(u"&|#|x|;|<|>|1|a|\xD83D|\xDE00|\U0001F600|\u00E5|<b>|Hallo, verden")},
        {4, oneOf(u"&amp;|&#38;|&#35;|&#59;|&amp;lt;|amp;|#65;")},
        {1, name},
        {1, gen::map(name, [](const std::u16string& text) { return u"&amp;" + text.substr(1); })},
        {2, number},
    });
}

RC_GTEST_PROP(HTMLRemovalProperty, IsExactForAnyText, ()) {
    const std::u16string units = concatenated(*rc::gen::container<Pieces>(awkwardPiece()));
    const std::string text = Text::fromUTF16(units);
    const std::string result = cleaned(text);
    RC_ASSERT(Text::isWellFormed(result));
    RC_ASSERT(utf16(result) == HTMLRemovalOracle::stringByStrippingHTML(units));
    RC_ASSERT(utf16(HTMLRemoval::qel_decodeHTMLCharacterEntities(text)) ==
              HTMLRemovalOracle::qel_decodeHTMLCharacterEntities(units));
    RC_ASSERT(utf16(HTMLRemoval::mz_encodeHTMLCharacterEntities(text)) ==
              HTMLRemovalOracle::mz_encodeHTMLCharacterEntities(units));
}

// Bytes that are not text come from a careless caller, and must not cause more than a wrong result.
RC_GTEST_PROP(HTMLRemovalProperty, StaysInsideItsBuffersWhateverTheBytes, ()) {
    const std::vector<std::string> pieces{"\xED",
                                          "\xA0",
                                          "\xB0",
                                          "\xED\xA0",
                                          "\xF0",
                                          "\xFF",
                                          "<b>",
                                          "<",
                                          ">",
                                          "&",
                                          "&#",
                                          ";",
                                          "&lt;",
                                          "&#xD800;"};
    std::string bytes;
    for (const auto& piece : *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(pieces)))
        bytes += piece;
    RC_ASSERT(cleaned(bytes).size() <= bytes.size());
}

// A quadratic pass would take hours on these.
TEST(HTMLRemoval, TakesLinearTime) {
    constexpr std::size_t kTimes = 1 << 20;
    const auto many = [](std::string_view piece) { return repeated(piece, kTimes); };
    for (const std::string_view same : {"<"sv, "<>"sv, "&"sv, "&#"sv, ";"sv, "&;"sv, "&lt"sv, "a;a"sv}) {
        EXPECT_EQ(cleaned(many(same)), many(same)) << same;
    }
    EXPECT_EQ(cleaned(many(";") + "&#"), many(";") + "&#");
    EXPECT_EQ(cleaned(many("a;") + "&#1"), many("a;") + "&#1");
    EXPECT_EQ(cleaned(many("&#") + ";"), "\0"sv);
    EXPECT_EQ(cleaned(many("&#65;")), many("A"));
    EXPECT_EQ(cleaned("&" + many("#38;") + "#65;"), "A");
    EXPECT_EQ(cleaned("&#" + many("0") + "65;"), "A");
    EXPECT_EQ(cleaned(many("<") + ">"), "");
    EXPECT_EQ(cleaned(many("<b>") + "<"), "<");
    EXPECT_EQ(cleaned(many("&amp;lt;")), many("&lt;"));
    EXPECT_EQ(cleaned(many("&amp;lt;") + "&lt;"), many("<") + "<");
    EXPECT_EQ(cleaned(many("&amp;amp;")), many("&amp;"));
}

}  // namespace
