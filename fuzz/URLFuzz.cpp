// Any bytes are a URL exactly when the grammar says so, in every way of making one; and the URL of an image
// in a given size is the image's own with the size after it.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "QELModels/Categories/NSURL+QELKavoHelper.h"
#include "QELModels/Process/Log.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Transformers/QELNSURLTransformer.h"
#include "QELModels/Values/Text.h"
#include "QELModels/Values/URL.h"
#include "fuzz/Require.h"
#include "tests/URLOracle.h"

namespace {

using namespace QELModels;

// The grammar is tried with all its choices, which takes its time.
constexpr std::size_t kMaxBytes = 300;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::array<Size, 4> kSizes{{{300, 169}, {0, -1}, {1e9, 80}, {kInfinity, 700}}};

std::size_t logLines = 0;

std::string digits(std::optional<Number> number) {
    return number->toString();
}

void checkComposed(const URL& composed, std::string_view image, const std::string& query) {
    require(composed.text() == std::string(image) + "?t[]=" + query, "the size follows the image's URL");
    require(isURLByGrammar(composed.text()), "an image's URL in a size is a URL");
}

void checkImage(URLView image) {
    for (const Size size : kSizes) {
        const auto& fixed = QELKavoHelper::configurationForSize(size);
        checkComposed(QELKavoHelper::getURLWithSize(image, size),
                      image.text(),
                      digits(fixed.width()) + "x" + digits(fixed.height()) + "q" + digits(fixed.quality()));
        const auto& autoWidth = QELKavoHelper::autoWidthConfigurationForSize(size);
        checkComposed(QELKavoHelper::getAutoWidthURLWithSize(image, size),
                      image.text(),
                      "x" + digits(autoWidth.height()) + "q" + digits(autoWidth.quality()));
        const auto& autoHeight = QELKavoHelper::autoHeightConfigurationForSize(size);
        checkComposed(QELKavoHelper::getAutoHeightURLWithSize(image, size),
                      image.text(),
                      digits(autoHeight.width()) + "q" + digits(autoHeight.quality()));
    }
}

void checkTransformer(std::string_view text, bool isURL) {
    const Representation string(text);
    const QELNSURLTransformer transformer;
    logLines = 0;
    const Value url = transformer.transformedValue(string.view());
    require(url.url().has_value() == isURL, "a document's text becomes a URL if it is one");
    require(logLines == (isURL ? 0 : 1), "a text that is not a URL costs one log line");
    if (isURL) require(transformer.reverseTransformedValue(url).text() == text, "a URL's text comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Log::setSink([](std::string_view) { ++logLines; });
    const std::string_view text(reinterpret_cast<const char*>(data), std::min(size, kMaxBytes));

    const std::optional<URLView> view = URLView::parse(text);
    require(view.has_value() == isURLByGrammar(text), "a URL by the grammar, and nothing else");
    const std::optional<URL> url = URL::parse(std::string(text));
    require(url.has_value() == view.has_value(), "owned and borrowed URLs are parsed alike");
    if (Text::isWellFormed(text)) checkTransformer(text, view.has_value());
    if (!view) return 0;

    require(view->text() == text && url->text() == text, "nothing is normalised");
    require(*url == URL(*view) && url->hash() == view->hash(), "equal texts are equal URLs");
    checkImage(*view);
    return 0;
}
