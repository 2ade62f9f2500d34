#include "Plot.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace QELModels::bench {

namespace {

// All in pixels of the picture.
constexpr int kWidth = 760;
constexpr int kMargin = 24;
constexpr int kBarsLeft = 270;
constexpr int kBarsRight = 690;
constexpr int kRow = 20;
constexpr int kBar = 12;
constexpr int kGap = 14;

/// What is slower still ends there, and its bar is broken before the end.
constexpr double kLongestRatio = 2.5;
/// Between a bar and its number, and room for a number.
constexpr int kNumberGap = 6;
constexpr int kNumberWidth = 36;
constexpr int kBreakWidth = 4;
constexpr int kBreakBeforeEnd = 12;
/// The bars that explain the others, in front of their words.
constexpr int kSample = 36;

constexpr std::string_view kTitle = "Time of the library and of others; code written by hand is 1";

// The picture may be seen on a light page or on a dark one, whatever the page's own style says. Bars have a
// contrast of at least 3 to 1 with both.
constexpr std::string_view kStyle =
    "<style>\n"
    "text { font: 13px system-ui, sans-serif; fill: #1f2328; }\n"
    ".title { font-size: 15px; font-weight: 600; }\n"
    ".group { font-weight: 600; }\n"
    ".small { font-size: 11px; fill: #59636e; }\n"
    ".number { font-variant-numeric: tabular-nums; stroke: #ffffff; stroke-width: 4; paint-order: stroke; }\n"
    ".page { fill: #ffffff; }\n"
    ".library { fill: #1f6feb; }\n"
    ".other { fill: #818b98; }\n"
    ".limit { fill: none; stroke: #818b98; }\n"
    ".one { stroke: #59636e; stroke-dasharray: 3 3; }\n"
    "@media (prefers-color-scheme: dark) {\n"
    "text { fill: #e6edf3; }\n"
    ".number { stroke: #0d1117; }\n"
    ".small { fill: #9198a1; }\n"
    ".page { fill: #0d1117; }\n"
    ".library { fill: #58a6ff; }\n"
    ".other { fill: #768390; }\n"
    ".limit { stroke: #768390; }\n"
    ".one { stroke: #9198a1; }\n"
    "}\n"
    "</style>\n";

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '&') {
            result += "&amp;";
        } else if (c == '<') {
            result += "&lt;";
        } else {
            result += c;
        }
    }
    return result;
}

class Picture {
public:
    void title(std::string_view text) {
        y_ += kGap;
        line(kMargin, "title", text);
        y_ += kGap / 2;
    }
    void group(std::string_view name) {
        y_ += kGap / 2;
        line(kMargin, "group", name);
    }

    /// A sample of each way to draw a figure, and what it means.
    void key() {
        sample("library", "QELModels");
        sample("other", "other ways to fill the same assets");
        sample("limit", "hollow: the time of parsing alone, which fills no assets");
        rectangle("other", kMargin, kSample);
        breakBefore(kMargin + kSample);
        meaning("broken: too long for this picture; the number says how long it is");
        verticalLine(kMargin + kSample / 2, y_ + kGap / 4, y_ + kRow - kGap / 4, rows_.size());
        meaning("code written by hand");
    }

    void bar(std::string_view name, double ratio) {
        const bool isLimit = name.starts_with("limit");
        const std::string_view style = name.starts_with("QELModels") ? "library"
                                       : isLimit                     ? "limit"
                                                                     : "other";
        bar(name, ratio, style);
    }
    void bar(std::string_view name, double ratio, std::string_view style) {
        const int end = place(std::min(ratio, kLongestRatio));
        rectangle(style, kBarsLeft, end - kBarsLeft);
        if (ratio > kLongestRatio) breakBefore(end);
        // A number that the line at 1 would run through goes after the line.
        const bool isCrossed = end <= place(1) && end + kNumberGap + kNumberWidth > place(1);
        text((isCrossed ? place(1) : end) + kNumberGap, "number", fixed(ratio, 2));
        line(kMargin, "name", name);
    }

    void beginBars() {
        barsTop_ = y_;
        barsBegin_ = rows_.size();
    }
    /// Draws the line at 1 under all bars since `beginBars`.
    void endBars() { verticalLine(place(1), barsTop_, y_, barsBegin_); }

