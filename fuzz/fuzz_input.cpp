#include "fuzz_input.hpp"

#include <cstdio>
#include <cstdlib>

namespace quiller::fuzz {

void fail(const char* what) {
    std::fprintf(stderr, "invariant failed: %s\n", what);
    std::abort();
}

}  // namespace quiller::fuzz
