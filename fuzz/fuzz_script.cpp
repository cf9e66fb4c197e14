// Whole scripts over the fuzzing host: any input is loaded and run for at most a fixed number
// of lines. `debug` lines are left out, since `debug off` would lift that bound, and `pause`
// lines, whose timed wait may be as long as a script asks.
#include "fuzz_engine.hpp"
#include "value/text.hpp"

using namespace quiller;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::string script;
    std::size_t start = 0;
    while (start <= input.size()) {
        std::size_t end = input.find_first_of("\r\n", start);
        if (end == std::string_view::npos) end = input.size();
        const std::string_view line = input.substr(start, end - start);
        const std::string word = text::ascii_lower(text::trim(line));
        if (word.rfind("debug", 0) != 0 && word.rfind("pause", 0) != 0) {
            script += line;
            script += '\n';
        }
        start = end + 1;
    }
    fuzz::FuzzPlatform platform;
    platform.files->files["job.prg"] = script;
    fuzz::FuzzHost host;
    Engine engine(host, platform.platform, standard_language());
    engine.variables().set_text_limit(fuzz::kFuzzTextLimit);
    engine.set_debug_mode(true);
    engine.run("job.prg one two");
    return 0;
}
