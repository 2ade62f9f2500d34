#include "ByHand.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <type_traits>

#include "QELModels/Categories/NSURL+QELKavoHelper.h"

namespace QELModels::bench::byHand {

namespace {

// Properties by name.

template <class T>
Value valueOf(const T& field) {
    if constexpr (std::is_same_v<T, std::string>) {
        return std::string_view(field);
    } else if constexpr (std::is_same_v<T, URL>) {
        return URLView(field);
    } else if constexpr (std::is_enum_v<T>) {
        return Number(static_cast<std::int64_t>(field));
    } else if constexpr (std::is_same_v<T, bool>) {
        return Number(field);
    } else if constexpr (std::is_class_v<T> && !std::is_same_v<T, Number> && !std::is_same_v<T, Date>) {
        return &field;
    } else {
        return field;
    }
}

template <class T>
Value valueOf(const std::optional<T>& field) {
    return field ? valueOf(*field) : Value();
}

// Hash.

struct Hasher {
    std::size_t value = 0;

    template <class T>
    void add(const T& field) {
        if constexpr (RecordByHand<T>) {
            forEachMember<T>([&](const auto& member) {
                if (member.isCompared) add((field.*member.field)());
            });
        } else if constexpr (std::is_same_v<T, RawText>) {
            word(field.text.size());
        } else if constexpr (std::is_same_v<T, Date>) {
            word(std::hash<double>()(secondsSince1970(field)));
        } else {
            word(std::hash<T>()(field));
        }
    }
    template <class T>
    void add(const std::vector<T>& list) {
        word(list.size());
    }
    template <class T>
    void add(const std::optional<T>& field) {
        if (field) {
            add(*field);
        } else {
            word(0);
        }
    }

private:
    void word(std::size_t word) { value = value * 31 + word; }
};

// Images.

struct ImageSize {
    int width;
    int height;
    int quality;
};

const std::vector<ImageSize>& imageSizes() {
    static const std::vector<ImageSize> sizes = [] {
        std::vector<ImageSize> made;
        for (const QELKavoConfiguration& size : QELKavoHelper::fixedImageSizes())
            made.push_back({static_cast<int>(size.width()->int64Value()),
                            static_cast<int>(size.height()->int64Value()),
                            static_cast<int>(size.quality()->int64Value())});
        return made;
    }();
    return sizes;
}

const ImageSize& imageSizeFor(Size pixels) {
    const auto& sizes = imageSizes();
    const auto wideEnough = std::partition_point(
        sizes.begin(), sizes.end(), [&](const ImageSize& size) { return size.width < pixels.width; });
    const auto found = std::find_if(
        wideEnough, sizes.end(), [&](const ImageSize& size) { return size.height >= pixels.height; });
    return found == sizes.end() ? sizes.back() : *found;
}

// Texts.

void append(std::string& text, std::int64_t number) {
    std::array<char, 20> digits;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), written.ptr);
}

void appendTwoDigits(std::string& text, std::int64_t number) {
    if (number < 10) text += '0';
    append(text, number);
}

}  // namespace

Dictionary dictionaryOf(std::shared_ptr<const Asset> asset) {
    Dictionary result;
    result.entries.reserve(kMemberCount<Asset>);
    forEachMember<Asset>([&](const auto& member) {
        result.entries.emplace_back(member.name, valueOf(((*asset).*member.field)()));
    });
    result.asset = std::move(asset);
    return result;
}

std::size_t hashOf(const Asset& asset) {
    Hasher hasher;
    hasher.add(asset);
    return hasher.value;
}

bool isLive(const Asset& asset) {
    const auto& flight = asset.flightTimes();
    return flight && flight->flightStart() && *flight->flightStart() < std::chrono::system_clock::now();
}

std::string imageURL(const Asset& asset, Size cell, double pixelsPerPoint) {
    std::string text;
    const auto& images = asset.images();
    if (!images || !images->main()) return text;
    const ImageSize& size = imageSizeFor({cell.width * pixelsPerPoint, cell.height * pixelsPerPoint});
    constexpr std::string_view kLongestQuery = "?t[]=2048x1536q50";
    const std::string_view url = images->main()->text();
    text.reserve(url.size() + kLongestQuery.size());
    text += url;
    text += "?t[]=";
    append(text, size.width);
    text += 'x';
    append(text, size.height);
    text += 'q';
    append(text, size.quality);
    return text;
}

std::string countdown(const Asset& asset, Date from) {
    const auto& flight = asset.flightTimes();
    const double start = flight && flight->flightStart() ? secondsSince1970(*flight->flightStart()) : 0;
    const auto total = static_cast<std::int64_t>(start - secondsSince1970(from));
    const std::int64_t days = total / 86'400;
    const std::int64_t hours = total / 3'600 % 24;
    const std::int64_t minutes = total / 60 % 60;
    const std::int64_t seconds = total % 60;
    constexpr std::size_t kUsualLength = 40;
    std::string text;
    text.reserve(kUsualLength);
    if (days != 0) {
        appendTwoDigits(text, days);
        text += days == 1 ? " dag, " : " dager, ";
    }
    if (days != 0 || hours != 0) {
        appendTwoDigits(text, hours);
        text += hours == 1 ? " time, " : " timer, ";
    }
    if (days != 0) {
        appendTwoDigits(text, minutes);
        text += " min og ";
        appendTwoDigits(text, seconds);
        text += " sek";
        return text;
    }
    if (hours != 0 || minutes != 0) {
        appendTwoDigits(text, minutes);
        text += minutes == 1 ? " minutt og " : " minutter og ";
    }
    appendTwoDigits(text, seconds);
    text += seconds == 1 ? " sekund" : " sekunder";
    return text;
}

}  // namespace QELModels::bench::byHand
