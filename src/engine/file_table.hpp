// The files a script has open, by file number. `fileopen` takes the next free number (from 1),
// `fileread`, `filewrite` and `fileclose` use it; every file is closed at the end of the run.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "os/platform.hpp"

namespace quiller {

class FileTable {
  public:
    // Stores an open file under the next free number and returns the number.
    int add(std::unique_ptr<OpenFile> file, OpenMode mode);
    // The number of an open file from a script's text ("1", " 2 ", "3.0"); throws
    // "Bad file name or number" when the text names no open file.
    int open_number(std::string_view text);
    // The open file of a number, or nullptr when the number is not open.
    OpenFile* find(int number);
    OpenMode mode(int number) const;
    // Closes one file (a number that is not open needs no closing).
    Status close(int number);
    // Closes every open file, ignoring failures.
    void close_all();
    // Whether the file reached its end (fileread then answers "(eof)" for ever).
    bool at_end(int number) const;
    void set_at_end(int number);

  private:
    struct Slot {
        std::unique_ptr<OpenFile> file;
        OpenMode mode = OpenMode::Read;
        bool at_end = false;
    };
    std::vector<Slot> slots_;  // index = number - 1
};

}  // namespace quiller
