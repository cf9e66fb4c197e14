#include "engine/file_table.hpp"

#include <cmath>

#include "engine/failure.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

// "1" to "9999" read directly: the common case of a loop over fileread.
bool small_whole_number(std::string_view text, int& number) {
    if (text.empty() || text.size() > 4) return false;
    number = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
        number = number * 10 + (c - '0');
    }
    return true;
}

}  // namespace

int FileTable::open_number(std::string_view text) {
    text = text::trim(text);
    int number = 0;
    if (!small_whole_number(text, number)) {
        const auto v = value::parse_locale_number(text);
        if (!v || !(std::fabs(*v) < 32768)) throw failures::bad_file_number();
        number = static_cast<int>(std::nearbyint(*v));
    }
    if (!find(number)) throw failures::bad_file_number();
    return number;
}

int FileTable::add(std::unique_ptr<OpenFile> file, OpenMode mode) {
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        if (!slots_[i].file) {
            slots_[i] = Slot{std::move(file), mode, false};
            return static_cast<int>(i) + 1;
        }
    }
    slots_.push_back(Slot{std::move(file), mode, false});
    return static_cast<int>(slots_.size());
}

OpenFile* FileTable::find(int number) {
    if (number < 1 || number > static_cast<int>(slots_.size())) return nullptr;
    return slots_[number - 1].file.get();
}

OpenMode FileTable::mode(int number) const {
    return slots_[number - 1].mode;
}

Status FileTable::close(int number) {
    OpenFile* file = find(number);
    if (!file) return {};
    Status closed = file->close();
    slots_[number - 1] = Slot{};
    return closed;
}

void FileTable::close_all() {
    for (Slot& slot : slots_) {
        if (slot.file) slot.file->close();
        slot = Slot{};
    }
}

bool FileTable::at_end(int number) const {
    return slots_[number - 1].at_end;
}

void FileTable::set_at_end(int number) {
    slots_[number - 1].at_end = true;
}

}  // namespace quiller
