// The value of a `set` line: literals, arithmetic and built-in functions, split as `set` does.
#include "engine/failure.hpp"
#include "expr/set_expression.hpp"
#include "fuzz_engine.hpp"

using namespace quiller;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    Slots slots;
    std::string options;
    split_arguments(line, true, slots, options);
    fuzz::FuzzPlatform platform;
    fuzz::FuzzHost host;
    Engine engine(host, platform.platform, standard_language());
    engine.variables().set_text_limit(fuzz::kFuzzTextLimit);
    try {
        (void)eval_value_expression(slots, 2026);
        (void)eval_string(engine, slots, line);
    } catch (const ScriptFailure&) {
    } catch (const RunEnded&) {
    }
    return 0;
}
