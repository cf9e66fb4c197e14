#include "os/registry_file.hpp"

#include "os/registry_values.hpp"
#include "value/text.hpp"

namespace quiller {
namespace {

constexpr std::string_view kHeader4 = "REGEDIT4";
constexpr std::string_view kHeader5 = "Windows Registry Editor Version 5.00";

// UTF-16 to UTF-8; an unpaired surrogate becomes U+FFFD and an odd last byte is dropped.
std::string utf16_to_utf8(std::string_view bytes, bool big_endian) {
    std::string out;
    out.reserve(bytes.size() / 2);
    const auto unit = [&](std::size_t i) -> char32_t {
        const auto a = static_cast<unsigned char>(bytes[i]);
        const auto b = static_cast<unsigned char>(bytes[i + 1]);
        return big_endian ? (a << 8 | b) : (b << 8 | a);
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unit(i);
        if (c >= 0xD800 && c < 0xDC00 && i + 3 < bytes.size()) {
            const char32_t low = unit(i + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        if (c >= 0xD800 && c < 0xE000) c = 0xFFFD;
        text::append_utf8(out, c);
    }
    return out;
}

std::string_view trim_line(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// A number of 1 to `max_digits` hex digits and nothing else.
bool read_hex_number(std::string_view s, std::size_t max_digits, std::uint32_t& out) {
    s = trim_line(s);
    if (s.empty() || s.size() > max_digits) return false;
    out = 0;
    for (const char c : s) {
        const int d = hex_digit(c);
        if (d < 0) return false;
        out = out << 4 | static_cast<std::uint32_t>(d);
    }
    return true;
}

// "01,ab, ff": bytes of two hex digits separated by commas (a trailing comma is allowed).
bool read_hex_bytes(std::string_view s, std::string& out) {
    s = trim_line(s);
    while (!s.empty()) {
        const std::size_t comma = s.find(',');
        std::uint32_t byte = 0;
        if (!read_hex_number(s.substr(0, comma), 2, byte)) return false;
        out += static_cast<char>(byte);
        if (comma == std::string_view::npos) break;
        s = trim_line(s.substr(comma + 1));
    }
    return true;
}

// A quoted text at `pos` (on its opening quote): "\\" is one backslash, and a backslash before
// any other character stands for that character. Leaves `pos` after the closing quote.
bool read_quoted(std::string_view s, std::size_t& pos, std::string& out) {
    for (std::size_t i = pos + 1; i < s.size(); ++i) {
        if (s[i] == '"') {
            pos = i + 1;
            return true;
        }
        if (s[i] == '\\' && ++i == s.size()) break;
        out += s[i];
    }
    return false;
}

// The text of a string type's bytes, as the file's kind stores them.
std::string string_data(std::string_view bytes, bool unicode, std::uint32_t type) {
    std::string text = unicode ? utf16_to_utf8(bytes, false) : text::decode_script_text(bytes);
    if (type == reg_type::kMultiSz) {
        while (text.ends_with('\0')) text.pop_back();
    } else {
        text.erase(std::min(text.find('\0'), text.size()));
    }
    return text;
}

// hex:..., hex(N):... after "hex".
const char* read_hex_value(std::string_view v, bool unicode, RegistryData& data) {
    data.type = reg_type::kBinary;
    if (v.starts_with('(')) {
        const std::size_t close = v.find(')');
        if (close == std::string_view::npos ||
            !read_hex_number(v.substr(1, close - 1), 8, data.type))
            return "bad type in hex(...)";
        v.remove_prefix(close + 1);
    }
    if (!v.starts_with(':')) return "no : after hex";
    if (!read_hex_bytes(v.substr(1), data.bytes)) return "bad hex data";
    const std::uint32_t t = data.type;
    if (t == reg_type::kSz || t == reg_type::kExpandSz || t == reg_type::kMultiSz)
        data.bytes = string_data(data.bytes, unicode, t);
    return nullptr;
}

// The part after "=": a problem, or nullptr with the entry filled in.
const char* read_value(std::string_view v, bool unicode, RegistryFileEntry& e) {
    if (v == "-") {
        e.kind = RegistryFileEntry::Kind::DeleteValue;
        return nullptr;
    }
    e.kind = RegistryFileEntry::Kind::Value;
    if (v.starts_with('"')) {
        std::size_t pos = 0;
        e.data.type = reg_type::kSz;
        if (!read_quoted(v, pos, e.data.bytes)) return "the text has no closing quote";
        return trim_line(v.substr(pos)).empty() ? nullptr : "text after the closing quote";
    }
    if (text::starts_with_ascii_ci(v, "dword:")) {
        std::uint32_t n = 0;
        if (!read_hex_number(v.substr(6), 8, n)) return "bad dword (1 to 8 hex digits)";
        e.data = {reg_type::kDword, dword_bytes(n)};
        return nullptr;
    }
    if (text::starts_with_ascii_ci(v, "hex")) return read_hex_value(v.substr(3), unicode, e.data);
    return "unknown kind of value";
}

const char* read_value_line(std::string_view line, bool unicode, RegistryFileEntry& e) {
    std::size_t pos = 1;
    if (line.front() == '"') {
        pos = 0;
        if (!read_quoted(line, pos, e.name)) return "the value name has no closing quote";
    }
    const std::string_view rest = trim_line(line.substr(pos));
    if (!rest.starts_with('=')) return "no = after the value name";
    return read_value(trim_line(rest.substr(1)), unicode, e);
}

const char* read_key_line(std::string_view line, RegistryFileEntry& e) {
    const std::size_t close = line.rfind(']');
    if (close == std::string_view::npos) return "the key has no closing ]";
    std::string_view key = line.substr(1, close - 1);
    e.kind = RegistryFileEntry::Kind::Key;
    if (key.starts_with('-')) {
        e.kind = RegistryFileEntry::Kind::DeleteKey;
        key.remove_prefix(1);
    }
    if (key.empty()) return "the key name is empty";
    e.key = key;
    return nullptr;
}

class Reader {
  public:
    Reader(std::string_view text, bool unicode, const RegistryFileHandlers& handlers)
        : text_(text), unicode_(unicode), handlers_(handlers) {}

    void run() {
        std::string_view physical;
        std::string joined;
        while (next(physical)) {
            const int start = line_no_;
            std::string_view line = trim_line(physical);
            if (line.empty() || line.front() == ';') continue;
            if (line.front() == '"' || line.front() == '@') line = join_continuations(line, joined);
            handle(line, start);
        }
    }

  private:
    bool next(std::string_view& line) {
        if (pos_ >= text_.size()) return false;
        const std::size_t end = std::min(text_.find('\n', pos_), text_.size());
        line = text_.substr(pos_, end - pos_);
        pos_ = end + 1;
        ++line_no_;
        return true;
    }

    // A value line ending in "\" goes on in the next line.
    std::string_view join_continuations(std::string_view line, std::string& joined) {
        if (!line.ends_with('\\')) return line;
        joined = line;
        std::string_view more;
        while (joined.ends_with('\\')) {
            joined.pop_back();
            if (!next(more)) break;
            joined += trim_line(more);
        }
        return joined;
    }

    void handle(std::string_view line, int line_no) {
        if (text::iequals(line, kHeader5) || text::iequals(line, kHeader4)) {
            unicode_ = text::iequals(line, kHeader5);
            return;
        }
        RegistryFileEntry e;
        e.line = line_no;
        const char* problem = "not a key or value line";
        if (line.front() == '[') problem = read_key_line(line, e);
        if (line.front() == '"' || line.front() == '@')
            problem = read_value_line(line, unicode_, e);
        if (problem)
            handlers_.problem(line_no, problem);
        else
            handlers_.entry(e);
    }

    std::string_view text_;
    bool unicode_;
    const RegistryFileHandlers& handlers_;
    std::size_t pos_ = 0;
    int line_no_ = 0;
};

}  // namespace

std::string registry_file_text(std::string_view bytes, bool& utf16) {
    utf16 = true;
    if (bytes.starts_with("\xFF\xFE")) return utf16_to_utf8(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF")) return utf16_to_utf8(bytes.substr(2), true);
    if (bytes.size() >= 2 && bytes[0] != '\0' && bytes[1] == '\0')
        return utf16_to_utf8(bytes, false);
    utf16 = false;
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return text::decode_script_text(bytes);
}

void read_registry_file(std::string_view bytes, const RegistryFileHandlers& handlers) {
    bool utf16 = false;
    const std::string text = registry_file_text(bytes, utf16);
    Reader(text, utf16, handlers).run();
}

}  // namespace quiller
