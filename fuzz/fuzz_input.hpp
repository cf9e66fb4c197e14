// Cuts a fuzzer's input into the parts a target needs: each part ends at the next line feed; the
// last part takes the rest of the input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quiller::fuzz {

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    std::string_view line() {
        const std::size_t end = rest_.find('\n');
        const std::string_view part = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        return part;
    }
    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

// Stops the fuzzer with a message when an invariant fails.
[[noreturn]] void fail(const char* what);

}  // namespace quiller::fuzz
