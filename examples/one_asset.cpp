// The least that a program does with the library: it reads one document and maps the asset in it. Its size is what
// the library adds to an app (docs/platforms.md).
//
//     example-one_asset [asset.json]

#include <JSON/JSONMapping.h>
#include <QELModels/Mappers/QELAssetMapper.h>

#include <array>
#include <cstdio>
#include <string>

int main(int count, char* arguments[]) {
    std::FILE* const file = std::fopen(count > 1 ? arguments[1] : "asset.json", "rb");
    if (file == nullptr) return 1;
    std::string bytes;
    std::array<char, 4096> piece;
    while (const std::size_t read = std::fread(piece.data(), 1, piece.size(), file))
        bytes.append(piece.data(), read);
    std::fclose(file);

    QELModels::JSONReader reader;
    const auto asset = QELModels::mappedResponseFromJSON(reader, bytes, QELModels::QELAssetMapper());
    if (!asset) return 1;
    std::puts(std::string(asset->title().value_or("untitled")).c_str());
}
