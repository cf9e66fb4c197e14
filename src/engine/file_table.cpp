#include "engine/file_table.hpp"

namespace quiller {

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

bool FileTable::close(int number) {
    OpenFile* file = find(number);
    if (!file) return false;
    const bool ok = file->close();
    slots_[number - 1] = Slot{};
    return ok;
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