    std::string finished(std::string_view caption) {
        y_ += kGap;
        line(kMargin, "small", caption);
        const std::string width = std::to_string(kWidth);
        const std::string height = std::to_string(y_ + kGap / 2);
        return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
               "\" viewBox=\"0 0 " + width + ' ' + height + "\">\n" + std::string(kStyle) +
               "<rect class=\"page\" width=\"" + width + "\" height=\"" + height + "\"/>\n" + rows_ +
               "</svg>\n";
    }

private:
    static int place(double ratio) {
        return kBarsLeft + static_cast<int>(ratio / kLongestRatio * (kBarsRight - kBarsLeft));
    }

    void rectangle(std::string_view style, int x, int width) {
        rows_ += "<rect class=\"" + std::string(style) + "\" x=\"" + std::to_string(x) + "\" y=\"" +
                 std::to_string(y_ + (kRow - kBar) / 2) + "\" width=\"" + std::to_string(width) +
                 "\" height=\"" + std::to_string(kBar) + "\"/>\n";
    }
    /// A gap in a bar, shortly before its end: the bar would go on.
    void breakBefore(int end) {
        rows_ += "<rect class=\"page\" x=\"" + std::to_string(end - kBreakBeforeEnd) + "\" y=\"" +
                 std::to_string(y_ + (kRow - kBar) / 2 - 1) + "\" width=\"" + std::to_string(kBreakWidth) +
                 "\" height=\"" + std::to_string(kBar + 2) + "\"/>\n";
    }
    /// `at` is the place among what is drawn: what comes later is drawn over it.
    void verticalLine(int column, int top, int bottom, std::size_t at) {
        const std::string x = std::to_string(column);
        rows_.insert(at,
                     "<line class=\"one\" x1=\"" + x + "\" x2=\"" + x + "\" y1=\"" + std::to_string(top) +
                         "\" y2=\"" + std::to_string(bottom) + "\"/>\n");
    }
    void sample(std::string_view style, std::string_view words) {
        rectangle(style, kMargin, kSample);
        meaning(words);
    }
    void meaning(std::string_view words) { line(kMargin + kSample + kGap, "small", words); }

    void text(int x, std::string_view style, std::string_view text) {
        constexpr int kBaseline = 14;
        rows_ += "<text class=\"" + std::string(style) + "\" x=\"" + std::to_string(x) + "\" y=\"" +
                 std::to_string(y_ + kBaseline) + "\">" + escaped(text) + "</text>\n";
    }
    void line(int x, std::string_view style, std::string_view content) {
        text(x, style, content);
        y_ += kRow;
    }

    std::string rows_;
    int y_ = 0;
    int barsTop_ = 0;
    std::size_t barsBegin_ = 0;
};

std::vector<Figure> ofPart(std::span<const Figure> figures, std::string_view part) {
    std::vector<Figure> found;
    std::copy_if(figures.begin(), figures.end(), std::back_inserter(found), [&](const Figure& figure) {
        return figure.part == part && figure.ratio > 0;
    });
    return found;
}

}  // namespace

std::string plotOf(std::span<const Figure> figures, std::string_view caption) {
    const std::vector<Figure> documents = ofPart(figures, "documents");
    const std::vector<Figure> questions = ofPart(figures, "questions");
    if (documents.empty() && questions.empty()) return {};

    Picture picture;
    if (!documents.empty()) {
        picture.title("From bytes to filled assets: time, code written by hand = 1");
        picture.key();
        picture.beginBars();
        std::string_view subject;
        for (const Figure& figure : documents) {
            if (figure.subject != subject) picture.group(figure.subject);
            subject = figure.subject;
            picture.bar(figure.way, figure.ratio);
        }
        picture.endBars();
    }
    if (!questions.empty()) {
        picture.title("Asked of a filled asset: time, code written by hand = 1");
        picture.beginBars();
        for (const Figure& figure : questions) {
            if (figure.way == "QELModels") picture.bar(figure.subject, figure.ratio, "library");
        }
        picture.endBars();
    }
    return picture.finished(caption);
}

}  // namespace QELModels::bench
