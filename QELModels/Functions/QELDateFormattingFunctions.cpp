#include "QELModels/Functions/QELDateFormattingFunctions.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>

#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace {

constexpr std::int64_t kSecondsPerMinute = 60;
constexpr std::int64_t kSecondsPerHour = 60 * kSecondsPerMinute;
constexpr std::int64_t kSecondsPerDay = 24 * kSecondsPerHour;

struct Unit {
    std::string_view singular;
    std::string_view plural;

    constexpr std::string_view wordFor(std::int64_t count) const { return count == 1 ? singular : plural; }
};

constexpr Unit kDay{"dag", "dager"};
constexpr Unit kHour{"time", "timer"};
constexpr Unit kMinute{"minutt", "minutter"};
constexpr Unit kSecond{"sekund", "sekunder"};

constexpr std::size_t kLongestNumber = std::string_view("18446744073709551615").size();
constexpr std::size_t kLongestText =
    4 * kLongestNumber + std::string_view(" dager,  timer,  min og  sek").size();

// A text that is made on the stack, so that only the result is allocated.
class Line {
public:
    Line& operator<<(std::string_view text) {
        size_ += text.copy(text_.data() + size_, text.size());
        return *this;
    }

    // As an unsigned number of two digits or more.
    Line& operator<<(std::int64_t part) {
        const auto number = static_cast<std::uint64_t>(part);
        if (number < 10) text_[size_++] = '0';
        const auto written = std::to_chars(text_.data() + size_, text_.data() + text_.size(), number);
        size_ = static_cast<std::size_t>(written.ptr - text_.data());
        return *this;
    }

    std::string text() const { return std::string(text_.data(), size_); }

private:
    std::array<char, kLongestText> text_;
    std::size_t size_ = 0;
};

}  // namespace

QELTimeDifference QELTimeDifferenceFromSeconds(double seconds) noexcept {
    const std::int64_t total = Number(seconds).int64Value();
    return {.days = total / kSecondsPerDay,
            .hours = total % kSecondsPerDay / kSecondsPerHour,
            .minutes = total % kSecondsPerHour / kSecondsPerMinute,
            .seconds = total % kSecondsPerMinute};
}

std::string NSStringRepresentingTimeLeftUntilLive(double secondsUntilLive) {
    const auto [days, hours, minutes, seconds] = QELTimeDifferenceFromSeconds(secondsUntilLive);
    Line line;
    if (days != 0) {
        // After days, minutes and seconds are abbreviated, and abbreviations have no plural.
        line << days << " " << kDay.wordFor(days) << ", " << hours << " " << kHour.wordFor(hours) << ", "
             << minutes << " min og " << seconds << " sek";
        return line.text();
    }
    if (hours != 0) line << hours << " " << kHour.wordFor(hours) << ", ";
    if (hours != 0 || minutes != 0) line << minutes << " " << kMinute.wordFor(minutes) << " og ";
    line << seconds << " " << kSecond.wordFor(seconds);
    return line.text();
}

// In both durations the days are dropped on purpose: a film is shorter than a day.

std::string NSStringWithNamedSeparatorsFromMovieDuration(double duration) {
    const auto [days, hours, minutes, seconds] = QELTimeDifferenceFromSeconds(duration);
    Line line;
    if (hours != 0) line << hours << "h";
    line << minutes << "m" << seconds << "s";
    return line.text();
}

std::string NSStringFromMovieDuration(double duration) {
    const auto [days, hours, minutes, seconds] = QELTimeDifferenceFromSeconds(duration);
    Line line;
    if (hours != 0) line << hours << ":";
    line << minutes << ":" << seconds;
    return line.text();
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
