#include <fmt/format.h>

#include <optional>
#include <string>
#include <vector>

#include "QELModels/Categories/NSURL+QELKavoHelper.h"
#include "QELModels/Values/URL.h"
#include "tool/Options.h"

namespace QELModels::tool {

namespace {

struct Options {
    std::optional<std::string> url;
    std::vector<std::string> sizes;
    std::optional<std::string> scale;
    std::optional<std::string> screenScale;
    std::optional<std::string> automatic;
};

void declare(CLI::App& command, Options& options) {
    addOptional(command, "URL", "", options.url, "The image's address, without a size");
    addRepeated(
        command, "--size", "WxH...", Required::yes, options.sizes, "Sizes in points, such as 320x180");
    addOptional(command, "--scale", "S", options.scale, "On top of the screen's scale; 1 unless given");
    addScreenScale(command, options.screenScale);
    addOptional(
        command, "--auto", "width|height", options.automatic, "The dimension that the server chooses");
}

using Choose = URL (*)(URLView url, Size size, double scale);

Choose chooserNamed(const std::optional<std::string>& automatic) {
    if (!automatic) return &QELKavoHelper::getURLWithSize;
    if (*automatic == "width") return &QELKavoHelper::getAutoWidthURLWithSize;
    if (*automatic == "height") return &QELKavoHelper::getAutoHeightURLWithSize;
    throw UsageError(fmt::format("--auto is width or height, not '{}'", *automatic));
}

// The address may be among the sizes: after `--size` the parser takes it for one of them.
struct Wanted {
    std::optional<std::string> url;
    std::vector<Size> sizes;
};

Wanted wantedBy(const Options& options) {
    Wanted wanted{options.url, {}};
    for (const std::string& text : options.sizes) {
        if (const auto size = sizeIn(text); size || wanted.url)
            wanted.sizes.push_back(size ? *size : sizeFrom(text));
        else
            wanted.url = text;
    }
    if (!wanted.url) throw UsageError("URL is required");
    if (wanted.sizes.empty()) throw UsageError("--size takes sizes such as 320x180");
    return wanted;
}

ExitStatus run(const Options& options, Session& session) {
    const Choose choose = chooserNamed(options.automatic);
    const double scale = options.scale ? numberFrom(*options.scale) : 1;
    setScreenScale(options.screenScale);
    const auto [text, sizes] = wantedBy(options);

    const auto url = URLView::parse(*text);
    if (!url) throw BadInput(fmt::format("no valid URL: {}", *text));
    std::string lines;
    for (const Size size : sizes)
        lines += fmt::format("{}\n", choose(*url, size, scale).text());
    session.output.write(lines);
    return ExitStatus::success;
}

}  // namespace

void addImageURLCommand(CommandLine& commandLine) {
    commandLine.add<Options>("image-url",
                             "URL --size WxH... [--scale S] [--screen-scale S] [--auto width|height]",
                             "An image's address for each size of a view",
                             declare,
                             run);
}

}  // namespace QELModels::tool
