// Runs one fuzz target over files: the inputs that once broke something stay tested on machines without
// libFuzzer. Arguments are files or folders; a folder that does not exist has no findings and is passed over.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void replay(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    // A heap block of exactly the input's size: a read past its end is seen by the address sanitizer.
    const auto input = std::make_unique<std::uint8_t[]>(bytes.size());
    if (!bytes.empty()) std::memcpy(input.get(), bytes.data(), bytes.size());
    std::printf("%s\n", path.string().c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(input.get(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        const fs::path path = argv[i];
        if (fs::is_regular_file(path)) {
            replay(path);
            ++count;
        } else if (fs::is_directory(path)) {
            for (const auto& entry : fs::recursive_directory_iterator(path)) {
                if (!entry.is_regular_file()) continue;
                replay(entry.path());
                ++count;
            }
        }
    }
    std::printf("%zu inputs replayed\n", count);
    // Without a single input the paths are wrong, and nothing was tested.
    return count == 0 ? 1 : 0;
}
