// The least that a program does with the library: it reads a document and maps the asset in it.

#include <JSON/JSONMapping.h>
#include <QELModels/Mappers/QELAssetMapper.h>

#include <array>
#include <cstdio>
#include <string>

int main(int count, char* arguments[]) {
    std::FILE* const file = count == 2 ? std::fopen(arguments[1], "rb") : nullptr;
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
