#include <stdexcept>

#include "Digest.h"
#include "JSON/JSONMapping.h"
#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "RawText.h"
#include "Records.h"
#include "Rivals.h"

namespace QELModels::bench {

namespace {

using AssetByHand = Asset<RawText>;

struct LibraryWay {
    struct Result {
        Ref<QELAsset> single;
        Ref<List<QELAsset>> page;
    };

    static Result read(const Document& source) {
        return filled(source, [&](const auto& mapper, JSONError& error) {
            return mappedResponseFromJSON(reader(), source.text, mapper, &error);
        });
    }

    static std::uint64_t digest(const Result& result) {
        Digest digest;
        if (result.single) {
            digest.addAs<AssetByHand>(*result.single);
        } else {
            for (const QELAsset& asset : *result.page)
                digest.addAs<AssetByHand>(asset);
        }
        return digest.value();
    }

    static void forgetBuffers() { reader() = JSONReader(); }

protected:
    static JSONReader& reader() {
        static JSONReader reader;
        return reader;
    }

    template <class Map>
    static Result filled(const Document& source, const Map& map) {
        JSONError error;
        Result result;
        if (source.isPage)
            result.page = map(QELAssetsMapper(), error);
        else
            result.single = map(QELAssetMapper(), error);
        if (!result.page && !result.single) throw std::runtime_error(error.reason);
        return result;
    }
};

/// For applications that use the document itself too.
struct LibraryWayByTheDocument : LibraryWay {
    static Result read(const Document& source) {
        return filled(source, [&](const auto& mapper, JSONError& error) {
            const auto document = reader().read(source.text, &error);
            if (!document) throw std::runtime_error(error.reason);
            return mapper.mappedResponseFromJSONObject(*document);
        });
    }
};

}  // namespace

constinit const Rival kLibrary = rivalOf<LibraryWay>("QELModels");
constinit const Rival kLibraryByTheDocument =
    rivalOf<LibraryWayByTheDocument>("QELModels, document read first");

}  // namespace QELModels::bench
