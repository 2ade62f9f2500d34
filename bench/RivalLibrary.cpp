#include <stdexcept>

#include "Digest.h"
#include "JSON/JSONReader.h"
#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "Rivals.h"

namespace QELModels::bench {

namespace {

struct LibraryWay {
    struct Result {
        Ref<QELAsset> single;
        Ref<List<QELAsset>> page;
    };

    static Result read(const Document& source) {
        JSONError error;
        const auto representation = reader().read(source.text, &error);
        if (!representation) throw std::runtime_error(error.reason);
        if (source.isPage) return {{}, QELAssetsMapper().mappedResponseFromJSONObject(*representation)};
        return {QELAssetMapper().mappedResponseFromJSONObject(*representation), {}};
    }

    static std::uint64_t digest(const Result& result) {
        return result.single ? digestOfAsset(*result.single) : digestOfPage(*result.page);
    }

    static void forgetBuffers() { reader() = JSONReader(); }

private:
    static JSONReader& reader() {
        static JSONReader reader;
        return reader;
    }
};

}  // namespace

constinit const Rival kLibrary = rivalOf<LibraryWay>("QELModels");

}  // namespace QELModels::bench
