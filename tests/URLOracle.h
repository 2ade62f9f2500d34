#pragma once

#include <string_view>

/// Whether `text` is a URL by the grammar itself: RFC 3986, Appendix A, rule by rule and with backtracking.
/// Slow, and shares nothing with the library.
bool isURLByGrammar(std::string_view text);
