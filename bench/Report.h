#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Measuring.h"

namespace QELModels::bench {

std::string fixed(double value, int digits);
/// "0.75 to 0.78"
std::string range(const Quartiles& quartiles);
std::string bold(std::string_view text);

/// A table in Markdown, the first column for names, the others for numbers.
class Table {
public:
    explicit Table(std::vector<std::string> head) : rows_{std::move(head)} {}
    void row(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    std::string markdown() const;

private:
    std::vector<std::vector<std::string>> rows_;
};

/// A number that was measured.
struct Figure {
    std::string part;
    std::string subject;
    std::string way;
    double value;  ///< in the unit
    std::string unit;
    double ratio = 0;  ///< to the way written by hand; 0 without one
};

/// The output of a run: tables for people, or one line for each figure.
class Report {
public:
    explicit Report(bool csv) : csv_(csv) {}

    void say(std::string_view text) const;
    void show(const Table& table) const { say('\n' + table.markdown()); }
    void add(Figure figure);
    std::span<const Figure> figures() const { return figures_; }

private:
    bool csv_;
    std::vector<Figure> figures_;
};

/// The processor and the compiler, in one line.
std::string machineAndCompiler();

}  // namespace QELModels::bench
