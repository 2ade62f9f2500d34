#include "Report.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <thread>

namespace QELModels::bench {

namespace {

std::string processor() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);) {
        const auto colon = line.find(':');
        if (line.starts_with("model name") && colon != std::string::npos) return line.substr(colon + 2);
    }
    return "unknown processor";
}

std::string compiler() {
#if defined(__clang__)
    return "clang " __clang_version__;
#else
    return "g++ " __VERSION__;
#endif
}

/// A field of CSV: quotes in the text are doubled.
std::string quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted += '"';
}

void print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

}  // namespace

std::string fixed(double value, int digits) {
    std::array<char, 64> text;
    const int size = std::snprintf(text.data(), text.size(), "%.*f", digits, value);
    return std::string(text.data(), static_cast<std::size_t>(size));
}

std::string range(const Quartiles& quartiles) {
    return fixed(quartiles.first, 2) + " to " + fixed(quartiles.third, 2);
}

std::string bold(std::string_view text) {
    return "**" + std::string(text) + "**";
}

std::string Table::markdown() const {
    std::string text;
    for (const auto& row : rows_) {
        text += '|';
        for (const std::string& cell : row)
            text += ' ' + cell + (cell.empty() ? "|" : " |");
        text += '\n';
        if (&row != &rows_.front()) continue;
        text += "|---|";
        for (std::size_t column = 1; column < row.size(); ++column)
            text += "--:|";
        text += '\n';
    }
    return text;
}

void Report::say(std::string_view text) const {
    if (!csv_) print(text);
}

void Report::add(Figure figure) {
    if (csv_) {
        print(quoted(figure.part) + ',' + quoted(figure.subject) + ',' + quoted(figure.way) + ',' +
              fixed(figure.value, 6) + ',' + figure.unit + '\n');
    }
    figures_.push_back(std::move(figure));
}

std::string machineAndCompiler() {
    return processor() + ", " + std::to_string(std::thread::hardware_concurrency()) + " processors; " +
           compiler();
}

}  // namespace QELModels::bench
