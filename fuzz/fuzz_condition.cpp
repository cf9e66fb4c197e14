// Conditions as `if` sees them: operator words, splitting, then the test.
#include "engine/failure.hpp"
#include "expr/condition.hpp"
#include "fuzz_engine.hpp"

using namespace quiller;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string command = "if";
    std::string condition(reinterpret_cast<const char*>(data), size);
    normalise_condition(command, condition);
    Slots slots;
    std::string options;
    split_arguments(condition, false, slots, options);
    fuzz::FuzzPlatform platform;
    fuzz::FuzzHost host;
    Engine engine(host, platform.platform, standard_language());
    engine.variables().set("a", "12/31/2001");
    try {
        (void)eval_boolean(engine, slots);
    } catch (const ScriptFailure&) {
    } catch (const RunEnded&) {
    }
    return 0;
}
