// A version of simdjson whose internal interface is not the one that the reader uses: the reader says in
// what.

// expect: parsers have no capacity\(\), or no set_capacity\(capacity\) | HasCapacity
// expect: this version has no implementation::create_dom_parser_implementation | MakesParsers
// expect: parsers have no stage1\(text, size, stage1_mode::regular\) | FindsStructurals
// expect: parsers have no structural_indexes of 32 bits each | KeepsStructurals
#include "JSON/detail/StructuralIndex.h"
