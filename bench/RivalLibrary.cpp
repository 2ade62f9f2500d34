#include <stdexcept>

#include "Digest.h"
#include "JSON/JSONMapping.h"
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
        return filled(source, [&](const auto& mapper, JSONError& error) {
            return mappedResponseFromJSON(reader(), source.text, mapper, &error);
        });
    }

    static std::uint64_t digest(const Result& result) {
        return result.single ? digestOfAsset(*result.single) : digestOfPage(*result.page);
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

/// For those who have a use for the document besides.
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
