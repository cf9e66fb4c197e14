#include "sync/scan_file.hpp"

#include <charconv>
#include <cmath>
#include <optional>

#include "sync/walk.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller::sync {
namespace {

constexpr std::string_view kReader = "(dc_scanfileread) ";
#ifdef _WIN32
constexpr std::string_view kLineEnd = "\r\n";
#else
constexpr std::string_view kLineEnd = "\n";
#endif

// The general number form of a day number; the common range takes a fast path that gives the
// same text (15 significant digits, no trailing zeros, no exponent).
void append_day_number(std::string& out, double day) {
    if (!(day >= 1 && day < 1e15)) {
        out += value::format_general_number(day);
        return;
    }
    char buffer[32];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, day, std::chars_format::general, 15);
    out.append(buffer, end.ptr);
}

template <typename T>
void append_integer(std::string& out, T v) {
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, v);
    out.append(buffer, end.ptr);
}

std::optional<double> read_number(std::string_view text) {
    text = text::trim(text);
    std::string copy;
    if (text.find(',') != std::string_view::npos) {  // a decimal comma of a regional setting
        copy = text;
        for (char& c : copy)
            if (c == ',') c = '.';
        text = copy;
    }
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double v = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (ec != std::errc() || end != text.data() + text.size() || !std::isfinite(v)) return {};
    return v;
}

std::optional<std::int64_t> read_whole(std::string_view text) {
    text = text::trim(text);
    std::int64_t v = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (ec == std::errc() && end == text.data() + text.size()) return v;
    const std::optional<double> d = read_number(text);
    if (!d || std::fabs(*d) > 9.2e18) return {};
    return static_cast<std::int64_t>(std::nearbyint(*d));
}

struct Fields {
    std::string_view name, date, attributes, size;
};

std::optional<Fields> cut(std::string_view line) {
    Fields f;
    std::string_view* parts[] = {&f.name, &f.date, &f.attributes};
    for (std::string_view* part : parts) {
        const std::size_t star = line.find('*');
        if (star == std::string_view::npos) return {};
        *part = line.substr(0, star);
        line.remove_prefix(star + 1);
    }
    f.size = line;
    return f;
}

// The record of one line, or false when the line isn't one.
bool add_record(std::string_view line, std::string& name, Listing& listing) {
    const std::optional<Fields> f = cut(line);
    if (!f || f->name.empty()) return false;
    const std::optional<double> date = read_number(f->date);
    const std::optional<std::int64_t> attributes = read_whole(f->attributes);
    const std::optional<std::int64_t> size = read_whole(f->size);
    if (!date || !attributes || !size || *attributes < -32768 || *attributes > 32767) return false;
    name.assign(f->name);
    for (char& c : name)
        if (c == '\\' || c == '/') c = kSeparator;
    listing.add(name, *date, static_cast<std::int16_t>(*attributes), *size);
    return true;
}

}  // namespace

std::string scan_file_text(const Listing& listing) {
    std::string out;
    out.reserve(64 + listing.size() * 48);
    out += text::trim(listing.root);
    out += listing.subfolders ? "*sub" : "*nosub";
    out += kLineEnd;
    for (std::size_t i = 0; i < listing.order.size(); ++i) {
        const ScanRecord& r = listing.sorted(i);
        out += listing.sorted_name(i);
        out += '*';
        append_day_number(out, r.date);
        out += '*';
        append_integer(out, r.attributes);
        out += '*';
        append_integer(out, r.size);
        out += kLineEnd;
    }
    return out;
}

Status write_scan_file(FileSystem& files, const std::string& path, const Listing& listing) {
    return files.replace_file(path, scan_file_text(listing));
}

void parse_scan_file(std::string_view path, std::string_view text, const ScanFileEvents& events,
                     Listing& listing) {
    std::size_t line_number = 0;
    std::string name;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (++line_number == 1) {
            const std::size_t star = line.find('*');
            if (star == std::string_view::npos) {
                ++listing.warnings;
                events.warning(std::string(kReader) + "The 1st line of '" + std::string(path) +
                               "' is not a directory.");
            }
            listing.root = text::trim(line.substr(0, star));
            listing.subfolders =
                star == std::string_view::npos ||
                text::ascii_lower(line.substr(star + 1)).find("nosub") == std::string::npos;
            continue;
        }
        if (!add_record(line, name, listing)) {
            ++listing.warnings;
            events.warning(std::string(kReader) + "Line " + std::to_string(line_number) + " of '" +
                           std::string(path) + "' is not a scan record: '" + std::string(line) +
                           "'");
        } else if (listing.size() % 1000 == 0 && events.progress) {
            events.progress(listing.size(), name);
        }
    }
    listing.identity_order();
}

Status read_scan_file(FileSystem& files, const std::string& path, const ScanFileEvents& events,
                      Listing& listing) {
    const Result<std::string> text = files.read_file(path);
    if (!text) return text.error();
    parse_scan_file(path, *text, events, listing);
    return {};
}

}  // namespace quiller::sync
