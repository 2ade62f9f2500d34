#include <simdjson.h>

#include <stdexcept>

#include "Rivals.h"

// What no reader of whole documents can beat: parsing alone, and finding the structure alone.
namespace QELModels::bench {

namespace {

void check(simdjson::error_code error) {
    if (error != simdjson::SUCCESS) throw std::runtime_error(simdjson::error_message(error));
}

struct DOMParse {
    static void read(const Document& source) {
        simdjson::dom::element root;
        constexpr bool kCopyFirst = false;  // there is padding after the text
        check(parser().parse(source.text.data(), source.text.size(), kCopyFirst).get(root));
        lookAt(root);
    }
    static void forgetBuffers() { parser() = simdjson::dom::parser(); }

private:
    static simdjson::dom::parser& parser() {
        static simdjson::dom::parser parser;
        return parser;
    }
};

struct StructuralIndex {
    static void read(const Document& source) {
        Buffers& memory = buffers();
        if (memory.capacity < source.text.size()) memory.allocate(source.text.size());
        check(memory.parser->stage1(reinterpret_cast<const std::uint8_t*>(source.text.data()),
                                    source.text.size(),
                                    simdjson::stage1_mode::regular));
        lookAt(memory.parser->n_structural_indexes);
    }
    static void forgetBuffers() { buffers() = {}; }

private:
    struct Buffers {
        std::unique_ptr<simdjson::internal::dom_parser_implementation> parser;
        std::size_t capacity = 0;

        void allocate(std::size_t bytes) {
            constexpr std::size_t kDepth = 64;
            check(simdjson::get_active_implementation()->create_dom_parser_implementation(
                bytes, kDepth, parser));
            capacity = bytes;
        }
    };
    static Buffers& buffers() {
        static Buffers buffers;
        return buffers;
    }
};

template <class Way>
constexpr Rival limitOf(std::string_view name) {
    return {name, Way::read, nullptr, nullptr, Way::forgetBuffers};
}

}  // namespace

constinit const Rival kDOMParse = limitOf<DOMParse>("limit: simdjson DOM parse alone");
constinit const Rival kStructuralIndex = limitOf<StructuralIndex>("limit: structural index alone");

}  // namespace QELModels::bench
