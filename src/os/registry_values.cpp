#include "os/registry_values.hpp"

#include <cmath>

#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

std::uint64_t little_endian(std::string_view bytes, std::size_t size) {
    std::uint64_t v = 0;
    for (std::size_t i = 0; i < size && i < bytes.size(); ++i)
        v |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return v;
}

std::uint32_t big_endian(std::string_view bytes) {
    std::uint32_t v = 0;
    for (std::size_t i = 0; i < 4; ++i)
        v = (v << 8) | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
    return v;
}

std::string hex_pairs(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string out;
    out.reserve(bytes.size() * 3);
    for (const char c : bytes) {
        if (!out.empty()) out += ' ';
        const auto b = static_cast<unsigned char>(c);
        out += kDigits[b >> 4];
        out += kDigits[b & 15];
    }
    return out;
}

std::string multi_text(std::string_view bytes) {
    while (bytes.ends_with('\0')) bytes.remove_suffix(1);
    std::string out(bytes);
    for (char& c : out)
        if (c == '\0') c = '|';
    return out;
}

}  // namespace

std::uint32_t write_type_code(std::string_view type_name) {
    const std::string upper = text::to_upper(text::trim(type_name));
    if (upper == "REG_EXPAND_SZ") return reg_type::kExpandSz;
    if (upper == "REG_MULTI_SZ") return reg_type::kMultiSz;
    if (upper == "REG_DWORD") return reg_type::kDword;
    return reg_type::kSz;
}

std::string type_name(std::uint32_t code) {
    switch (code) {
        case reg_type::kSz:
            return "REG_SZ";
        case reg_type::kExpandSz:
            return "REG_EXPAND_SZ";
        case reg_type::kBinary:
            return "REG_BINARY";
        case reg_type::kDword:
            return "REG_DWORD";
        case reg_type::kMultiSz:
            return "REG_MULTI_SZ";
        default:
            return "UNKNOWN";
    }
}

std::uint32_t dword_from_text(std::string_view text) {
    const double v = std::nearbyint(value::read_leading_number(text));
    if (!std::isfinite(v)) return 0;
    double wrapped = std::fmod(v, 4294967296.0);
    if (wrapped < 0) wrapped += 4294967296.0;
    return static_cast<std::uint32_t>(wrapped);
}

std::string dword_bytes(std::uint32_t v) {
    std::string out(4, '\0');
    for (int i = 0; i < 4; ++i) out[i] = static_cast<char>((v >> (8 * i)) & 0xFF);
    return out;
}

RegistryData data_from_text(std::string_view text, std::uint32_t type) {
    RegistryData data{type, std::string(text)};
    if (type == reg_type::kDword) {
        data.bytes = dword_bytes(dword_from_text(text));
    } else if (type == reg_type::kMultiSz) {
        for (char& c : data.bytes)
            if (c == '|') c = '\0';
    }
    return data;
}

std::string text_from_data(const RegistryData& data) {
    const std::string_view bytes = data.bytes;
    switch (data.type) {
        case reg_type::kSz:
        case reg_type::kExpandSz:
            return std::string(bytes.substr(0, bytes.find('\0')));
        case reg_type::kMultiSz:
            return multi_text(bytes);
        case reg_type::kDword:
            return std::to_string(little_endian(bytes, 4));
        case reg_type::kDwordBigEndian:
            return std::to_string(big_endian(bytes));
        case reg_type::kQword:
            return std::to_string(little_endian(bytes, 8));
        default:
            return hex_pairs(bytes);
    }
}

std::string_view stored_value_name(std::string_view name) {
    return text::iequals(name, "DEFAULT") ? std::string_view{} : name;
}

std::string shown_value_name(std::string_view stored) {
    return stored.empty() ? std::string("DEFAULT") : std::string(stored);
}

}  // namespace quiller
