// The argument splitter, with and without the quoting rules of `set`.
#include "engine/splitter.hpp"
#include "fuzz_input.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quiller::fuzz::Input in(data, size);
    for (const bool for_set : {false, true}) {
        quiller::Slots slots;
        std::string options;
        quiller::split_arguments(in.rest(), for_set, slots, options);
        if (!slots[quiller::kSlotCount].empty()) quiller::fuzz::fail("slot 12 is not empty");
    }
    return 0;
}
