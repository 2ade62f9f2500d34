// A program of the C and C++ libraries alone: texts, memory, exceptions and output.

#include <cstdio>
#include <stdexcept>
#include <string>

int main(int count, char* arguments[]) {
    try {
        if (count < 2) throw std::invalid_argument("a text is missing");
        std::puts(std::string(arguments[1]).c_str());
    } catch (const std::exception& error) {
        std::puts(error.what());
    }
}
